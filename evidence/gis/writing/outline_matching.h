#pragma once

#include <functional>
#include <vector>

#include "evidence/gis/writing/old_drawing.h"
#include "evidence/gis/writing/outline_input.h"

/// The outline of a drawing that one on its way into it was, or is to take the place of.
struct CPareja {
    const CDibujoAntes::CRegistro* antes = nullptr; ///< null for a new one
    int orden = -1;                                 ///< its place in the topology
    bool mismoContorno = false;                     ///< its rings are those that it had
};

/// Tells whether the label that the fields give is the one that the outline had, as far as they say
/// anything: text, code, state and place.
bool EsElMismoRotulo(const CRecintoEntrante& recinto, const CRecintoDibujado& antes);

/// Finds the pairs for outlines of one kind: those with the same rings first, of several the one
/// with the same label and number. What `resuelve` does to an outline with other rings happens
/// before it is looked for by its label.
/// \param resuelve  settles the label of an outline; false for one that is refused
std::vector<CPareja>
Empareja(std::vector<CRecintoEntrante>& recintos,
         const std::vector<CDibujoAntes::CRegistro>& registros,
         const std::function<bool(CRecintoEntrante&, const CPareja&)>& resuelve);
