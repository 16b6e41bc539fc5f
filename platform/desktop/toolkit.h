#pragma once

#include <wx/toplevel.h>

// What the windows' library doesn't reach and the system below it has.

/// Gives a widget the name by which a screen reader tells it.
void PonNombreAccesible(wxWindow& widget, const wxString& nombre);

/// Keeps the user's hands from all other windows as long as this one is shown.
void HazModal(wxTopLevelWindow& ventana);
