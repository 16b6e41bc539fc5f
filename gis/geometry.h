#pragma once

#include <memory>

#include <ogr_geometry.h>

#include "cadastre/drawn_polygon.h"

/// A point of a drawing in metres.
OGRPoint EnMetros(const vexageo::CPunto<int>& punto);

/// The outline, closed, with its islands as holes; null for one without points.
std::unique_ptr<OGRPolygon> PoligonoDe(const CRecintoDibujado& recinto);

/// The points of a line of a drawing.
std::unique_ptr<OGRLineString> LineaDe(const std::vector<vexageo::CPunto<int>>& puntos);
