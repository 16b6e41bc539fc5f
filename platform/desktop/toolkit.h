#pragma once

#include <wx/toplevel.h>

// What the windows' library doesn't reach and the system below it has.

/// Gives a widget the name by which a screen reader tells it.
void PonNombreAccesible(wxWindow& widget, const wxString& nombre);

/// Has the system know the windows by the name of the program's entry in the menu. To be called
/// before there is any.
void TomaNombreDelMenu(const char* entrada);

/// SHA-256 of a file in hexadecimal digits; empty where it can't be read.
wxString SumaDe(const wxString& fichero);

/// Lets the scroll bars of a window stand beside its content, in sight, not over it.
void MuestraBarras(wxWindow& ventana);

/// Lets a field of one line take what is pasted or dropped as far as its first line end.
void TomaUnRenglon(wxWindow& campo);

/// Opens a file or folder with whatever the user has for it. False where he has nothing.
bool AbreConElSistema(const wxString& ruta);

/// Keeps the user's hands from all other windows as long as this one is shown.
void HazModal(wxTopLevelWindow& ventana);

/// Leaves a window to the user also while another one is modal.
void DejaAparte(wxTopLevelWindow& ventana);
