#pragma once

#include <optional>
#include <vector>

#include "evidence/drawn_polygon.h"
#include "evidence/gis/tidings.h"

/// What is to be known of an outline of a drawing that is looked over.
struct CRecintoRevisado {
    CString nombre;                  ///< as messages call it; empty for one that no source brought
    std::optional<int> parcelaDicha; ///< that a subparcel's fields name
    bool nuevoContorno = false;
    bool nuevoRotulo = false;
};

/// Tells of outlines of one kind that lie upon one another: each two that share more than a square
/// metre, with the place, and what all of them come to. Outlines without a valid label count for
/// nothing, so they are passed over, and so are two that lay there before.
/// \param revisados  what is to be known of each outline
/// \param entrada    of the polygon that they are of
void AvisaSolapes(const CTopologiaDibujada& topologia, ClaseTopologia que,
                  const std::vector<CRecintoRevisado>& revisados, const CString& entrada,
                  CNoticias& noticias);
