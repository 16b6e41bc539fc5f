#pragma once

#include "evidence/gis/writing/drawing_request.h"
#include "evidence/gis/writing/outline_matching.h"

/// Settles the label of an outline whose fields say different things. One that comes as it is read
/// is nobody's edit.
/// \return false, which was told, where nothing says which of them counts
bool Resuelve(CRecintoEntrante& recinto, const CPareja& pareja, const CDibujoAntes& antes,
              const CModoDibujo& modo);
