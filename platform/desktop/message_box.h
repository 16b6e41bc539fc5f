#pragma once

#include <wx/dialog.h>

#include "platform/types.h"

/// A box with a text, its icon, and the buttons that its flags ask for. The library's own box takes
/// its buttons' texts from the system.
class CCajaMensaje : public wxDialog {
public:
    /// \param flags  those of MessageBox. `ShowModal` gives its results, IDOK, or IDYES or IDNO;
    ///               closing a question is No.
    CCajaMensaje(wxWindow* padre, const wxString& texto, const wxString& titulo, UINT flags);
};
