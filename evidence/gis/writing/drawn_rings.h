#pragma once

#include <vector>

#include <ogr_geometry.h>

#include "evidence/drawn_polygon.h"
#include "evidence/gis/writing/outline_input.h"
#include "vexa_libs/topological_polygon.h"

/// The rings of an outline as it was drawn, without closing points, the outer one first.
std::vector<CAnillo> AnillosDe(const CRecintoDibujado& recinto);

/// The rings around all outlines together; each with its holes.
std::vector<std::vector<CAnillo>> Alrededor(const OGRMultiPolygon& todas);

/// What will be read of an outline that was drawn anew.
CRecintoDibujado DibujadoDe(const CRecintoEntrante& recinto, const std::vector<CAnillo>& anillos,
                            const vexageo::CPoligonoTopologico& registro);
