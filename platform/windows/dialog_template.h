#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/resource_form.h"

/// The font of a dialog.
struct CLetra {
    std::wstring nombre;
    std::uint16_t puntos = 8;
    std::uint16_t grosor = 400;
};

/// How a dialog's window is to be.
struct CMarcoDialogo {
    bool seEnsancha = false; ///< its user may make it wider
    bool seMinimiza = false;
};

/// The dialog in the form that the system makes windows from (DLGTEMPLATEEX, version 1): its
/// controls in the template's order, with their ids, places in dialog units, styles and captions.
/// Labels and group boxes have the id -1. The window isn't visible at first.
std::vector<std::uint16_t> HazPlantilla(const CPlantillaDialogo& dialogo, const CLetra& letra,
                                        const CMarcoDialogo& marco);
