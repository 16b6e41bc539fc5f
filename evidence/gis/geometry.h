#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <ogr_geometry.h>

#include "evidence/drawn_polygon.h"

// Between GDAL's metres and a drawing's whole hundredths: all rounding of coordinates stands here.

using CAnillo = std::vector<vexageo::CPunto<int>>;

/// A point of a drawing in metres, and back, rounded.
OGRPoint EnMetros(const vexageo::CPunto<int>& punto);
vexageo::CPunto<int> EnUnidades(double x, double y); ///< of metres; they must fit 32 bits

/// The parts of a geometry that are of a type, itself where it is.
std::vector<const OGRGeometry*> PartesDe(const OGRGeometry& geometria, OGRwkbGeometryType tipo);

/// The geometry with chords in the place of its arcs, none farther off its arc than the tolerance.
/// \param tolerancia  in the units of the geometry, above 0
std::unique_ptr<OGRGeometry> SinArcos(const OGRGeometry& geometria, double tolerancia);

/// The boxes of features, in metres; one that has no place has an empty one.
using CCajas = std::vector<OGREnvelope>;

/// Widens an extent in metres by points of a drawing.
void Ensancha(OGREnvelope& caja, const CAnillo& puntos);

/// The outline, closed, with its islands as holes; null for one without points.
std::unique_ptr<OGRPolygon> PoligonoDe(const CRecintoDibujado& recinto);

/// The same of rings, the outer one first; and back, rounded and without their closing points.
std::unique_ptr<OGRPolygon> PoligonoDe(const std::vector<CAnillo>& anillos);
std::vector<CAnillo> AnillosDe(const OGRPolygon& poligono);

/// The rings of an outline as it was drawn, the outer one first, without closing points.
std::vector<CAnillo> AnillosDe(const CRecintoDibujado& recinto);

/// The points of a line of a drawing.
std::unique_ptr<OGRLineString> LineaDe(const CAnillo& puntos);

inline constexpr std::int64_t kFinos = 1000; // in a unit of a drawing

/// A coordinate that is still to be rounded: thousandths of a drawing's unit.
struct CFino {
    std::int64_t x = 0;
    std::int64_t y = 0;

    friend auto operator<=>(const CFino&, const CFino&) = default;
};

using CAnilloFino = std::vector<CFino>;

CFino EnFinos(double x, double y); ///< of metres
inline CFino EnFinos(const vexageo::CPunto<int>& punto)
{
    return {punto.X * kFinos, punto.Y * kFinos};
}
/// The whole point in whose cell the point lies, in thousandths as well. A cell has its lower edges
/// and not its upper ones, so that each point lies in one.
CFino Redondea(const CFino& punto);
vexageo::CPunto<int> EnUnidades(const CFino& redondo); ///< of a point that is whole

/// The ring as a closed line in metres.
std::unique_ptr<OGRLineString> LineaDe(const CAnilloFino& anillo);
