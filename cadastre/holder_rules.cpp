#include <algorithm>
#include <string_view>
#include <utility>

#include "cadastre/database.h"
#include "cadastre/wrapping.h"

// Which holder is which: who is the same person, which two are in conflict, and who gets which
// number.

namespace {

struct CPersona {
    std::string_view nombre;
    std::string_view dni;

    static CPersona De(const CTitular& titular) { return {titular.Nombre, titular.DNI}; }
    friend bool operator==(const CPersona&, const CPersona&) = default;
    friend std::uint32_t HashDe(const CPersona& p)
    {
        return ::HashDe(::HashDe(p.nombre), ::HashDe(p.dni));
    }
};

} // namespace

void CMunicipio::OlvidaTitulares()
{
    m_titularesPorNumero.Olvida();
    m_titularesPorPersona.Olvida();
    m_titularesPorNombre.Olvida();
    m_titularesPorDNI.Olvida();
    m_primeroSinNumero = 0;
}

int CMunicipio::BuscaTitular(const CTitular& titular) const
{
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
    if (num > m_mayorNumero) // as the next number is, where they ascend
        return kNoEncontrado;
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

int CMunicipio::InsertaTitular(CTitular&& titular, int hallado)
{
    if (const int i = hallado; i >= 0) {
        CTitular& guardado = m_titulares[static_cast<std::size_t>(i)];
        if (guardado.NumOrden == kSinNumero && titular.NumOrden != kSinNumero) {
            guardado.NumOrden = titular.NumOrden;
            m_mayorNumero = std::max(m_mayorNumero, guardado.NumOrden);
            m_titularesPorNumero.ClaveNueva(m_titulares, &CTitular::NumOrden, i);
        }
        return i;
    }
    if (BuscaTitularNumOrden(titular.NumOrden) >= 0)
        titular.NumOrden = kSinNumero;
    m_mayorNumero = std::max(m_mayorNumero, titular.NumOrden);
    m_titulares.push_back(std::move(titular));
    return static_cast<int>(m_titulares.size()) - 1;
}

void CMunicipio::AsientaPropiedades()
{
    for (const CPropiedadPorAsentar& p : std::exchange(m_propiedadesPorAsentar, {}))
        m_titulares[static_cast<std::size_t>(p.titular)].InsertaPropiedad(p.parcela, p.partici,
                                                                          p.Tit);
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
        m_mayorNumero = std::max(m_mayorNumero, mayor);
        EscribeMensaje(log, kSinNumImputa, titular.Nombre, titular.NumOrden);
        ++asignados;
    }
    if (asignados > 0)
        OlvidaTitulares();
    return asignados;
}

int CBaseCatastro::AsignaNumOrden(CStdioFile& log)
{
    int mayor = 0;
    for (const CMunicipio& municipio : m_municipios)
        mayor = municipio.MayorNumOrden(mayor);
    int asignados = 0;
    for (CMunicipio& municipio : m_municipios)
        asignados += municipio.AsignaNumOrden(log, mayor);
    return asignados;
}

int RegistraTitular(const CAvisos& avisos, CMunicipio& municipio, CTitular&& titular)
{
    const int codigo = municipio.BuscaTitular(titular);
    if (codigo == kMismoDNIOtroNombre)
        Avisa(avisos, kMismoDNI, titular.DNI);
    else if (codigo == kMismoNombreOtroDNI)
        Avisa(avisos, kMismoNombre, titular.Nombre);
    return municipio.InsertaTitular(std::move(titular), codigo);
}
