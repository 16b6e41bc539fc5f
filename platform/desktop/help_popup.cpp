#include "platform/desktop/help_popup.h"

#include <algorithm>

#include <wx/display.h>
#include <wx/eventfilter.h>
#include <wx/popupwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "platform/desktop/toolkit.h"

namespace {

/// It owns itself.
class CGloboAyuda : public wxPopupWindow, private wxEventFilter {
public:
    CGloboAyuda(wxWindow* padre, const wxString& texto, const wxPoint& punto,
                const wxColour& fondo);
    ~CGloboAyuda() override { wxEvtHandler::RemoveFilter(this); }

private:
    int FilterEvent(wxEvent& suceso) override;
};

CGloboAyuda::CGloboAyuda(wxWindow* padre, const wxString& texto, const wxPoint& punto,
                         const wxColour& fondo)
    : wxPopupWindow(padre, wxBORDER_SIMPLE)
{
    SetBackgroundColour(fondo);
    auto* rotulo = new wxStaticText(this, wxID_ANY, {});
    rotulo->SetLabelText(texto);
    rotulo->SetForegroundColour(*wxBLACK); // on its pale background in a dark theme too
    rotulo->SetBackgroundColour(fondo);
    const int letra = GetCharWidth();
    rotulo->Wrap(52 * letra);
    PonNombreAccesible(*this, texto);
    auto* marco = new wxBoxSizer(wxVERTICAL);
    marco->Add(rotulo, 0, wxALL, letra);
    SetSizerAndFit(marco);

    const int pantalla = std::max(0, wxDisplay::GetFromPoint(punto));
    const wxRect area = wxDisplay(static_cast<unsigned>(pantalla)).GetClientArea();
    const wxSize lado = GetSize();
    Move(std::clamp(punto.x, area.x, std::max(area.x, area.GetRight() - lado.x)),
         std::clamp(punto.y, area.y, std::max(area.y, area.GetBottom() - lado.y)));
    Show();
    wxEvtHandler::AddFilter(this);
}

int CGloboAyuda::FilterEvent(wxEvent& suceso)
{
    const wxEventType tipo = suceso.GetEventType();
    const bool tecla = tipo == wxEVT_CHAR_HOOK || tipo == wxEVT_KEY_DOWN;
    const bool raton = tipo == wxEVT_LEFT_DOWN || tipo == wxEVT_RIGHT_DOWN;
    if (!IsShown() || (!tecla && !raton && tipo != wxEVT_ACTIVATE))
        return Event_Skip;
    Hide();
    Destroy();
    return tecla ? Event_Processed : Event_Skip; // the key was meant for the popup
}

} // namespace

void MuestraGlobo(wxWindow* padre, const wxString& texto, const wxPoint& punto,
                  const wxColour& fondo)
{
    new CGloboAyuda(padre, texto, punto, fondo);
}
