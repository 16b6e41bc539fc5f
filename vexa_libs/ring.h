#pragma once

#include <vector>

#include "vexa_libs/point.h"

// Exact geometry of closed rings in whole coordinates of 32 bits. A ring that isn't closed is
// closed by its ends, and its direction doesn't matter.

namespace vexageo {

enum class Lugar { Fuera, Borde, Dentro };

/// Where the point lies, by the even-odd rule, so that a ring may cross itself. An edge owns its
/// lower end and not its upper one: a ray through a corner counts once. Fewer than three points
/// hold nothing. Z plays no part. Takes a step for each edge.
Lugar Situa(const std::vector<CPunto<int>>& anillo, const CPunto<int>& punto);

/// Twice the area that the ring encloses, in squared units, without its sign; exact below 2^53.
double DobleArea(const std::vector<CPunto<int>>& anillo);

} // namespace vexageo
