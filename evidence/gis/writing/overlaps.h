#pragma once

#include <vector>

#include "evidence/drawn_polygon.h"

/// Tells of outlines of one kind that lie upon one another: each two that share more than a square
/// metre, with the place, and what all of them come to. Outlines without a valid label count for
/// nothing, so they are passed over.
/// \param entrada  of the polygon that they are of
void AvisaSolapes(const CTopologiaDibujada& topologia, ClaseTopologia que, const CString& entrada);
