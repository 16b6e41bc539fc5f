#pragma once

#include "evidence/gis/writing/drawing_review.h"

/// Tells of outlines of one kind that lie upon one another: each two that share more than a square
/// metre, with the place, and what all of them come to. Outlines without a valid label count for
/// nothing, so they are passed over, and so are two that lay there before.
/// \param revisados  what is to be known of each outline
/// \param entrada    of the polygon that they are of
void AvisaSolapes(const CTopologiaDibujada& topologia, ClaseTopologia que,
                  const std::vector<CRecintoRevisado>& revisados, const CString& entrada,
                  CNoticias& noticias);
