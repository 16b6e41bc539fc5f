#pragma once

#include <wx/window.h>

#include "platform/types.h"

/// Shows a box with a text, its icon, and the buttons that its flags ask for. The library's own box
/// takes its buttons' texts from the system. Lines of names and numbers stand in columns.
/// \param flags  those of MessageBox, whose results it gives; closing a question gives the last
///               button's. The letter of a button alone answers it too.
int MuestraCaja(wxWindow* padre, const wxString& texto, const wxString& titulo, UINT flags);
