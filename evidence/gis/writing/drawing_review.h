#pragma once

#include <map>
#include <optional>
#include <vector>

#include "evidence/drawn_polygon.h"
#include "evidence/gis/writing/drawing_request.h"

/// What is to be known of an outline of a drawing that is looked over.
struct CRecintoRevisado {
    CString nombre;                  ///< as messages call it; empty for one that no source brought
    std::optional<int> parcelaDicha; ///< that a subparcel's fields name
    bool nuevoContorno = false;
    bool nuevoRotulo = false;
};

/// The outlines of a kind, in the order in which they will be read.
using CRevisados = std::map<ClaseTopologia, std::vector<CRecintoRevisado>>;

/// Looks a polygon's drawing over as it will be read, and tells what the way back will make of what
/// is new in it: overlaps, subparcels that fall into another parcel, parcels and letters in several
/// outlines. False where these are refused.
bool RevisaDibujo(CPoligonoDibujado poligono, CRevisados revisados, const CModoDibujo& modo);
