#include "evidence/gis/writing/label_point.h"

#include <algorithm>
#include <cmath>

#include "vexa_libs/ring.h"

using vexageo::CPunto;
using vexageo::Lugar;

namespace {

bool EstaDentro(const std::vector<CAnillo>& anillos, const CPunto<int>& punto)
{
    for (std::size_t i = 0; i < anillos.size(); ++i)
        if (vexageo::Situa(anillos[i], punto) != (i == 0 ? Lugar::Dentro : Lugar::Fuera))
            return false;
    return true;
}

/// Where the rings meet the height `y`, from left to right.
std::vector<double> Cortes(const std::vector<CAnillo>& anillos, double y)
{
    std::vector<double> cortes;
    for (const CAnillo& anillo : anillos)
        for (std::size_t i = 0; i < anillo.size(); ++i) {
            const CPunto<int>& a = anillo[i];
            const CPunto<int>& b = anillo[(i + 1) % anillo.size()];
            if ((a.Y <= y) != (b.Y <= y))
                cortes.push_back(a.X + (y - a.Y) / (static_cast<double>(b.Y) - a.Y) *
                                           (static_cast<double>(b.X) - a.X));
        }
    std::ranges::sort(cortes);
    return cortes;
}

/// The whole point in the middle of the widest stretch inside at a height; none where no whole
/// point lies there.
std::optional<CPunto<int>> EnAltura(const std::vector<CAnillo>& anillos, int y)
{
    const std::vector<double> cortes = Cortes(anillos, y);
    double ancho = 0;
    std::optional<CPunto<int>> mejor;
    for (std::size_t i = 1; i < cortes.size(); i += 2) {
        const CPunto<int> medio(static_cast<int>(std::lround((cortes[i - 1] + cortes[i]) / 2)), y);
        if (cortes[i] - cortes[i - 1] > ancho && EstaDentro(anillos, medio)) {
            ancho = cortes[i] - cortes[i - 1];
            mejor = medio;
        }
    }
    return mejor;
}

} // namespace

CPuntoRotulo SituaRotulo(const std::vector<CAnillo>& anillos,
                         const std::optional<CPunto<int>>& pedido)
{
    if (pedido && EstaDentro(anillos, *pedido))
        return {*pedido, true};
    const auto [bajo, alto] = std::ranges::minmax_element(anillos.front(), {}, &CPunto<int>::Y);
    // Heights that halve the ones before, the middle first: a wide outline ends at the first one,
    // a sliver after as many as it takes.
    const double altura = static_cast<double>(alto->Y) - bajo->Y;
    constexpr int kMitades = 10;
    for (int partes = 2; partes <= 1 << kMitades && partes <= altura + 2; partes *= 2)
        for (int k = 1; k < partes; k += 2)
            if (const auto punto =
                    EnAltura(anillos, bajo->Y + static_cast<int>(altura * k / partes)))
                return {*punto, true};
    return {anillos.front().front(), false};
}
