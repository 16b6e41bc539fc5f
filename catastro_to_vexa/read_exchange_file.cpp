#include <algorithm>
#include <cstdint>
#include <iterator>
#include <span>
#include <utility>

#include "cadastre/exchange_lines.h"
#include "cadastre/subparcel_columns.h"
#include "cadastre/table_files.h"
#include "cadastre/wrapping.h"
#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "catastro_to_vexa/exchange_reader.h"
#include "platform/memory_hint.h"

// The reading of an exchange file: the walk of its lines, then the three phases that settle what
// the lines left pending. Each gives false when the user stopped it.

namespace {

/// A municipality's holder lines by number.
class CPorNumero {
public:
    CPorNumero(const std::vector<CTitularLeido>& leidos, int municipio)
    {
        m_lineas.reserve(leidos.size());
        std::copy_if(leidos.begin(), leidos.end(), std::back_inserter(m_lineas),
                     [&](const CTitularLeido& leido) { return leido.municipio == municipio; });
        if (!std::is_sorted(m_lineas.begin(), m_lineas.end(), kMenor))
            std::stable_sort(m_lineas.begin(), m_lineas.end(), kMenor);
        AnotaSitios();
    }

    /// The lines of a number, in the order of the file.
    std::span<const CTitularLeido> Con(int numero) const
    {
        if (m_sitios.empty()) {
            CTitularLeido buscado;
            buscado.NumOrden = numero;
            const auto [desde, hasta] =
                std::equal_range(m_lineas.begin(), m_lineas.end(), buscado, kMenor);
            return {desde, hasta};
        }
        const std::int64_t i = Sitio(numero);
        if (i < 0)
            return {};
        const auto sitio = m_sitios.begin() + i;
        return {m_lineas.begin() + sitio[0], m_lineas.begin() + sitio[1]};
    }

    /// Tells that the lines of a number will be asked for soon, and those of another one later.
    void Anuncia(int pronto, int luego) const
    {
        if (const std::int64_t i = Sitio(luego); i >= 0)
            PideMemoria(&m_sitios[static_cast<std::size_t>(i)]);
        if (const std::int64_t i = Sitio(pronto); i >= 0)
            PideMemoria(m_lineas.data() + m_sitios[static_cast<std::size_t>(i)]);
    }

private:
    /// Where a number's first line is noted; below 0 where it isn't.
    std::int64_t Sitio(int numero) const
    {
        const std::int64_t i =
            m_sitios.empty() ? -1 : std::int64_t{numero} - m_lineas.front().NumOrden;
        return i + 1 < std::ssize(m_sitios) ? i : -1;
    }

    /// Numbers hardly leave any out, so that the first line of each can be noted. Where they leave
    /// out more than they take, they are searched.
    void AnotaSitios()
    {
        if (m_lineas.empty())
            return;
        const int primero = m_lineas.front().NumOrden;
        const std::int64_t numeros = std::int64_t{m_lineas.back().NumOrden} - primero + 1;
        if (numeros > 2 * std::ssize(m_lineas))
            return;
        m_sitios.reserve(static_cast<std::size_t>(numeros) + 1);
        for (int i = 0; const CTitularLeido& linea : m_lineas) {
            m_sitios.resize(static_cast<std::size_t>(linea.NumOrden - primero) + 1, i);
            ++i;
        }
        m_sitios.push_back(static_cast<int>(m_lineas.size()));
    }

    static constexpr auto kMenor = [](const CTitularLeido& a, const CTitularLeido& b) {
        return a.NumOrden < b.NumOrden;
    };

