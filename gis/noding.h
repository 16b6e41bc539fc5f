#pragma once

#include <vector>

#include "gis/fine_point.h"
#include "vexa_libs/point.h"

// The outlines of a polygon come from anywhere: neighbours that touch without sharing points, and
// coordinates finer than those of a drawing. Here they get common points, and whole hundredths.

using CAnillo = std::vector<vexageo::CPunto<int>>;

/// Nodes the rings together and rounds them: where two of them cross, touch or run along one
/// another, both have the same points afterwards, no point is farther from its place than a
/// rounding takes it (a few where points crowd), and no ring crosses another one or itself anew.
/// Rings of whole points alone are a drawing's, and their surfaces are somebody's: they get the
/// points of others that lie exactly on them, and nothing moves.
/// \param anillos  without a closing point
/// \param[out] redondos  in the same order; a ring that rounding leaves without a surface is empty
/// \return false where they can't be noded
bool Anuda(const std::vector<CAnilloFino>& anillos, std::vector<CAnillo>& redondos);
