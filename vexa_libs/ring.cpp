#include "vexa_libs/ring.h"

#include <algorithm>

#include "vexa_libs/orientation.h"

namespace vexageo {
namespace {

bool EntreExtremos(const CPunto<int>& a, const CPunto<int>& b, const CPunto<int>& p)
{
    return std::min(a.X, b.X) <= p.X && p.X <= std::max(a.X, b.X) && std::min(a.Y, b.Y) <= p.Y &&
           p.Y <= std::max(a.Y, b.Y);
}

/// What the edges seen so far say of a point, whose ray runs to the right.
struct CCuenta {
    CPunto<int> punto;
    bool dentro = false; // the ray has met an odd number of them
    bool borde = false;

    void Arista(const CPunto<int>& a, const CPunto<int>& b)
    {
        const bool sube = a.Y <= punto.Y && punto.Y < b.Y;
        const bool baja = b.Y <= punto.Y && punto.Y < a.Y;
        if (!sube && !baja && !EntreExtremos(a, b, punto))
            return;
        const Ancho cruz = Cruz(a, b, punto);
        borde = borde || (cruz == 0 && EntreExtremos(a, b, punto));
        dentro ^= (sube && cruz > 0) || (baja && cruz < 0);
    }
    /// Edges in a row that lie right of the point all: the ray meets an odd number of them where
    /// their two ends lie on both sides of it.
    void CadenaALaDerecha(const CPunto<int>& a, const CPunto<int>& b)
    {
        dentro ^= (a.Y <= punto.Y) != (b.Y <= punto.Y);
    }
    Lugar Dice() const { return borde ? Lugar::Borde : dentro ? Lugar::Dentro : Lugar::Fuera; }
};

constexpr std::size_t kMenosPuntos = 3; // of a ring that holds something
constexpr std::size_t kAnilloLargo = 64;
constexpr std::size_t kPorCadena = 8;

} // namespace

Lugar Situa(const std::vector<CPunto<int>>& anillo, const CPunto<int>& punto)
{
    if (anillo.size() < kMenosPuntos)
        return Lugar::Fuera;
    CCuenta cuenta{punto};
    const CPunto<int>* a = &anillo.back();
    for (const CPunto<int>& b : anillo) {
        cuenta.Arista(*a, b);
        if (cuenta.borde)
            break;
        a = &b;
    }
    return cuenta.Dice();
}

struct CAnilloConsultado::CVisita {
    CCuenta cuenta;
    std::size_t aristas; // of a chain of the level at work
};

const CPunto<int>& CAnilloConsultado::Esquina(std::size_t arista) const
{
    return arista == 0 ? m_anillo->back() : (*m_anillo)[arista - 1];
}

Lugar CAnilloConsultado::Situa(const CPunto<int>& punto) const
{
    if (m_anillo->size() < kAnilloLargo)
        return vexageo::Situa(*m_anillo, punto);
    if (!m_niveles)
        m_niveles = std::make_unique<CNiveles>(Construye());
    CVisita visita{{punto}, kPorCadena};
    for (std::size_t nivel = 1; nivel < m_niveles->size(); ++nivel)
        visita.aristas *= kPorCadena;
    Mira(visita, m_niveles->size() - 1, 0);
    return visita.cuenta.Dice();
}

CAnilloConsultado::CNiveles CAnilloConsultado::Construye() const
{
    const auto cadenas = [](std::size_t debajo) { return (debajo - 1) / kPorCadena + 1; };
    const auto caja = [](const CPunto<int>& p) { return CCaja{{p.X, p.Y}, {p.X, p.Y}}; };
    CNiveles niveles(1);
    std::vector<CCaja>& primero = niveles.back();
    primero.reserve(cadenas(m_anillo->size()));
    for (std::size_t i = 0; i < m_anillo->size(); ++i) {
        if (i % kPorCadena == 0)
            primero.push_back(caja(Esquina(i)));
        primero.back().Junta(caja((*m_anillo)[i]));
    }
    while (niveles.back().size() > 1) {
        const std::vector<CCaja>& debajo = niveles.back();
        std::vector<CCaja> encima;
        encima.reserve(cadenas(debajo.size()));
        for (std::size_t i = 0; i < debajo.size(); ++i) {
            if (i % kPorCadena == 0)
                encima.push_back(debajo[i]);
            else
                encima.back().Junta(debajo[i]);
        }
        niveles.push_back(std::move(encima));
    }
    return niveles;
}

void CAnilloConsultado::Mira(CVisita& visita, std::size_t nivel, std::size_t i) const
{
    const CCaja& cadena = (*m_niveles)[nivel][i];
    const CPunto<int>& punto = visita.cuenta.punto;
    const std::size_t desde = i * visita.aristas;
    const std::size_t hasta = std::min(desde + visita.aristas, m_anillo->size());
    if (punto.X < cadena.minimo[0])
        return visita.cuenta.CadenaALaDerecha(Esquina(desde), Esquina(hasta));
    if (!cadena.Tiene({punto.X, punto.Y}))
        return;
    if (nivel == 0) {
        for (std::size_t k = desde; k < hasta; ++k)
            visita.cuenta.Arista(Esquina(k), (*m_anillo)[k]);
        return;
    }
    visita.aristas /= kPorCadena;
    const std::size_t primera = i * kPorCadena;
    const std::size_t fin = std::min(primera + kPorCadena, (*m_niveles)[nivel - 1].size());
    for (std::size_t k = primera; k < fin && !visita.cuenta.borde; ++k)
        Mira(visita, nivel - 1, k);
    visita.aristas *= kPorCadena;
}

double DobleArea(const std::vector<CPunto<int>>& anillo)
{
    Ancho suma = 0;
    for (std::size_t i = 2; i < anillo.size(); ++i)
        suma += Cruz(anillo[0], anillo[i - 1], anillo[i]);
    return static_cast<double>(suma < 0 ? -suma : suma);
}

} // namespace vexageo
