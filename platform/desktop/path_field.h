#pragma once

#include <wx/textctrl.h>

/// An edit field for the path of a file. Where the path is too long for the field its end is what
/// shows, since the name stands there, and all of it shows under the mouse. A file that is dropped
/// on it becomes its text.
class CCampoRuta : public wxTextCtrl {
public:
    explicit CCampoRuta(wxWindow* padre);

    /// Replaces the text without a word to whoever listens for the user's changes.
    void PonRuta(const wxString& ruta);

private:
    void MuestraFinal();
    void PonGlobo();
};
