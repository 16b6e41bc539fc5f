#pragma once

#include "generator/synthetic_municipality.h"

// Geometry on the lattice that a synthetic municipality's outlines stand on.

namespace sintetico {

/// Area in square metres of an outline.
int AreaContorno(const CContorno& contorno);
/// The point in the middle between two others.
CVertice Medio(const CVertice& a, const CVertice& b);
/// The mean of the corners, on the lattice.
CVertice Centro(const CContorno& contorno);
/// A square by its centre and half of its side, hundredths of a metre.
CContorno Cuadrado(const CVertice& centro, int medio);

} // namespace sintetico
