#pragma once

#include <wx/toplevel.h>

// What the windows' library doesn't reach and the system below it has.

/// Gives a widget the name by which a screen reader tells it.
void PonNombreAccesible(wxWindow& widget, const wxString& nombre);

/// SHA-256 of a file in hexadecimal digits; empty where it can't be read or the system has no such
/// sum.
wxString SumaDe(const wxString& fichero);

/// Keeps the user's hands from all other windows as long as this one is shown.
void HazModal(wxTopLevelWindow& ventana);
