#pragma once

#include <vector>

#include "vexa_libs/point.h"

// The lattice that a synthetic municipality's outlines stand on.

namespace sintetico {

/// A point of the drawing, in hundredths of a metre.
using CVertice = vexageo::CPunto<int>;

// Outlines stand on a lattice of two metres, so that every area is a whole number of square metres.
inline constexpr int kMalla = 200;
inline constexpr CVertice kOrigen = {40000000, 442000000};

using CContorno = std::vector<CVertice>;

/// A piece of ground: its outline, the holes in it, and where its label stands.
struct CRecinto {
    CContorno contorno;
    std::vector<CContorno> huecos;
    CVertice rotulo;
};

/// Whole square metres of a piece without its holes.
int Area(const CRecinto& recinto);

/// Area in square metres of an outline.
int AreaContorno(const CContorno& contorno);
/// The point in the middle between two others.
CVertice Medio(const CVertice& a, const CVertice& b);
/// The mean of the corners, on the lattice.
CVertice Centro(const CContorno& contorno);
/// A square by its centre and half of its side, hundredths of a metre.
CContorno Cuadrado(const CVertice& centro, int medio);

} // namespace sintetico
