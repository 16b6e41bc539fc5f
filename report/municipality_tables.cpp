#include "report/municipality_tables.h"

#include "cadastre/exchange_format.h"
#include "cadastre/table_rows.h"
#include "vexa_libs/ccadena.h"

namespace informe {
namespace {

using CCampos = std::span<const std::string_view>;

// What the written layout keeps of a holder's name and DNI.
constexpr int kNombreEscrito = 60;
constexpr int kDniEscrito = 8;

CString SinCola(CString texto)
{
    return texto.TrimRight();
}

class CLectorTablas {
public:
    CLectorTablas(const std::array<CString, kTablas>& tablas, short mun, CPersonas& personas,
                  CSuperficies& superficies)
        : m_tablas(tablas), m_municipio(mun, 0), m_personas(personas), m_superficies(superficies)
    {
    }

    CTablasLeidas Lee();

private:
    using CClase = CTablasLeidas::CClase;
    void Recorre(Tabla tabla, CClase& clase, const CTomaFila& toma);
    void TomaTitular(std::string_view fila);
    void TomaParcela(std::string_view fila, CCampos campos);
    void TomaSubparcela(std::string_view fila, CCampos campos);
    void TomaCotitular(CCampos campos);
    void TomaParaje(CCampos campos);
    void TomaModulo(std::string_view fila);

