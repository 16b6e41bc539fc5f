#include "cadastre/municipality.h"

#include <algorithm>
#include <string_view>
#include <tuple>

#include "cadastre/message_catalogue.h"
#include "cadastre/sorting.h"
#include "cadastre/wrapping.h"

namespace {

constexpr int kSinNumero = -1;

struct CPersona {
    std::string_view nombre;
    std::string_view dni;

    static CPersona De(const CTitular& titular) { return {titular.Nombre, titular.DNI}; }
    friend bool operator==(const CPersona&, const CPersona&) = default;
    friend std::uint32_t Resumen(const CPersona& p)
    {
        return ::Resumen(::Resumen(p.nombre), ::Resumen(p.dni));
    }
};

struct CNumerosParcela {
    int polig;
    int parcela;

    static CNumerosParcela De(const CParcela& parcela) { return {parcela.Polig, parcela.Parcela}; }
    friend bool operator==(const CNumerosParcela&, const CNumerosParcela&) = default;
    friend std::uint32_t Resumen(const CNumerosParcela& n)
    {
        return ::Resumen(static_cast<std::uint32_t>(n.polig),
                         static_cast<std::uint32_t>(n.parcela));
    }
};

struct CClaveModulo {
    std::string_view denominacion;
    std::string_view cal;
    int inten;

    static CClaveModulo De(const CModulo& m) { return {m.Denominacion, m.Cal, m.Inten}; }
    friend bool operator==(const CClaveModulo&, const CClaveModulo&) = default;
    friend std::uint32_t Resumen(const CClaveModulo& c)
    {
        return ::Resumen(::Resumen(::Resumen(c.denominacion), ::Resumen(c.cal)),
                         ::Resumen(c.inten));
    }
};

/// All keys by which a record is looked up, in one hash.
std::uint32_t Claves(const CTitular& titular)
{
    return Resumen(Resumen(CPersona::De(titular)), Resumen(titular.NumOrden));
}
std::uint32_t Claves(const CParcela& parcela)
{
    return Resumen(CNumerosParcela::De(parcela));
}

/// Tells whether the record handed out has other keys than it had then.
template <class T, class P>
bool HaCambiado(const std::vector<T>& registros, const P& prestado)
{
    return prestado.posicion >= 0 &&
           static_cast<std::size_t>(prestado.posicion) < registros.size() &&
           Claves(registros[static_cast<std::size_t>(prestado.posicion)]) != prestado.resumen;
}

int NumeroParaje(const CParaje& paraje)
{
    return paraje.NumOrden;
}

} // namespace

int CMunicipio::BuscaParaje(int num) const
{
    return m_parajesPorNumero.Busca(m_parajes, NumeroParaje, num);
}

int CMunicipio::BuscaParajeNombre(const CParaje& paraje) const
{
    return m_parajesPorNombre.Busca(m_parajes, &CParaje::Nombre, paraje.Nombre);
}

int CMunicipio::InsertaParaje(const CParaje& paraje)
{
    if (const int i = BuscaParajeNombre(paraje); i >= 0)
        return i;
    m_parajes.push_back(paraje);
    return static_cast<int>(m_parajes.size()) - 1;
}

int CMunicipio::BuscaModulo(const CModulo& modulo) const
{
    return m_modulosPorClave.Busca(m_modulos, CClaveModulo::De, CClaveModulo::De(modulo));
}

int CMunicipio::InsertaModulo(const CModulo& modulo)
{
    if (const int i = BuscaModulo(modulo); i >= 0)
        return i;
    m_modulos.push_back(modulo);
    return static_cast<int>(m_modulos.size()) - 1;
}

void CMunicipio::OlvidaTitulares() const
{
    m_titularesPorNumero.Olvida();
    m_titularesPorPersona.Olvida();
    m_titularesPorNombre.Olvida();
    m_titularesPorDNI.Olvida();
    m_primeroSinNumero = 0;
    m_titularPrestado = {};
}

void CMunicipio::OlvidaParcelas() const
{
    m_parcelasPorNumeros.Olvida();
    m_parcelaPrestada = {};
}

void CMunicipio::RevisaTitular() const
{
    if (HaCambiado(m_titulares, m_titularPrestado))
        OlvidaTitulares();
}

void CMunicipio::RevisaParcela() const
{
    if (HaCambiado(m_parcelas, m_parcelaPrestada))
        OlvidaParcelas();
}

CTitular& CMunicipio::DameTitular(int i)
{
    RevisaTitular();
    CTitular& titular = m_titulares[static_cast<std::size_t>(i)];
    m_titularPrestado = {i, Claves(titular)};
    return titular;
}

CParcela& CMunicipio::DameParcela(int i)
{
    RevisaParcela();
    CParcela& parcela = m_parcelas[static_cast<std::size_t>(i)];
    m_parcelaPrestada = {i, Claves(parcela)};
    return parcela;
}

int CMunicipio::BuscaTitular(const CTitular& titular) const
{
    RevisaTitular();
    const int conNombre =
        m_titularesPorNombre.Busca(m_titulares, &CTitular::Nombre, titular.Nombre);
    if (conNombre >= 0) { // else nobody is asked by name and DNI, and that table is never made
        const auto busca = [&](std::string_view dni) {
            return m_titularesPorPersona.Busca(m_titulares, CPersona::De,
                                               CPersona{titular.Nombre, dni});
        };
        const int igual = busca(titular.DNI);
        const int sinDNI = busca({});
        if (igual >= 0 && sinDNI >= 0)
            return std::min(igual, sinDNI);
        if (igual >= 0 || sinDNI >= 0)
            return std::max(igual, sinDNI);
    }
    const int conDNI = titular.DNI.IsEmpty()
                           ? kNoEncontrado
                           : m_titularesPorDNI.Busca(m_titulares, &CTitular::DNI, titular.DNI);
    if (conNombre < 0 && conDNI < 0)
        return kNoEncontrado;
    return conNombre > conDNI ? kMismoNombreOtroDNI : kMismoDNIOtroNombre;
}

