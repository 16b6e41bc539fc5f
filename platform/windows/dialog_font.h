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
