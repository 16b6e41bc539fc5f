#pragma once

#include <cmath>
#include <cstdint>

// Sums of data that nobody checks. They wrap at 32 bits, as the formats' users know them to.

/// The sum, wrapped at 32 bits.
constexpr int Suma(int a, int b)
{
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

/// The number cut towards zero, its low 32 bits; 0 for what is no finite number.
inline int Corta(double valor)
{
    constexpr double kVuelta = 4294967296.0; // 2 to the power of 32; the remainder is exact
    if (!std::isfinite(valor))
        return 0;
    return static_cast<int>(
        static_cast<std::uint32_t>(static_cast<std::int64_t>(std::fmod(valor, kVuelta))));
}
