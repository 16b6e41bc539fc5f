#pragma once

#include "platform/windows/win32.h"

/// Makes an edit field one for the path of a file: where the path is too long for the field its end
/// is what shows, since the name stands there, and all of it shows under the mouse. A file that is
/// dropped on it becomes its text.
void HazCampoRuta(HWND campo);

/// Goes to the end of the field's text.
void VeAlFinal(HWND campo);

/// Scrolls the field to its end, unless its user is in it.
void MuestraFinal(HWND campo);
