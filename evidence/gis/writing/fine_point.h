#pragma once

#include <cstdint>
#include <vector>

/// A coordinate that is still to be rounded: thousandths of a drawing's unit.
struct CFino {
    std::int64_t x = 0;
    std::int64_t y = 0;

    friend auto operator<=>(const CFino&, const CFino&) = default;
};

inline constexpr std::int64_t kFinos = 1000; // in a unit of a drawing

using CAnilloFino = std::vector<CFino>;
