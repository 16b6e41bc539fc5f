#pragma once

#include <wx/eventfilter.h>
#include <wx/popupwin.h>

/// A small popup with the help of one control. The next key or click, or another program coming to
/// the front, takes it away; it owns itself.
class CGloboAyuda : public wxPopupWindow, private wxEventFilter {
public:
    /// \param punto  of the screen, where it is to stand; it keeps inside the screen
    CGloboAyuda(wxWindow* padre, const wxString& texto, const wxPoint& punto,
                const wxColour& fondo);
    ~CGloboAyuda() override;

private:
    int FilterEvent(wxEvent& suceso) override;
};
