#pragma once

#include "evidence/gis/writing/drawing_request.h"
#include "evidence/gis/writing/outline_matching.h"

/// Tells that fields say different things, as a failure where the mode lets neither win.
/// \param clase    what those of its kind are, in the plural
/// \param frase    what each of them says
/// \param numeros  what counts where the numbers win
/// \param rotulos  what counts where the labels win
void AvisaContradiccion(const CModoDibujo& modo, const char* clase, const CString& frase,
                        const char* numeros, const char* rotulos);

/// Settles the label of an outline whose fields say different things. One that comes as it is read
/// is nobody's edit.
/// \return false, which was told, where nothing says which of them counts
bool Resuelve(CRecintoEntrante& recinto, const CPareja& pareja, const CDibujoAntes& antes,
              const CModoDibujo& modo);
