#include "platform/desktop/path_field.h"

#include <wx/dnd.h>
#include <wx/toplevel.h>

#include "platform/desktop/toolkit.h"

namespace {

/// Takes the first of the files that are dropped.
class CSuelta : public wxFileDropTarget {
public:
    explicit CSuelta(wxTextCtrl& campo) : m_campo(campo) {}

    bool OnDropFiles(wxCoord /*x*/, wxCoord /*y*/, const wxArrayString& ficheros) override
    {
        if (ficheros.empty() || ficheros[0].empty() || !m_campo.IsEnabled())
            return false;
        m_campo.SetValue(ficheros[0]);
        return true;
    }

private:
    wxTextCtrl& m_campo;
};

} // namespace

CCampoRuta::CCampoRuta(wxWindow* padre) : wxTextCtrl(padre, wxID_ANY)
{
    SetDropTarget(new CSuelta(*this));
    TomaUnRenglon(*this); // a name that was copied as a line comes with its end
    Bind(wxEVT_TEXT, [this](wxCommandEvent& suceso) {
        PonGlobo();
        MuestraFinal();
        suceso.Skip();
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& suceso) {
        PonGlobo();
        suceso.Skip();
    });
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& suceso) {
        // Who only looks at another program for a moment finds caret and mark as they were.
        CallAfter([this] {
            auto* ventana = dynamic_cast<wxTopLevelWindow*>(wxGetTopLevelParent(this));
            if (ventana != nullptr && ventana->IsActive())
                MuestraFinal();
        });
        suceso.Skip();
    });
}

void CCampoRuta::PonRuta(const wxString& ruta)
{
    if (GetValue() == ruta) // else the caret would jump under the user's hands
        return;
    ChangeValue(ruta);
    PonGlobo();
    MuestraFinal();
}

void CCampoRuta::MuestraFinal()
{
    if (!HasFocus())
        SetInsertionPointEnd();
}

void CCampoRuta::PonGlobo()
{
    const wxString ruta = GetValue();
    const bool cabe = GetTextExtent(ruta).x + 2 * GetCharWidth() <= GetClientSize().x;
    if (cabe)
        UnsetToolTip();
    else if (GetToolTipText() != ruta)
        SetToolTip(ruta);
}
