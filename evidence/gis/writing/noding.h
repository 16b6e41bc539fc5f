#pragma once

#include <vector>

#include "evidence/gis/geometry.h"

// The outlines of a polygon come from anywhere: neighbours that touch without sharing points, and
// coordinates finer than those of a drawing. Here they get common points, and whole hundredths.

/// Nodes the rings together and rounds them. Where two of them cross, touch or run along one
/// another, both have the same points afterwards. A point moves no farther than rounding takes it,
/// or a few times that where points crowd. No ring comes to cross another one or itself that
/// didn't before. A ring that has whole points alone comes from a drawing, and somebody counts on
/// its surface: it gets the points of others that lie exactly on it, and none of its own moves.
/// \param anillos  without a closing point
/// \param fijos    rings of a drawing that stay as they are; the others go through their points
/// \param[out] redondos  in the same order; one that rounding leaves without a surface is empty
/// \return false where they can't be noded
bool Anuda(const std::vector<CAnilloFino>& anillos, const std::vector<CAnillo>& fijos,
           std::vector<CAnillo>& redondos);
