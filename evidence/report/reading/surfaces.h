#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <utility>

namespace informe {

/// What the way back says of a parcel's surface, on either side of it.
struct CSuperficie {
    std::optional<int> tabla;
    std::optional<int> escrita; ///< in the file R
    bool concentrada = false;
};

/// Polygon and number of a parcel.
using CNumerosParcela = std::pair<int, int>;

using CSuperficies = std::map<CNumerosParcela, CSuperficie>;

/// Square metres of parcels that don't come through, by their numbers.
using CPerdidas = std::map<CNumerosParcela, std::int64_t>;

inline std::int64_t SumaMetros(const CPerdidas& metros)
{
    std::int64_t suma = 0;
    for (const auto& [parcela, suyos] : metros)
        suma += suyos;
    return suma;
}

} // namespace informe
