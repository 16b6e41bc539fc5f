#include "evidence/report/reading/states/state_builder.h"

#include <algorithm>
#include <string>
#include <utility>

#include "cadastre/wrapping.h"
#include "platform/plain_texts.h"

namespace informe {
namespace {

CString ComoSeEscribe(std::string_view texto, int ancho)
{
    return CString(texto.substr(0, static_cast<std::size_t>(ancho))).TrimRight().TrimLeft();
}

// What the written layout keeps of a text: states are told apart by no more.
constexpr int kNombreEscrito = LecturaDe(kColumnasTitular, &CTitular::Nombre).ancho;
constexpr int kDniEscrito = LecturaDe(kColumnasTitular, &CTitular::DNI).ancho;
constexpr int kParajeEscrito = LecturaDe(kColumnasParaje, &CParaje::Nombre).ancho;

} // namespace

CEstadoMunicipio::CLetras EnLetras(std::string_view texto)
{
    constexpr std::size_t kCaben = sizeof(CEstadoMunicipio::CLetras);
    texto = SinBlancos(texto, " ");
    CEstadoMunicipio::CLetras letras = 0;
    for (std::size_t i = 0; i < kCaben; ++i)
        letras = letras << 8U | (i < texto.size() ? static_cast<unsigned char>(texto[i]) : 0U);
    return letras;
}

CString DeLetras(CEstadoMunicipio::CLetras letras)
{
    std::string texto;
    for (; letras != 0; letras <<= 8U)
        texto += static_cast<char>(letras >> 24U);
    return texto;
}

void CEstadoEnObra::TomaTitular(short mun, CTitular titular, int partici)
{
    const int numero = titular.NumOrden;
    const int indice = Municipio(mun).InsertaTitular(std::move(titular));
    if (m_reparto == Reparto::PorLineas)
        m_titulares.push_back({{mun, numero}, indice, partici});
}

void CEstadoEnObra::TomaParaje(short mun, int numero, std::string_view nombre)
{
    // Of the number the low 16 bits, as the program has it.
    m_parajes.push_back(
        {{mun, static_cast<short>(numero)}, static_cast<int>(m_estado.parajes.size())});
    m_estado.parajes.push_back(ComoSeEscribe(nombre, kParajeEscrito));
}

int CEstadoEnObra::BuscaParcela(const CClaveParcela& clave) const
{
    return m_porClave.Busca(m_estado.parcelas, &CParcela::clave, clave);
}

std::pair<int, bool> CEstadoEnObra::AsientaParcela(const CClaveParcela& clave, int superficie,
                                                   int numParaje)
{
    if (const int antes = BuscaParcela(clave); antes >= 0)
        return {antes, false};
    const int i = static_cast<int>(m_estado.parcelas.size());
    CParcela& parcela = m_estado.parcelas.emplace_back();
    parcela.clave = clave;
    parcela.superficie = superficie;
    parcela.paraje = numParaje; // the number, until all places are known
    return {i, true};
}

void CEstadoEnObra::TomaVinculo(const CClaveParcela& clave, int numero, std::string_view titulo,
                                int partici)
{
    if (const int i = BuscaParcela(clave); i >= 0)
        m_vinculos.push_back({i, numero, partici, EnLetras(titulo)});
}

void CEstadoEnObra::AsientaParajes()
{
    std::ranges::stable_sort(m_parajes, {}, &CParajeLeido::clave);
    for (CParcela& parcela : m_estado.parcelas) {
        const CClaveLeida buscado(parcela.clave.mun, parcela.paraje);
        const auto suyo = std::ranges::lower_bound(m_parajes, buscado, {}, &CParajeLeido::clave);
        parcela.paraje =
            suyo == m_parajes.end() || suyo->clave != buscado ? kNoEncontrado : suyo->posicion;
    }
}

/// Position in the state of a person of a municipality.
int CEstadoEnObra::Persona(short mun, int indice)
{
    return std::ranges::find(m_primeras, mun, &std::pair<short, int>::first)->second + indice;
}

/// Adds a link, unless the parcel has one to that person. Then it is passed over or, where the
/// tables or the written layout have it twice, adds to the share, as the way back adds it.
void CEstadoEnObra::Enlaza(int parcela, const CEstadoMunicipio::CVinculo& vinculo)
{
    CUltimo& ultimo = m_ultimos[static_cast<std::size_t>(vinculo.persona)];
    if (ultimo.parcela != parcela) {
        ultimo = {parcela, m_estado.vinculos.size()};
        m_estado.vinculos.push_back(vinculo);
        ++m_estado.parcelas[static_cast<std::size_t>(parcela)].vinculos;
    } else if (m_reparto == Reparto::PorNumero) {
        int& suya = m_estado.vinculos[ultimo.vinculo].partici;
        suya = Suma(suya, vinculo.partici);
    }
}

void CEstadoEnObra::EnlazaPorLineas(const CVinculoLeido& leido, short mun)
{
    const CClaveLeida buscado(mun, leido.numero);
    auto linea = std::ranges::lower_bound(m_titulares, buscado, {}, &CTitularLeido::clave);
    for (; linea != m_titulares.end() && linea->clave == buscado; ++linea)
        Enlaza(leido.parcela, {Persona(mun, linea->indice), linea->partici, leido.titulo});
}

void CEstadoEnObra::EnlazaPorNumero(const CVinculoLeido& leido, short mun)
{
    if (const int indice = Municipio(mun).BuscaTitularNumOrden(leido.numero); indice >= 0)
        Enlaza(leido.parcela, {Persona(mun, indice), leido.partici, leido.titulo});
}

void CEstadoEnObra::AsientaPersonas()
{
    for (const CMunicipio& municipio : m_base.Municipios()) {
        m_primeras.emplace_back(municipio.Mun, static_cast<int>(m_estado.personas.size()));
        for (const CTitular& titular : municipio.Titulares())
            m_estado.personas.push_back({ComoSeEscribe(titular.Nombre, kNombreEscrito),
                                         ComoSeEscribe(titular.DNI, kDniEscrito), municipio.Mun});
    }
    m_ultimos.resize(m_estado.personas.size());
    std::ranges::stable_sort(m_titulares, {}, &CTitularLeido::clave);
}

/// The links of a parcel come together.
void CEstadoEnObra::AsientaVinculos()
{
    std::ranges::stable_sort(m_vinculos, {}, &CVinculoLeido::parcela);
    for (const CVinculoLeido& leido : m_vinculos) {
        CParcela& parcela = m_estado.parcelas[static_cast<std::size_t>(leido.parcela)];
        if (parcela.vinculos == 0)
            parcela.primerVinculo = static_cast<std::uint32_t>(m_estado.vinculos.size());
        if (m_reparto == Reparto::PorLineas)
            EnlazaPorLineas(leido, parcela.clave.mun);
        else
            EnlazaPorNumero(leido, parcela.clave.mun);
    }
}

/// Gathers those of each parcel, in the order of the file, without moving what is sorted already.
void CEstadoEnObra::AsientaSubparcelas()
{
    std::vector<int> suParcela(m_subparcelas.size(), kNoEncontrado);
    for (std::size_t i = 0; i < m_subparcelas.size(); ++i) {
        const bool seguida = i > 0 && m_subparcelas[i].clave == m_subparcelas[i - 1].clave;
        suParcela[i] = seguida ? suParcela[i - 1] : BuscaParcela(m_subparcelas[i].clave);
        if (suParcela[i] >= 0)
            ++m_estado.parcelas[static_cast<std::size_t>(suParcela[i])].subparcelas;
        else
            ++m_estado.sinParcela;
    }
    std::uint32_t lugar = 0;
    for (CParcela& parcela : m_estado.parcelas)
        parcela.primeraSubparcela = std::exchange(lugar, lugar + parcela.subparcelas);
    m_estado.subparcelas.resize(lugar);
    std::vector<std::uint32_t> puestas(m_estado.parcelas.size());
    for (std::size_t i = 0; i < m_subparcelas.size(); ++i)
        if (suParcela[i] >= 0) {
            const auto parcela = static_cast<std::size_t>(suParcela[i]);
            m_estado
                .subparcelas[m_estado.parcelas[parcela].primeraSubparcela + puestas[parcela]++] =
                m_subparcelas[i].suya;
        }
}

/// Sorts by letter. A subparcel without a surface takes that of the first one with its letter, as
/// whatever the program writes has it.
void CEstadoEnObra::OrdenaSubparcelas(std::span<CSubparcela> suyas)
{
    std::ranges::stable_sort(suyas, {}, &CSubparcela::letra);
    for (auto desde = suyas.begin(); desde != suyas.end();) {
        const auto hasta =
            std::ranges::upper_bound(desde, suyas.end(), desde->letra, {}, &CSubparcela::letra);
        const auto con =
            std::find_if(desde, hasta, [](const CSubparcela& una) { return una.superficie > 0; });
        for (; desde != hasta; ++desde)
            if (desde->superficie == 0 && con != hasta)
                desde->superficie = con->superficie;
    }
}

CEstadoMunicipio CEstadoEnObra::Acaba()
{
    m_estado.conPrincipal = m_reparto == Reparto::PorNumero; // lines name all alike
    AsientaParajes();
    AsientaPersonas();
    AsientaVinculos();
    AsientaSubparcelas();
    for (const CParcela& parcela : m_estado.parcelas)
        OrdenaSubparcelas(
            {m_estado.subparcelas.data() + parcela.primeraSubparcela, parcela.subparcelas});
    return std::move(m_estado);
}

} // namespace informe
