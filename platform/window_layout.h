#pragma once

#include "platform/resource_form.h"

// Where the controls of a template stand in a window, as far as it is the same on every desktop.

/// What a control does where its window is wider than its template.
enum class AlEnsanchar {
    Queda,
    SeDesplaza, ///< keeps its distance from the right edge
    Crece
};

constexpr AlEnsanchar QueHaceAlEnsanchar(const CPlantillaControl& control)
{
    using enum ClaseControl;
    switch (control.clase) {
    case Boton:
    case BotonPorDefecto:
        return AlEnsanchar::SeDesplaza;
    case Texto: // a label keeps its width
        return control.id != kSinId ? AlEnsanchar::Crece : AlEnsanchar::Queda;
    case Grupo:
    case Imagen:
    case Icono:
    case Progreso:
    case Edicion:
    case Lista:
        return AlEnsanchar::Crece;
    case Casilla:
    case Radio:
        break;
    }
    return AlEnsanchar::Queda;
}
