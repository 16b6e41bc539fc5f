#include <memory>
#include <utility>
#include <vector>

#include "cadastre/database.h"
#include "cadastre/exchange_lines.h"
#include "cadastre/record_types.h"
#include "evidence/report/reading/input_lines.h"
#include "evidence/report/reading/settled_parcels.h"
#include "evidence/row_keys.h"

// The lines of an exchange file. Modules, holders and places count where they stand; parcels and
// what hangs on them wait for the end of the file, and belong to the municipality of its last line.

namespace informe {
namespace {

struct CTitularLeido {
    int numero;
    int indice;
    int municipio;
};

class CLectorCatastro {
public:
    CLectorCatastro(CEntradaLeida& leida, CPersonas& personas)
        : m_leida(leida), m_personas(personas)
    {
    }

    void Toma(std::string_view linea, bool esTrozo);
    void Acaba();

private:
    void TomaModulo(std::string_view linea);
    void TomaTitular(std::string_view linea);
    void TomaParcela(std::string_view linea);
    void TomaSubparcela(std::string_view linea);
    void TomaParaje(std::string_view linea);
    void AsientaParcelas();
    void AsientaSubparcelas();
    void AsientaVinculos();
    CMunicipio& Municipio() { return m_base.DameMunicipio(m_municipio); }

    CEntradaLeida& m_leida;
    CPersonas& m_personas;
    CBaseCatastro m_base{0}; // without parcels
    int m_municipio = -1;    // of the last line
    CParcelasAsentadas m_asentadas;
    std::vector<CNumerosDeLinea> m_parcelas;
    std::vector<CClaveRegistro> m_subparcelas;
    std::vector<CTitularLeido> m_titulares;
};

void CLectorCatastro::Toma(std::string_view linea, bool esTrozo)
{
    const CLineaFija fija(linea);
    m_municipio = m_base.RegistraMunicipio(static_cast<short>(fija.Entero(kLeeMun)));
    const std::string_view tipo = fija.Texto(kLeeTipo);
    if (tipo == kTipoModulo)
        TomaModulo(linea);
    else if (tipo == kTipoTitular)
        TomaTitular(linea);
    else if (tipo == kTipoParcela)
        TomaParcela(linea);
    else if (tipo == kTipoSuelo || tipo == kTipoConstruccion)
        TomaSubparcela(linea);
    else if (tipo == kTipoParaje)
        TomaParaje(linea);
    else if (esTrozo)
        ++m_leida.trozos;
    else
        ++m_leida.ajenas[std::string(tipo)];
}

void CLectorCatastro::TomaModulo(std::string_view linea)
{
    ++m_leida.modulos.lineas;
    CModulo modulo;
    modulo.Lee(linea, kModoCatastro);
    if (Municipio().BuscaModulo(modulo) >= 0)
        return; // told by E203
    Municipio().InsertaModulo(modulo);
    m_leida.modulos.quedan.push_back(CClaveRegistro::De(modulo));
}

void CLectorCatastro::TomaTitular(std::string_view linea)
{
    ++m_leida.titulares.lineas;
    CTitular titular;
    titular.Lee(linea, kModoCatastro);
    m_personas.Mira(titular.Nombre, titular.DNI);
    const int numero = titular.NumOrden;
    titular.nombreVia = CString(); // nobody asks where he lives
    const CClaveRegistro clave = CClaveRegistro::De(titular);
    const std::size_t antes = Municipio().Titulares().size();
    const int indice = Municipio().InsertaTitular(std::move(titular));
    m_leida.titulares.Inserta(Municipio().Titulares().size() > antes, clave);
    m_titulares.push_back({numero, indice, m_municipio});
}

void CLectorCatastro::TomaParcela(std::string_view linea)
{
    ++m_leida.parcelas.lineas;
    const CNumerosDeLinea numeros = NumerosDeLineaParcela(linea);
    if (!numeros.enlaza)
        ++m_leida.sinVinculo;
    m_parcelas.push_back(numeros);
}

void CLectorCatastro::TomaSubparcela(std::string_view linea)
{
    ++m_leida.subparcelas.lineas;
    m_subparcelas.push_back(ClaveDeLineaSubparcela(linea));
}

void CLectorCatastro::TomaParaje(std::string_view linea)
{
    ++m_leida.parajes.lineas;
    CParaje paraje;
    paraje.Lee(linea);
    const std::size_t antes = Municipio().Parajes().size();
    Municipio().InsertaParaje(paraje);
    m_leida.parajes.Inserta(Municipio().Parajes().size() > antes, CClaveRegistro::De(paraje));
}

void CLectorCatastro::Acaba()
{
    m_leida.municipios = static_cast<std::int64_t>(m_base.Municipios().size());
    if (m_municipio < 0)
        return;
    AsientaParcelas();
    AsientaSubparcelas();
    AsientaVinculos();
    m_leida.base = std::make_shared<const CBaseCatastro>(std::move(m_base));
}

void CLectorCatastro::AsientaParcelas()
{
    m_asentadas.Reserva(m_parcelas.size());
    m_leida.parcelas.quedan.reserve(m_parcelas.size());
    for (const CNumerosDeLinea& leida : m_parcelas) {
        if (Municipio().BuscaParaje(leida.numParaje) < 0)
            continue;                                          // told by E102
        if (m_asentadas.Inserta({leida.polig, leida.parcela})) // else told by E207, or repeated
            m_leida.parcelas.quedan.push_back(
                CClaveRegistro::DeParcela(leida.polig, leida.parcela));
    }
}

void CLectorCatastro::AsientaSubparcelas()
{
    std::erase_if(m_subparcelas, [&](const CClaveRegistro& clave) { // told by E103
        return m_asentadas.Busca({clave.Polig(), clave.Parcela()}) < 0;
    });
    m_leida.subparcelas.quedan = std::move(m_subparcelas);
}

/// Each parcel's first link stands in front, the others behind: so the tables have them, the main
/// holders and then the rest.
void CLectorCatastro::AsientaVinculos()
{
    std::erase_if(m_titulares, [&](const CTitularLeido& t) { return t.municipio != m_municipio; });
    const CIndice<Gana::Todos> porNumero;
    CEntradaLeida::CLineas& vinculos = m_leida.vinculos;
    std::vector<CClaveRegistro> otros;
    for (const CNumerosDeLinea& leida : m_parcelas) {
        if (!leida.enlaza)
            continue;
        const int parcela = m_asentadas.Busca({leida.polig, leida.parcela});
        for (int i = porNumero.Busca(m_titulares, &CTitularLeido::numero, leida.numImputa); i >= 0;
             i = porNumero.Siguiente(m_titulares, &CTitularLeido::numero, i)) {
            ++vinculos.lineas;
            if (parcela < 0) {
                ++vinculos.sinEfecto;
                continue;
            }
            const auto vinculo =
                m_asentadas.Vincula(parcela, m_titulares[static_cast<std::size_t>(i)].indice);
            if (vinculo != CParcelasAsentadas::Vinculo::YaEstaba)
                (vinculo == CParcelasAsentadas::Vinculo::Primero ? vinculos.quedan : otros)
                    .push_back(CClaveRegistro::DeParcela(leida.polig, leida.parcela));
        }
    }
    vinculos.quedan.insert(vinculos.quedan.end(), otros.begin(), otros.end());
}

} // namespace

void LeeCatastro(CStdioFile& entrada, CEntradaLeida& leida, CPersonas& personas)
{
    CLectorCatastro lector(leida, personas);
    RecorreLineas<kLineaCatastro>(entrada, lector, leida);
    lector.Acaba();
}

} // namespace informe