    const std::array<CString, kTablas>& m_tablas;
    CMunicipio m_municipio;
    CPersonas& m_personas;
    CSuperficies& m_superficies;
    CTablasLeidas m_leidas;
    std::set<std::pair<int, int>> m_vinculos; // parcel and holder, by their places
};

void CLectorTablas::Recorre(Tabla tabla, CClase& clase, const CTomaFila& toma)
{
    clase.hay = RecorreTabla(m_tablas[static_cast<std::size_t>(tabla)],
                             [&](std::string_view fila, CCampos campos) {
                                 ++clase.filas;
                                 if (LeeEntero(campos[tabla::kMun]) == m_municipio.Mun)
                                     toma(fila, campos);
                                 else
                                     ++clase.deOtro;
                             });
}

void CLectorTablas::TomaTitular(std::string_view fila)
{
    CTitular titular;
    if (!titular.Lee(fila, kModoTabla)) {
        ++m_leidas.titulares.incompletas;
        return;
    }
    m_personas.Mira(titular.Nombre, titular.DNI);
    std::string clave(SinCola(titular.Nombre.Left(kNombreEscrito)));
    if (const CString dni = SinCola(titular.DNI.Left(kDniEscrito)); !dni.IsEmpty())
        clave.append(", ").append(dni);
    const std::size_t antes = m_municipio.Titulares().size();
    m_municipio.InsertaTitular(std::move(titular));
    if (m_municipio.Titulares().size() == antes)
        ++m_leidas.titulares.unidas;
    else
        m_leidas.titulares.quedan.push_back({0, 0, clave});
}

void CLectorTablas::TomaParcela(std::string_view fila, CCampos campos)
{
    CClase& clase = m_leidas.parcelas;
    CParcela parcela(0, 0, 0, {});
    if (campos[tabla::kNumImputa].empty() || campos[tabla::kTit].empty() ||
        campos[tabla::kPartici].empty() || !parcela.Lee(fila, kModoTabla)) {
        ++clase.incompletas;
        return;
    }
    const CClave clave{parcela.Polig, parcela.Parcela, {}};
    CSuperficie superficie;
    superficie.tabla = parcela.Superficie;
    superficie.concentrada = parcela.claveConc != ' ';
    const std::size_t antes = m_municipio.NumParcelas();
    const int i = m_municipio.InsertaParcela(std::move(parcela));
    if (i < 0) {
        ++clase.conMensaje;
    } else if (m_municipio.NumParcelas() == antes) {
        ++clase.unidas;
    } else {
        clase.quedan.push_back(clave);
        m_superficies[{clave.polig, clave.parcela}] = superficie;
        m_vinculos.emplace(i,
                           m_municipio.BuscaTitularNumOrden(LeeEntero(campos[tabla::kNumImputa])));
    }
}

void CLectorTablas::TomaSubparcela(std::string_view fila, CCampos campos)
{
    CClase& clase = m_leidas.subparcelas;
    const int polig = LeeEntero(campos[tabla::kPolig]);
    const int numero = LeeEntero(campos[tabla::kParcela]);
    int i = kNoEncontrado;
    CSubparcela subparcela;
    if (!m_municipio.BuscaParcela(polig, numero, i))
        ++clase.conMensaje;
    else if (!subparcela.Lee(fila, kModoTabla))
        ++clase.incompletas;
    else
        clase.quedan.push_back({polig, numero, subparcela.letra});
}

void CLectorTablas::TomaCotitular(CCampos campos)
{
    CClase& clase = m_leidas.cotitulares;
    const int polig = LeeEntero(campos[tabla::kPolig]);
    const int numero = LeeEntero(campos[tabla::kParcela]);
    int i = kNoEncontrado;
    if (!m_municipio.BuscaParcela(polig, numero, i)) {
        ++m_leidas.cotitularesSinParcela;
        return;
    }
    const int titular =
        m_municipio.BuscaTitularNumOrden(LeeEntero(campos[tabla::kCotitularNumOrden]));
    if (titular < 0)
        ++m_leidas.cotitularesSinTitular;
    else if (campos[tabla::kCotitularTit].empty() || campos[tabla::kCotitularPartici].empty())
        ++clase.incompletas;
    else if (m_vinculos.emplace(i, titular).second)
        clase.quedan.push_back({polig, numero, {}});
    else
        ++clase.unidas;
}

void CLectorTablas::TomaParaje(CCampos campos)
{
    CClase& clase = m_leidas.parajes;
    if (campos[tabla::kParajeNumOrden].empty() || campos[tabla::kParajeNombre].empty()) {
        ++clase.incompletas;
        return;
    }
    const CParaje paraje{CString(campos[tabla::kParajeNombre])};
    const std::size_t antes = m_municipio.Parajes().size();
    m_municipio.InsertaParaje(paraje);
    if (m_municipio.Parajes().size() == antes)
        ++clase.unidas;
    else
        clase.quedan.push_back({0, 0, SinCola(paraje.Nombre)});
}

void CLectorTablas::TomaModulo(std::string_view fila)
{
    CClase& clase = m_leidas.modulos;
    CModulo modulo;
    if (!modulo.Lee(fila, kModoTabla)) {
        ++clase.incompletas;
        return;
    }
    const std::size_t antes = m_municipio.Modulos().size();
    m_municipio.InsertaModulo(modulo);
    if (m_municipio.Modulos().size() == antes)
        ++clase.unidas;
    else
        clase.quedan.push_back({modulo.Inten, 0, modulo.Cal});
}

CTablasLeidas CLectorTablas::Lee()
{
    Recorre(kParajes, m_leidas.parajes, [&](auto, CCampos campos) { TomaParaje(campos); });
    Recorre(kModulos, m_leidas.modulos, [&](auto fila, auto) { TomaModulo(fila); });
    Recorre(kTitulares, m_leidas.titulares, [&](auto fila, auto) { TomaTitular(fila); });
    Recorre(kParcelas, m_leidas.parcelas,
            [&](auto fila, CCampos campos) { TomaParcela(fila, campos); });
    Recorre(kSubparcelas, m_leidas.subparcelas,
            [&](auto fila, CCampos campos) { TomaSubparcela(fila, campos); });
    Recorre(kCotitulares, m_leidas.cotitulares,
            [&](auto, CCampos campos) { TomaCotitular(campos); });
    return std::move(m_leidas);
}

} // namespace

CTablasLeidas LeeTablas(const std::array<CString, kTablas>& tablas, short mun, CPersonas& personas,
                        CSuperficies& superficies)
{
    return CLectorTablas(tablas, mun, personas, superficies).Lee();
}

} // namespace informe
