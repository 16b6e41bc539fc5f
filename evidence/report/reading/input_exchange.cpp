#include <algorithm>

#include "cadastre/database.h"
#include "cadastre/exchange_lines.h"
#include "evidence/report/reading/input_lines.h"

// The lines of an exchange file. Modules, holders and places count where they stand; parcels and
// what hangs on them wait for the end of the file, and belong to the municipality of its last line.

namespace informe {
namespace {

struct CParcelaLeida {
    short polig;
    int parcela;
    int numParaje;
    int numImputa;
    bool enlaza;
};

struct CTitularLeido {
    int numero;
    int indice;
    int municipio;
};

/// Links a parcel to a holder. False where it has that one already.
bool Enlaza(CParcela& parcela, int titular)
{
    const int vinculos = static_cast<int>(parcela.Cotitulares().size());
    return parcela.InsertaCotitular(titular, vinculos, 0, {}) == 1;
}

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
    CBaseCatastro m_base{0};
    int m_municipio = -1; // of the last line
    std::vector<CParcelaLeida> m_parcelas;
    std::vector<CClaveRegistro> m_subparcelas;
    std::vector<CTitularLeido> m_titulares;
};

void CLectorCatastro::Toma(std::string_view linea, bool esTrozo)
{
    const CLineaFija fija(linea);
    m_municipio = m_base.RegistraMunicipio(static_cast<short>(fija.Entero(kLeeMun)));
    const std::string_view tipo = fija.Texto(kLeeTipo);
    if (tipo == "MD")
        TomaModulo(linea);
    else if (tipo == "TL")
        TomaTitular(linea);
    else if (tipo == "PR")
        TomaParcela(linea);
    else if (tipo == "SP" || tipo == "SC")
        TomaSubparcela(linea);
    else if (tipo == "PJ")
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
    const CClaveRegistro clave = CClaveRegistro::De(titular);
    const std::size_t antes = Municipio().Titulares().size();
    const int indice = Municipio().InsertaTitular(std::move(titular));
    m_leida.titulares.Inserta(Municipio().Titulares().size() > antes, clave);
    m_titulares.push_back({numero, indice, m_municipio});
}

void CLectorCatastro::TomaParcela(std::string_view linea)
{
    ++m_leida.parcelas.lineas;
    CParcela parcela(0, 0, 0, {});
    CDatosLinea datos;
    parcela.Lee(linea, kModoCatastro, datos);
    const bool enlaza = !datos.Tit.IsEmpty(); // the line is long enough to name a holder
    if (!enlaza)
        ++m_leida.sinVinculo;
    m_parcelas.push_back(
        {parcela.Polig, parcela.Parcela, datos.numParaje, datos.numImputa, enlaza});
}

void CLectorCatastro::TomaSubparcela(std::string_view linea)
{
    ++m_leida.subparcelas.lineas;
    CSubparcela subparcela;
    CDatosLinea datos;
    subparcela.Lee(linea, kModoCatastro, datos);
    m_subparcelas.push_back(
        CClaveRegistro::DeSubparcela(datos.Polig, datos.Parcela, subparcela.letra));
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
}

void CLectorCatastro::AsientaParcelas()
{
    CMunicipio& municipio = Municipio();
    for (const CParcelaLeida& leida : m_parcelas) {
        if (municipio.BuscaParaje(leida.numParaje) < 0)
            continue; // told by E102
        const std::size_t antes = municipio.NumParcelas();
        municipio.InsertaParcela(CParcela(leida.polig, leida.parcela));
        if (municipio.NumParcelas() > antes) // else told by E207, or repeated
            m_leida.parcelas.quedan.push_back(
                CClaveRegistro::DeParcela(leida.polig, leida.parcela));
    }
}

void CLectorCatastro::AsientaSubparcelas()
{
    int indice = kNoEncontrado;
    for (CClaveRegistro& clave : m_subparcelas)
        if (Municipio().BuscaParcela(clave.Polig(), clave.Parcela(), indice))
            m_leida.subparcelas.quedan.push_back(std::move(clave));
}

void CLectorCatastro::AsientaVinculos()
{
    CMunicipio& municipio = Municipio();
    std::erase_if(m_titulares, [&](const CTitularLeido& t) { return t.municipio != m_municipio; });
    const auto esMenor = [](const CTitularLeido& a, const CTitularLeido& b) {
        return a.numero < b.numero;
    };
    std::stable_sort(m_titulares.begin(), m_titulares.end(), esMenor);
    for (const CParcelaLeida& leida : m_parcelas) {
        if (!leida.enlaza)
            continue;
        int parcela = kNoEncontrado;
        const bool hayParcela = municipio.BuscaParcela(leida.polig, leida.parcela, parcela);
        auto titular =
            std::lower_bound(m_titulares.begin(), m_titulares.end(),
                             CTitularLeido{leida.numImputa, kNoEncontrado, m_municipio}, esMenor);
        for (; titular != m_titulares.end() && titular->numero == leida.numImputa; ++titular) {
            ++m_leida.vinculos.lineas;
            if (!hayParcela)
                ++m_leida.vinculos.sinEfecto;
            else if (Enlaza(municipio.DameParcela(parcela), titular->indice))
                m_leida.vinculos.quedan.push_back(
                    CClaveRegistro::DeParcela(leida.polig, leida.parcela));
        }
    }
}

} // namespace

void LeeCatastro(CStdioFile& entrada, CEntradaLeida& leida, CPersonas& personas)
{
    CLectorCatastro lector(leida, personas);
    RecorreLineas<kLineaCatastro>(entrada, lector, leida);
    lector.Acaba();
}

} // namespace informe
