#pragma once

#include <cstddef>
#include <string>

#include "evidence/drawn_polygon.h"
#include "evidence/report/findings/message_index.h"
#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/surfaces.h"
#include "evidence/report/writing/anchors.h"
#include "evidence/report/writing/change_marks.h"
#include "evidence/report/writing/markup.h"

namespace informe {

/// Points that the maps of a page may still draw. What passes that is left out, and the map says
/// so: first the subparcels of a polygon, then the parcels without messages.
struct CPresupuesto {
    std::size_t puntos = topes::kPuntosDePagina;
    std::size_t deUno = topes::kPuntosDeMapa;
};

/// What the maps of a page share.
struct CComunDeMapas {
    const CIndiceAvisos& indice;
    const CPerdidas& perdidas; ///< the parcels that lose surface by their outlines, as far as read
    CMarcasDeCambio cambios;
    CAnclas& anclas; ///< knows where links lead to, and gets the parcels and places that maps have
    CPresupuesto presupuesto = {}; ///< loses the points that are drawn
    int dibujados = 0;             ///< maps
};

/// The legend: what colours, patterns and signs say.
/// \param conCambios  those of the changes as well
void PonLeyenda(CMarcas& marcas, bool conCambios);
/// The drawing of a polygon, with its remarks, as HTML. Coordinates are decimetres from its corner.
std::string MapaSvg(const CPoligonoDibujado& poligono, CComunDeMapas& comun);

} // namespace informe
