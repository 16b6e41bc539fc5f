#pragma once

#include "platform/windows/win32.h"

#include <memory>
#include <type_traits>

#include "platform/windows/dialog_template.h"

struct CBorraLetra {
    void operator()(HFONT letra) const { DeleteObject(letra); }
};
using Letra = std::unique_ptr<std::remove_pointer_t<HFONT>, CBorraLetra>;

/// The font that the user's system has for its messages.
CLetra LetraDelSistema();
/// The font in the size that it has on a screen of a scale.
Letra HazLetra(const CLetra& letra, int puntosPorPulgada);

/// A place in dialog units as pixels, by the font that the dialog's controls have now. The system's
/// own call goes by the one that the dialog was made with, also after it came to a screen of
/// another scale.
RECT EnPixeles(HWND dialogo, const RECT& unidades);
