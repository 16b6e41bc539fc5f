#pragma once

#include <vector>

#include "evidence/drawn_polygon.h"
#include "evidence/gis/tidings.h"

/// Tells of outlines of one kind that lie upon one another: each two that share more than a square
/// metre, with the place, and what all of them come to. Outlines without a valid label count for
/// nothing, so they are passed over, and so are two that lay there before.
/// \param nuevos   for each outline whether it is new
/// \param entrada  of the polygon that they are of
void AvisaSolapes(const CTopologiaDibujada& topologia, ClaseTopologia que,
                  const std::vector<bool>& nuevos, const CString& entrada, CNoticias& noticias);
