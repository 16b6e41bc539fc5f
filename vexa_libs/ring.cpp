#include "vexa_libs/ring.h"

#include <cstdint>

namespace vexageo {
namespace {

// Differences of two coordinates have 33 bits, their products 66.
using Ancho = __int128;

/// Twice the signed area of the triangle a, b, p: above 0 where p lies left of the way from a to b.
Ancho Cruz(const CPunto<int>& a, const CPunto<int>& b, const CPunto<int>& p)
{
    const auto resta = [](int m, int n) { return std::int64_t{m} - n; };
    return Ancho{resta(b.X, a.X)} * resta(p.Y, a.Y) - Ancho{resta(b.Y, a.Y)} * resta(p.X, a.X);
}

bool EntreExtremos(const CPunto<int>& a, const CPunto<int>& b, const CPunto<int>& p)
{
    return std::min(a.X, b.X) <= p.X && p.X <= std::max(a.X, b.X) && std::min(a.Y, b.Y) <= p.Y &&
           p.Y <= std::max(a.Y, b.Y);
}

} // namespace

Lugar Situa(const std::vector<CPunto<int>>& anillo, const CPunto<int>& punto)
{
    constexpr std::size_t kMenosPuntos = 3;
    if (anillo.size() < kMenosPuntos)
        return Lugar::Fuera;
    bool dentro = false;
    const CPunto<int>* a = &anillo.back();
    for (const CPunto<int>& b : anillo) {
        const bool sube = a->Y <= punto.Y && punto.Y < b.Y;
        const bool baja = b.Y <= punto.Y && punto.Y < a->Y;
        if (sube || baja || EntreExtremos(*a, b, punto)) {
            const Ancho cruz = Cruz(*a, b, punto);
            if (cruz == 0 && EntreExtremos(*a, b, punto))
                return Lugar::Borde;
            if ((sube && cruz > 0) || (baja && cruz < 0))
                dentro = !dentro;
        }
        a = &b;
    }
    return dentro ? Lugar::Dentro : Lugar::Fuera;
}

double DobleArea(const std::vector<CPunto<int>>& anillo)
{
    Ancho suma = 0;
    for (std::size_t i = 2; i < anillo.size(); ++i)
        suma += Cruz(anillo[0], anillo[i - 1], anillo[i]);
    return static_cast<double>(suma < 0 ? -suma : suma);
}

} // namespace vexageo
