#pragma once

#include <optional>
#include <vector>

#include "evidence/gis/writing/noding.h"

/// Where a label of an outline stands.
struct CPuntoRotulo {
    vexageo::CPunto<int> punto;
    bool dentro = true; ///< false where no whole point lies inside: then it is a corner
};

/// Finds a place for the label of an outline: the point that is wished where that lies strictly
/// inside the outline, in none of its holes and on no boundary; else a point that does.
/// \param anillos  the outline and its holes, without a closing point; empty ones are none
/// \param pedido   the point that is wished, hundredths of a metre
CPuntoRotulo SituaRotulo(const std::vector<CAnillo>& anillos,
                         const std::optional<vexageo::CPunto<int>>& pedido);