    std::vector<CTitularLeido> m_lineas;
    std::vector<int> m_sitios; // of the first line with each number or a higher one
};

/// Stores a parcel at its place. Gives its index; below 0 for one that was dropped, and told.
int AsientaParcela(CParcela&& parcela, int numParaje, CLecturaCatastro& lectura)
{
    CMunicipio& municipio = lectura.Municipio();
    const int polig = parcela.Polig;
    const int numero = parcela.Parcela;
    parcela.paraje = municipio.BuscaParaje(numParaje);
    if (parcela.paraje < 0) {
        Avisa(lectura.avisos, kParajeNoEncontrado, numParaje, polig, numero);
        return kNoEncontrado;
    }
    const std::size_t antes = municipio.NumParcelas();
    const int indice = municipio.InsertaParcela(std::move(parcela));
    if (indice == kParcelaInvalida)
        Avisa(lectura.avisos, kParcelaNoValida, polig, numero);
    else if (municipio.NumParcelas() == antes)
        Avisa(lectura.avisos, kParcelaRepetida, polig, numero);
    return indice;
}

/// How many subparcels, from the one in front on, are one parcel's, as far as is seen at once.
std::size_t Seguidas(const CColaLineas& subparcelas)
{
    constexpr CLectura kPolig = ColumnaDe(kColumnasComunes, &CDatosLinea::Polig).catastro;
    constexpr CLectura kParcela = ColumnaDe(kColumnasComunes, &CDatosLinea::Parcela).catastro;
    static_assert(kParcela.columna == kPolig.columna + kPolig.ancho);
    return subparcelas.CuantasIguales(kPolig.columna, kPolig.ancho + kParcela.ancho);
}

/// Links the parcel to the holder of a TL line that has the number which the parcel names.
void Enlaza(CLecturaCatastro& lectura, int indiceParcela, const CTitularLeido& leido,
            const CString& Tit)
{
    CMunicipio& municipio = lectura.Municipio();
    CParcela& parcela = municipio.DameParcela(indiceParcela);
    const CTitular& titular = municipio.DameTitular(leido.indice);
    const int vinculos = static_cast<int>(parcela.Cotitulares().size());
    switch (parcela.InsertaCotitular(leido.indice, vinculos, leido.partici, Tit)) {
    case kOrdenRepetido:
        Avisa(lectura.avisos, kYaCotitular, parcela.Polig, parcela.Parcela, titular.Nombre);
        break;
    case kTitularRepetido:
        Avisa(lectura.avisos, kYaTitular, titular.Nombre, parcela.Polig, parcela.Parcela);
        break;
    default:
        municipio.InsertaPropiedad(leido.indice, indiceParcela, leido.partici, Tit);
    }
}

} // namespace

void CCampivaAVexaDlg::LeeArchivoNormal(CBaseCatastro& base, CStdioFile* entrada, CStdioFile* log,
                                        int* numErrores, int* numWarnings)
{
    CLecturaCatastro lectura{
        .base = base, .avisos = {*log, *numErrores, *numWarnings}, .vista = m_vista};
    Fase(IDS_LEYENDO_BASE);
    const std::uint64_t longitud = entrada->GetLength();
    char bufer[kLineaCatastro + 1];
    while (entrada->ReadString(bufer, sizeof bufer) != nullptr) {
        const std::string_view linea = bufer;
        if (!Avanza(entrada->GetPosition(), longitud))
            return;
        const CLineaFija fija(linea);
        if (fija.Vacia())
            continue;
        if (base.Ger == 0)
            base.Ger = static_cast<short>(fija.Entero(kLeeGer));
        lectura.municipioActual = base.RegistraMunicipio(static_cast<short>(fija.Entero(kLeeMun)));
        TomaRegistro(linea, lectura);
        m_lineas.Toma(linea);
    }
    AsientaRegistros(lectura);
}

void CCampivaAVexaDlg::AsientaRegistros(CLecturaCatastro& lectura)
{
    if (!AsientaParcelas(lectura) || !AsientaSubparcelas(lectura))
        return;
    const int asignados = lectura.base.AsignaNumOrden(lectura.avisos.log);
    lectura.avisos.numErrores = Suma(lectura.avisos.numErrores, asignados);
    if (AsientaTitulares(lectura))
        lectura.base.EligeTitularPrincipal();
}

