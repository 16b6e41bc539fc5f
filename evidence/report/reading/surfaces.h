#pragma once

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

/// By polygon and parcel.
using CSuperficies = std::map<std::pair<int, int>, CSuperficie>;

} // namespace informe
