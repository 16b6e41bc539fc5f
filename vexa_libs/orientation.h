#pragma once

#include <cstdint>

#include "vexa_libs/point.h"

// Which side of a line a point lies on, exact for all coordinates of 32 bits.

namespace vexageo {

// Differences of two coordinates have 33 bits, their products 66.
using Ancho = __int128;

struct CVector {
    std::int64_t x, y;
};

inline CVector Hacia(const CPunto<int>& a, const CPunto<int>& b)
{
    return {std::int64_t{b.X} - a.X, std::int64_t{b.Y} - a.Y};
}

/// Above 0 where the way from `a` to `b` is a turn to the left of less than half a circle.
inline Ancho Cruz(const CVector& a, const CVector& b)
{
    return Ancho{a.x} * b.y - Ancho{a.y} * b.x;
}

/// Twice the signed area of the triangle a, b, p: above 0 where p lies left of the way from a to b.
inline Ancho Cruz(const CPunto<int>& a, const CPunto<int>& b, const CPunto<int>& p)
{
    return Cruz(Hacia(a, b), Hacia(a, p));
}

} // namespace vexageo
