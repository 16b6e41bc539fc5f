#pragma once

#include <wx/window.h>

/// The help of a control in a small popup. The next key or click, or another program coming to the
/// front, takes it away.
/// \param punto  of the screen, where it is to stand; it keeps inside the screen
void MuestraGlobo(wxWindow* padre, const wxString& texto, const wxPoint& punto,
                  const wxColour& fondo);
