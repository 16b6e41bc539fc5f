#pragma once

#include "evidence/gis/writing/drawing_request.h"

/// Tells that fields say different things, as a failure where the mode lets neither win.
/// \param clase    what those of its kind are, in the plural
/// \param frase    what each of them says
/// \param numeros  what counts where the numbers win
/// \param rotulos  what counts where the labels win
void AvisaContradiccion(const CModoDibujo& modo, const char* clase, const CString& frase,
                        const char* numeros, const char* rotulos);
