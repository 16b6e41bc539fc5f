#pragma once

#include <wx/html/helpctrl.h>
#include <wx/iconbndl.h>

/// The window of the manual. It closes by Escape, stays in the user's reach while a modal window is
/// open, and its pages are black on white in every theme.
class CVentanaAyuda : public wxHtmlHelpController {
public:
    explicit CVentanaAyuda(const wxIconBundle& iconos);

    /// Opens the help file on its default topic. False where it can't be read.
    bool Abre(const wxString& fichero);

protected:
    wxHtmlHelpFrame* CreateHelpFrame(wxHtmlHelpData* datos) override;

private:
    wxIconBundle m_iconos;
};
