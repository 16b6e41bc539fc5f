#pragma once

#include <memory>

#include <ogr_geometry.h>

/// The geometry with chords in the place of its arcs, none farther off its arc than the tolerance.
/// \param tolerancia  in the units of the geometry, above 0
std::unique_ptr<OGRGeometry> SinArcos(const OGRGeometry& geometria, double tolerancia);
