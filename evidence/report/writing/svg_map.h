#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include "evidence/drawn_polygon.h"
#include "evidence/report/findings/message_index.h"

namespace informe {

/// Points that the maps of a page may still draw. What passes that is left out, and the map says
/// so: first the subparcels of a polygon, then the parcels without messages.
struct CPresupuesto {
    std::size_t puntos = 250'000; ///< of the page
    std::size_t deUno = 60'000;   ///< of a polygon
};

/// What the maps have in common with the rest of the page.
struct CEnlaces {
    /// Anchor of a message's row, "m12", empty where the page doesn't show it.
    std::function<std::string(std::uint32_t posicion)> ancla;
    /// Gets the anchors that a map made, "p3-12" of a parcel, "s12" of the place of a message.
    std::set<std::string> hechas;
    int mapas = 0; ///< how many were drawn
};

/// The legend, as HTML: what colours, patterns and signs say.
std::string LeyendaSvg();
/// The drawing of a polygon, with its heading and remarks, as HTML. Coordinates are decimetres from
/// its corner. Takes the points that it draws off `presupuesto`.
std::string MapaSvg(const CPoligonoDibujado& poligono, const CIndiceAvisos& indice,
                    CEnlaces& enlaces, CPresupuesto& presupuesto);

} // namespace informe
