#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "evidence/drawn_polygon.h"

namespace informe {

/// A polygon as it is seen from afar.
struct CSilueta {
    std::string nombre;
    std::string ancla; ///< of its own map; empty for none
    std::vector<std::vector<vexageo::CPunto<int>>> contornos;
    std::int64_t perdida = 0;  ///< square metres that don't count, or weren't written
    std::int64_t parcelas = 0; ///< that lose them
    std::int64_t cambios = 0;  ///< parcels that changed
    bool conMensajes = false;

    /// Takes another drawing of the polygon. What it loses is counted already.
    void Une(CSilueta otra);
};

/// Rings that show where a polygon lies: those of its own topology or, where that is missing, what
/// its parcels span.
std::vector<std::vector<vexageo::CPunto<int>>> ContornosDe(const CPoligonoDibujado& poligono);

/// The map of the whole municipality, as HTML: its polygons by what they lose. Empty where fewer
/// than two can be drawn.
std::string VistaGeneral(const std::vector<CSilueta>& siluetas);

} // namespace informe
