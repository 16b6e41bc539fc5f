#pragma once

#include <vector>

#include "evidence/gis/writing/drawing_request.h"
#include "evidence/gis/writing/old_drawing.h"

/// The outline of a drawing that one on its way into it was, or is to take the place of.
struct CPareja {
    const CDibujoAntes::CRegistro* antes = nullptr; ///< null for a new one
    int orden = -1;                                 ///< its place in the topology
    bool mismoContorno = false;                     ///< its rings are those that it had
};

/// An outline with the one that it was, and the rings that it gets in the drawing.
struct CRedondo {
    CRecintoEntrante recinto;
    CPareja pareja;
    std::vector<CAnillo> anillos; ///< the outer one first, no empty ones; of one that stays none
};

/// Tells whether the label that the fields give is the one that the outline had, as far as they say
/// anything: text, code, state and place.
bool EsElMismoRotulo(const CRecintoEntrante& recinto, const CRecintoDibujado& antes);

/// Finds the pairs for outlines of one kind: those with the same rings first, of several the one
/// with the same label and number. The label of one with other rings is settled before it is looked
/// for by that.
/// \return false, which was told, where what one says of itself can't be settled
bool Empareja(std::vector<CRedondo>& suyos, ClaseTopologia clase, const CDibujoAntes& antes,
              const CModoDibujo& modo);
