#include "evidence/report/reading/municipality_tables.h"

#include "cadastre/exchange_format.h"
#include "cadastre/municipality.h"
#include "evidence/table_rows.h"

namespace informe {
namespace {

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
    void TomaParcela(std::string_view fila);
    void TomaSubparcela(std::string_view fila);
    void TomaCotitular(std::string_view fila);
    void TomaParaje(std::string_view fila);
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
    clase.hay = RecorreTabla(m_tablas[static_cast<std::size_t>(tabla)], [&](std::string_view fila) {
        ++clase.filas;
        if (MunicipioDeFila(fila) == m_municipio.Mun)
            toma(fila);
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

void CLectorTablas::TomaParcela(std::string_view fila)
{
    CClase& clase = m_leidas.parcelas;
    CParcela parcela(0, 0, 0, {});
    CDatosLinea datos;
    if (!parcela.Lee(fila, kModoTabla, datos) || datos.faltan) {
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
        m_vinculos.emplace(i, m_municipio.BuscaTitularNumOrden(datos.numImputa));
    }
}

void CLectorTablas::TomaSubparcela(std::string_view fila)
{
    CClase& clase = m_leidas.subparcelas;
    CSubparcela subparcela;
    CDatosLinea datos;
    const bool leida = subparcela.Lee(fila, kModoTabla, datos);
    int i = kNoEncontrado;
    if (!m_municipio.BuscaParcela(datos.Polig, datos.Parcela, i))
        ++clase.conMensaje;
    else if (!leida)
        ++clase.incompletas;
    else
        clase.quedan.push_back({datos.Polig, datos.Parcela, subparcela.letra});
}

void CLectorTablas::TomaCotitular(std::string_view fila)
{
    CClase& clase = m_leidas.cotitulares;
    CCotitular vinculo;
    CDatosLinea datos;
    const bool leido = vinculo.Lee(fila, datos);
    int i = kNoEncontrado;
    if (!m_municipio.BuscaParcela(datos.Polig, datos.Parcela, i)) {
        ++m_leidas.cotitularesSinParcela;
        return;
    }
    const int titular = m_municipio.BuscaTitularNumOrden(datos.numImputa);
    if (titular < 0)
        ++m_leidas.cotitularesSinTitular;
    else if (!leido)
        ++clase.incompletas;
    else if (m_vinculos.emplace(i, titular).second)
        clase.quedan.push_back({datos.Polig, datos.Parcela, {}});
    else
        ++clase.unidas;
}

void CLectorTablas::TomaParaje(std::string_view fila)
{
    CClase& clase = m_leidas.parajes;
    CParaje paraje;
    if (!paraje.Lee(fila, kModoTabla)) {
        ++clase.incompletas;
        return;
    }
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
    Recorre(kParajes, m_leidas.parajes, [&](auto fila) { TomaParaje(fila); });
    Recorre(kModulos, m_leidas.modulos, [&](auto fila) { TomaModulo(fila); });
    Recorre(kTitulares, m_leidas.titulares, [&](auto fila) { TomaTitular(fila); });
    Recorre(kParcelas, m_leidas.parcelas, [&](auto fila) { TomaParcela(fila); });
    Recorre(kSubparcelas, m_leidas.subparcelas, [&](auto fila) { TomaSubparcela(fila); });
    Recorre(kCotitulares, m_leidas.cotitulares, [&](auto fila) { TomaCotitular(fila); });
    return std::move(m_leidas);
}

} // namespace

CTablasLeidas LeeTablas(const std::array<CString, kTablas>& tablas, short mun, CPersonas& personas,
                        CSuperficies& superficies)
{
    return CLectorTablas(tablas, mun, personas, superficies).Lee();
}

} // namespace informe
