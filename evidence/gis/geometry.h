#pragma once

#include <memory>
#include <vector>

#include <ogr_geometry.h>

#include "evidence/drawn_polygon.h"

inline constexpr double kPorMetro = 100; ///< units of a drawing

/// A point of a drawing in metres, and back, rounded.
OGRPoint EnMetros(const vexageo::CPunto<int>& punto);
vexageo::CPunto<int> EnUnidades(double x, double y); ///< of metres; they must fit 32 bits

/// The outline, closed, with its islands as holes; null for one without points.
std::unique_ptr<OGRPolygon> PoligonoDe(const CRecintoDibujado& recinto);

/// The points of a line of a drawing.
std::unique_ptr<OGRLineString> LineaDe(const std::vector<vexageo::CPunto<int>>& puntos);
