#pragma once

#include <vector>

#include "vexa_libs/point.h"

// Drawings of several kinds on which the index of rings is held against others, and what the others
// are.

using CAnillo = std::vector<vexageo::CPunto<int>>;

struct CDibujo {
    const char* nombre;
    std::vector<CAnillo> anillos;
    std::vector<vexageo::CPunto<int>> puntos;
    double cota;          ///< that the ratio of the two times may reach
    bool barrido = false; ///< a sweep is held against it as well as GEOS
};

CDibujo Parcelas(int lado);
CDibujo AnilloLargo(int esquinas, std::size_t rotulos);
CDibujo Solapados(int cuantos, std::size_t rotulos);
CDibujo Tiras(const char* nombre, double pendiente, int cuantas, std::size_t rotulos);
CDibujo Peines(int puas, std::size_t rotulos);
CDibujo Rombos(int cuantos, std::size_t rotulos);

/// For each point of a drawing the smallest ring that holds it, its boundary included, of several
/// the first, -1 where none does: by a tree over extents with prepared polygons, those of GEOS.
std::vector<int> ConGeos(const CDibujo& dibujo);
/// The same by a sweep over all points and edges at once. Rings may share stretches of their
/// boundaries, but must not cross.
std::vector<int> ConBarrido(const CDibujo& dibujo);
