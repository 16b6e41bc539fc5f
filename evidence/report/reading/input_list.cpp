#include <utility>

#include "cadastre/database.h"
#include "cadastre/exchange_lines.h"
#include "evidence/report/reading/input_lines.h"

// The lines of a list of subparcels with holders: the order of the lines links them.

namespace informe {
namespace {

struct CActual {
    int municipio = -1;
    int indice = -1; ///< below 0 for none
};

class CLectorRelacion {
public:
    CLectorRelacion(CEntradaLeida& leida, CPersonas& personas)
        : m_leida(leida), m_personas(personas)
    {
    }

    void Toma(std::string_view linea, bool esTrozo);
    void Acaba() { m_leida.municipios = static_cast<std::int64_t>(m_base.Municipios().size()); }

private:
    void TomaTitular(std::string_view linea, int municipio);
    void TomaParcela(std::string_view linea, int municipio);
    void TomaSubparcela(std::string_view linea);

    CEntradaLeida& m_leida;
    CPersonas& m_personas;
    CBaseCatastro m_base{0};
    CActual m_titular;
    CActual m_parcela;
    bool m_cabecera = false;                        // it has passed
    std::set<std::tuple<int, int, int>> m_vinculos; // municipality, parcel, holder
};

void CLectorRelacion::Toma(std::string_view linea, bool esTrozo)
{
    if (!std::exchange(m_cabecera, true)) {
        ++m_leida.ajenas[kTipoCabecera];
        return;
    }
    const CLineaFija fija(linea);
    const int tipo = fija.Entero(kLeeTipo);
    const int municipio = tipo == kLineaIgnorada
                              ? -1
                              : m_base.RegistraMunicipio(static_cast<short>(fija.Entero(kLeeMun)));
    if (tipo == kLineaTitular)
        TomaTitular(linea, municipio);
    else if (tipo == kLineaParcela)
        TomaParcela(linea, municipio);
    else if (tipo == kLineaSubparcela)
        TomaSubparcela(linea);
    else if (esTrozo)
        ++m_leida.trozos;
    else
        ++m_leida.ajenas[std::string(fija.Texto(kLeeTipo))];
}

void CLectorRelacion::TomaTitular(std::string_view linea, int municipio)
{
    ++m_leida.titulares.lineas;
    CTitular titular;
    titular.Lee(linea, kModoLista);
    m_personas.Mira(titular.Nombre, titular.DNI);
    const CClaveRegistro clave = CClaveRegistro::De(titular);
    CMunicipio& suyo = m_base.DameMunicipio(municipio);
    const std::size_t antes = suyo.Titulares().size();
    m_titular = {municipio, suyo.InsertaTitular(std::move(titular))};
    m_leida.titulares.Inserta(suyo.Titulares().size() > antes, clave);
}

void CLectorRelacion::TomaParcela(std::string_view linea, int municipio)
{
    ++m_leida.parcelas.lineas;
    ++m_leida.parajes.lineas;
    CMunicipio& suyo = m_base.DameMunicipio(municipio);
    CParcela parcela(0, 0, 0, {});
    CDatosLinea datos;
    parcela.Lee(linea, kModoLista, datos);
    const CParaje paraje(datos.nombreParaje);
    const std::size_t parajes = suyo.Parajes().size();
    suyo.InsertaParaje(paraje);
    m_leida.parajes.Inserta(suyo.Parajes().size() > parajes, CClaveRegistro::De(paraje));
    const auto clave = CClaveRegistro::DeParcela(parcela.Polig, parcela.Parcela);
    const std::size_t parcelas = suyo.NumParcelas();
    m_parcela = {municipio, suyo.InsertaParcela(std::move(parcela))};
    if (m_parcela.indice < 0)
        ++m_leida.parcelas.sinEfecto;
    else
        m_leida.parcelas.Inserta(suyo.NumParcelas() > parcelas, clave);
}

void CLectorRelacion::TomaSubparcela(std::string_view linea)
{
    ++m_leida.subparcelas.lineas;
    ++m_leida.vinculos.lineas;
    if (m_parcela.indice < 0) {
        ++m_leida.subparcelas.sinEfecto;
        ++m_leida.vinculos.sinEfecto;
        return;
    }
    CSubparcela subparcela;
    subparcela.Lee(linea, kModoLista);
    const CMunicipio& suyo = m_base.DameMunicipio(m_parcela.municipio);
    const CParcela& parcela = suyo.DameParcela(m_parcela.indice);
    m_leida.subparcelas.quedan.push_back(
        CClaveRegistro::DeSubparcela(parcela.Polig, parcela.Parcela, subparcela.letra));
    if (m_titular.indice < 0 || m_titular.municipio != m_parcela.municipio)
        ++m_leida.vinculos.sinEfecto;
    else // further subparcels add to the share of the same holder
        m_leida.vinculos.Inserta(
            m_vinculos.emplace(m_parcela.municipio, m_parcela.indice, m_titular.indice).second,
            CClaveRegistro::DeParcela(parcela.Polig, parcela.Parcela));
}

} // namespace

void LeeRelacion(CStdioFile& entrada, CEntradaLeida& leida, CPersonas& personas)
{
    CLectorRelacion lector(leida, personas);
    RecorreLineas<kLineaLista>(entrada, lector, leida);
    lector.Acaba();
}

} // namespace informe
