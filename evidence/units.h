#pragma once

#include <cmath>
#include <cstdint>

// A drawing counts in hundredths of a metre, a table in square metres.

inline constexpr double kUnidadesPorMetro = 100;

/// A coordinate of a drawing in metres.
constexpr double EnMetros(int unidades)
{
    return unidades / kUnidadesPorMetro;
}

/// A surface in whole square metres, as the way back rounds it. One that no parcel has, which only
/// a damaged record says, counts as none.
inline std::int64_t EnMetrosCuadrados(double area)
{
    constexpr double kMayor = 1e15;
    return std::abs(area) < kMayor ? static_cast<std::int64_t>(std::trunc(area + 0.5)) : 0;
}