bool CCampivaAVexaDlg::AsientaParcelas(CLecturaCatastro& lectura)
{
    Fase(IDS_REGISTRANDO_PARCELAS);
    const std::size_t n = lectura.parcelasLeidas.Cuantas();
    if (n == 0)
        return true;
    lectura.Municipio().ReservaParcelas(n);
    m_vista.ultimo = lectura.Municipio().Mun;
    for (std::size_t k = 0; k < n; ++k, lectura.parcelasLeidas.Quita()) {
        if (!Avanza(k, n))
            return false;
        // All are looked for in the one municipality, with their places and holders.
        m_vista.deOtroUltimo +=
            CLineaFija(lectura.parcelasLeidas.Primera()).Entero(kLeeMun) != m_vista.ultimo;
        CDatosLinea datos;
        auto parcela =
            m_vista.Lee<CParcela>(lectura.parcelasLeidas.Primera(), kModoCatastro, datos);
        CVinculoParcela& vinculo = lectura.vinculosParcela.emplace_back(
            CVinculoParcela{datos.numImputa, parcela.Polig, parcela.Parcela, datos.Tit});
        vinculo.indice = AsientaParcela(std::move(parcela), datos.numParaje, lectura);
    }
    return true;
}

bool CCampivaAVexaDlg::AsientaSubparcelas(CLecturaCatastro& lectura)
{
    Fase(IDS_REGISTRANDO_SUBPARCELAS);
    const std::size_t n = lectura.subparcelasLeidas.Cuantas();
    for (std::size_t k = 0; k < n; ++k, lectura.subparcelasLeidas.Quita()) {
        if (!Avanza(k, n))
            return false;
        CDatosLinea datos;
        auto subparcela =
            m_vista.Lee<CSubparcela>(lectura.subparcelasLeidas.Primera(), kModoCatastro, datos);
        m_vista.parten += ParteFilas({&subparcela.cSing, 1}) ? 1 : 0;
        int i = kNoEncontrado;
        if (!lectura.Municipio().BuscaParcela(datos.Polig, datos.Parcela, i)) {
            Avisa(lectura.avisos, kSubparcelaSinParcela, datos.Polig, datos.Parcela,
                  subparcela.letra);
            continue;
        }
        CParcela& parcela = lectura.Municipio().DameParcela(i);
        if (parcela.Subparcelas().empty())
            parcela.ReservaSubparcelas(Seguidas(lectura.subparcelasLeidas));
        bool repetida = false;
        const int nueva = parcela.InsertaSubparcela(std::move(subparcela), repetida);
        if (repetida)
            Avisa(lectura.avisos, kSubparcelaDuplicada, datos.Polig, datos.Parcela,
                  parcela.DameSubparcela(nueva).letra);
    }
    return true;
}

bool CCampivaAVexaDlg::AsientaTitulares(CLecturaCatastro& lectura)
{
    Fase(IDS_REGISTRANDO_TITULARES);
    const CPorNumero leidos(lectura.titularesLeidos, lectura.municipioActual);
    const std::size_t n = lectura.vinculosParcela.size();
    constexpr std::size_t kDespues = 8; // parcels, by whose time what stands anywhere is fetched
    for (std::size_t k = 0; k < n; ++k) {
        if (!Avanza(k, n))
            return false;
        if (k + 2 * kDespues < n)
            leidos.Anuncia(lectura.vinculosParcela[k + kDespues].numImputa,
                           lectura.vinculosParcela[k + 2 * kDespues].numImputa);
        const CVinculoParcela& vinculo = lectura.vinculosParcela[k];
        int i = vinculo.indice;
        if (vinculo.Tit.IsEmpty() ||
            (i < 0 && !lectura.Municipio().BuscaParcela(vinculo.Polig, vinculo.Parcela, i)))
            continue; // the parcel was dropped, and told then
        for (const CTitularLeido& leido : leidos.Con(vinculo.numImputa))
            Enlaza(lectura, i, leido, vinculo.Tit);
    }
    return true;
}
