#pragma once

#include <wx/dialog.h>

#include "platform/types.h"

/// A box with a text, its icon, and the buttons that its flags ask for. The library's own box takes
/// its buttons' texts from the system. Lines of names and numbers stand in columns.
class CCajaMensaje : public wxDialog {
public:
    /// \param flags  those of MessageBox. `ShowModal` gives its results; closing a question gives
    ///               the last button's. The letter of a button alone answers it too.
    CCajaMensaje(wxWindow* padre, const wxString& texto, const wxString& titulo, UINT flags);

private:
    wxSizer* PonBotones(UINT flags);
};