int CMunicipio::BuscaTitularNumOrden(int num) const
{
    RevisaTitular();
    if (num != kSinNumero)
        return m_titularesPorNumero.Busca(m_titulares, &CTitular::NumOrden, num);
    // Holders lose the number -1 and never get it, so the first one with it only moves on.
    while (m_primeroSinNumero < m_titulares.size() &&
           m_titulares[m_primeroSinNumero].NumOrden != kSinNumero)
        ++m_primeroSinNumero;
    return m_primeroSinNumero < m_titulares.size() ? static_cast<int>(m_primeroSinNumero)
                                                   : kNoEncontrado;
}

int CMunicipio::InsertaTitular(CTitular titular)
{
    const int hallado = BuscaTitular(titular);
    return InsertaTitular(std::move(titular), hallado);
}

int CMunicipio::InsertaTitular(CTitular titular, int hallado)
{
    if (const int i = hallado; i >= 0) {
        CTitular& guardado = m_titulares[static_cast<std::size_t>(i)];
        if (guardado.NumOrden == kSinNumero && titular.NumOrden != kSinNumero) {
            guardado.NumOrden = titular.NumOrden;
            m_titularesPorNumero.ClaveNueva(m_titulares, &CTitular::NumOrden, i);
            if (m_titularPrestado.posicion == i)
                m_titularPrestado.resumen = Claves(guardado);
        }
        return i;
    }
    if (BuscaTitularNumOrden(titular.NumOrden) >= 0)
        titular.NumOrden = kSinNumero;
    m_titulares.push_back(std::move(titular));
    return static_cast<int>(m_titulares.size()) - 1;
}

bool CMunicipio::BuscaParcela(int polig, int parcela, int& i) const
{
    RevisaParcela();
    const int hallada = m_parcelasPorNumeros.Busca(m_parcelas, CNumerosParcela::De,
                                                   CNumerosParcela{polig, parcela});
    if (hallada < 0)
        return false;
    i = hallada;
    return true;
}

int CMunicipio::BuscaParcela(const CParcela& parcela) const
{
    int i = kNoEncontrado;
    BuscaParcela(parcela.Polig, parcela.Parcela, i);
    return i;
}

int CMunicipio::InsertaParcela(CParcela parcela)
{
    if (parcela.Polig < 1 || parcela.Parcela < 1)
        return kParcelaInvalida;
    if (const int i = BuscaParcela(parcela); i >= 0)
        return i;
    m_parcelas.push_back(std::move(parcela));
    return static_cast<int>(m_parcelas.size()) - 1;
}

int CMunicipio::MayorNumOrden(int mayor) const
{
    for (const CTitular& titular : m_titulares)
        mayor = std::max(mayor, titular.NumOrden);
    return mayor;
}

int CMunicipio::AsignaNumOrden(CStdioFile& log, int& mayor)
{
    int asignados = 0;
    for (CTitular& titular : m_titulares) {
        if (titular.NumOrden != kSinNumero)
            continue;
        mayor = Suma(mayor, 1);
        titular.NumOrden = mayor;
        EscribeMensaje(log, kSinNumImputa, titular.Nombre, titular.NumOrden);
        ++asignados;
    }
    if (asignados > 0)
        OlvidaTitulares();
    return asignados;
}

void CMunicipio::OrdenaTitulares()
{
    const std::vector<int> nuevos =
        OrdenaPor(m_titulares, [](const CTitular& titular) { return titular.NumOrden; });
    if (nuevos.empty())
        return;
    OlvidaTitulares();
    for (CParcela& parcela : m_parcelas)
        parcela.RenumeraTitulares(nuevos);
}

void CMunicipio::OrdenaParajes()
{
    std::vector<int> nuevos; // by the old position: first the number, then the new position
    nuevos.reserve(m_parajes.size());
    for (const CParaje& paraje : m_parajes)
        nuevos.push_back(paraje.NumOrden);
    OrdenaPor(m_parajes, [](const CParaje& paraje) { return std::string_view(paraje.Nombre); });
    m_parajesPorNumero.Olvida();
    m_parajesPorNombre.Olvida();
    for (int& nuevo : nuevos)
        nuevo = BuscaParaje(nuevo);
    for (CParcela& parcela : m_parcelas)
        if (parcela.paraje >= 0)
            parcela.paraje = nuevos[static_cast<std::size_t>(parcela.paraje)];
}

void CMunicipio::OrdenaParcelas()
{
    const std::vector<int> nuevas = OrdenaPor(m_parcelas, [](const CParcela& parcela) {
        return std::tuple(parcela.Zona, parcela.Polig, parcela.Parcela);
    });
    if (nuevas.empty())
        return;
    OlvidaParcelas();
    for (CTitular& titular : m_titulares)
        titular.RenumeraParcelas(nuevas);
}

void CMunicipio::OrdenaSubparcelas()
{
    for (CParcela& parcela : m_parcelas)
        parcela.OrdenaSubparcelas();
}

void CMunicipio::OrdenaModulos()
{
    OrdenaPor(m_modulos,
              [](const CModulo& modulo) { return std::string_view(modulo.Denominacion); });
    m_modulosPorClave.Olvida();
}

void CMunicipio::OrdenaCotitulares()
{
    for (CParcela& parcela : m_parcelas)
        parcela.OrdenaCotitulares();
}
