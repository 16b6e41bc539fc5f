#pragma once

#include <map>
#include <vector>

#include "evidence/drawn_polygon.h"
#include "evidence/gis/writing/drawing_request.h"
#include "evidence/gis/writing/overlaps.h"

/// The outlines of a kind, in the order in which they will be read.
using CRevisados = std::map<ClaseTopologia, std::vector<CRecintoRevisado>>;

/// Looks a polygon's drawing over as it will be read, and tells what the way back will make of what
/// is new in it: overlaps, subparcels that fall into another parcel, parcels and letters in several
/// outlines. False where these are refused.
bool RevisaDibujo(CPoligonoDibujado poligono, CRevisados revisados, const CModoDibujo& modo);
