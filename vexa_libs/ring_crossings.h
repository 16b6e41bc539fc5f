#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "vexa_libs/point.h"

namespace vexageo {

/// How a ring meets itself.
enum class Encuentro : std::uint8_t {
    Cruza, ///< it passes from one side of itself to the other
    Repasa ///< it takes a stretch of its way twice
};

struct CEncuentro {
    Encuentro clase;
    CPunto<int> donde; ///< to a whole unit, Z left out
};

/// A place where a ring crosses itself or takes a way twice, the same one from whatever corner and
/// in whichever direction it is told; nothing where it does neither. A ring that touches itself in
/// a point, and goes on at the side that it came from, doesn't cross. One that isn't closed is
/// closed by its ends; points that repeat the one before them count once, and Z plays no part.
///
/// Exact for all coordinates of 32 bits. A sweep from left to right that ends at the first place
/// that it finds: n points take n log n steps, however they lie.
std::optional<CEncuentro> BuscaEncuentro(const std::vector<CPunto<int>>& anillo);

} // namespace vexageo
