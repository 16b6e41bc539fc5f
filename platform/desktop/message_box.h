#pragma once

#include <wx/dialog.h>

#include "platform/types.h"

/// A box with a text, its icon, and the buttons that its flags ask for. The library's own box takes
/// its buttons' texts from the system. Lines of names and numbers stand in columns.
class CCajaMensaje : public wxDialog {
public:
    /// \param flags  those of MessageBox. `ShowModal` gives its results, IDOK, or IDYES or IDNO;
    ///               closing a question is No. The keys S and N alone answer it too.
    CCajaMensaje(wxWindow* padre, const wxString& texto, const wxString& titulo, UINT flags);

private:
    void AlTeclear(wxKeyEvent& tecla);
};
