#include "platform/desktop/help_window.h"

#include <wx/filename.h>
#include <wx/filesys.h>
#include <wx/html/helpfrm.h>
#include <wx/html/htmlproc.h>
#include <wx/log.h>
#include <wx/treectrl.h>

#include "platform/desktop/toolkit.h"
#include "platform/layer_texts.h"

namespace {

const wxSize kLados(980, 680);

/// Gives the pages colours of their own: the viewer would write in the theme's colour on white.
class CNegroSobreBlanco : public wxHtmlProcessor {
public:
    wxString Process(const wxString& pagina) const override
    {
        wxString conColores = pagina;
        conColores.Replace("<body>", R"(<body bgcolor="#FFFFFF" text="#000000" link="#0645AD">)",
                           false);
        return conColores;
    }
};

} // namespace

CVentanaAyuda::CVentanaAyuda(const wxIconBundle& iconos)
    : wxHtmlHelpController(wxHF_TOOLBAR | wxHF_CONTENTS | wxHF_INDEX | wxHF_SEARCH),
      m_iconos(iconos)
{
    SetTitleFormat(textos::kTituloAyuda);
}

wxHtmlHelpFrame* CVentanaAyuda::CreateHelpFrame(wxHtmlHelpData* datos)
{
    wxHtmlHelpFrame* ventana = wxHtmlHelpController::CreateHelpFrame(datos);
    ventana->SetIcons(m_iconos);
    ventana->SetSize(kLados);
    ventana->CentreOnScreen();
    ventana->GetHelpWindow()->GetHtmlWindow()->AddProcessor(new CNegroSobreBlanco);
    ventana->Bind(wxEVT_CHAR_HOOK, [ventana](wxKeyEvent& tecla) {
        if (tecla.GetKeyCode() == WXK_ESCAPE)
            ventana->Close();
        else
            tecla.Skip();
    });
    // The toolkit complains of a list that is shown before it has room for its scroll bar.
    for (const int lista : {wxID_HTML_TREECTRL, wxID_HTML_INDEXLIST, wxID_HTML_SEARCHLIST})
        if (wxWindow* hoja = ventana->FindWindow(lista))
            hoja->GetParent()->SetSize(kLados / 2);
    DejaAparte(*ventana);
    return ventana;
}

bool CVentanaAyuda::Abre(const wxString& fichero)
{
    const wxFileName nombre(fichero);
    wxString libro = wxFileSystem::FileNameToURL(nombre);
    libro += "#chm:" + nombre.GetName() + ".hhp";
    const wxLogNull sinCajas; // what the library says of it, in words of its own
    if (!nombre.FileExists() || !AddBook(libro) || !DisplayContents())
        return false;
    if (auto* temas = dynamic_cast<wxTreeCtrl*>(GetFrame()->FindWindow(wxID_HTML_TREECTRL)))
        if (wxTreeItemIdValue primero = nullptr; temas->GetCount() > 0)
            temas->Expand(temas->GetFirstChild(temas->GetRootItem(), primero));
    return true;
}
