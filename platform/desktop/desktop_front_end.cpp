#include "platform/desktop/desktop_front_end.h"

#include <clocale>
#include <cstdio>

#include <wx/app.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/html/helpfrm.h>
#include <wx/init.h>
#include <wx/translation.h>

#include "platform/desktop/dialog_window.h"
#include "platform/desktop/help_file.h"
#include "platform/desktop/help_popup.h"
#include "platform/desktop/help_window.h"
#include "platform/desktop/message_box.h"
#include "platform/desktop/text.h"
#include "platform/desktop/toolkit.h"
#include "platform/files/system_files.h"
#include "platform/html_help.h"
#include "platform/layer_texts.h"

namespace {

/// What the files' box takes: the filters of the program name patterns as its first system has
/// them, where "*.*" is every file and no pattern looks at the case of letters.
wxString Comodines(const CString& filtros)
{
    wxString texto = AWx(filtros);
    while (texto.EndsWith("|"))
        texto.RemoveLast();
    wxString comodines;
    bool patron = false; // the pieces are names and patterns in turn
    for (const wxString& trozo : wxSplit(texto, '|', '\0')) {
        if (!comodines.empty())
            comodines += "|";
        if (!patron)
            comodines += trozo;
        else if (trozo == "*.*")
            comodines += wxFileSelectorDefaultWildcardStr;
        else
            comodines += trozo.Lower() + ";" + trozo.Upper();
        patron = !patron;
    }
    return comodines;
}

/// What the library finds wrong in itself goes where a developer looks, not into a user's way.
void AlFallarAserto(const wxString& fichero, int linea, const wxString& funcion,
                    const wxString& condicion, const wxString& texto)
{
    const wxString queja =
        wxString::Format("%s:%d: %s: %s %s\n", fichero, linea, funcion, condicion, texto);
    std::fputs(queja.utf8_str(), stderr);
}

/// The library's application object. The command line is the program's own to read.
class CAplicacionVentanas : public wxApp {
public:
    bool OnInit() override { return true; }
};

} // namespace

CFrontalEscritorio::CFrontalEscritorio(char* programa, const char* entrada)
{
    std::setlocale(LC_MESSAGES, ""); // the toolkit's language; numbers keep their point
    wxSetAssertHandler(AlFallarAserto);
    wxApp::SetInstance(new CAplicacionVentanas);
    int argc = 1;
    char* argv[] = {programa, nullptr};
    TomaNombreDelMenu(entrada);
    m_funciona = wxEntryStart(argc, argv);
    if (m_funciona)
        wxTheApp->CallOnInit();
}

void CFrontalEscritorio::IniciaControles()
{
    // The library's own words, in its file and help windows, in the language of all others.
    auto* traducciones = new wxTranslations;
    traducciones->SetLanguage(wxLANGUAGE_SPANISH);
    traducciones->AddStdCatalog();
    wxTranslations::Set(traducciones);
    RegistraFicherosDeAyuda();
}

CFrontalEscritorio::~CFrontalEscritorio()
{
    m_ayuda.reset();
    if (m_funciona)
        wxEntryCleanup();
}

wxWindow* CFrontalEscritorio::Padre() const
{
    return static_cast<CVentanaDialogo*>(Delante());
}

void CFrontalEscritorio::MuestraModal(CDialog& dialogo)
{
    const auto destruye = [](CVentanaDialogo* ventana) { ventana->Destroy(); }; // not at once
    const std::unique_ptr<CVentanaDialogo, decltype(destruye)> ventana(
        new CVentanaDialogo(dialogo, Padre()), destruye);
    Muestra(*ventana);
}

int CFrontalEscritorio::Caja(const CString& texto, const CString& titulo, UINT flags)
{
    CString cuerpo = texto;
    cuerpo.TrimRight("\n");
    return Espera([&] { return MuestraCaja(Padre(), AWx(cuerpo), AWx(titulo), flags); });
}

bool CFrontalEscritorio::EligeFichero(CFileDialog& dialogo)
{
    const wxString inicial = AWx(dialogo.GetPathName());
    const bool existe = (dialogo.Flags() & OFN_FILEMUSTEXIST) != 0;
    wxFileDialog caja(Padre(), textos::kElige, AWx(sistema::Nombre(CarpetaInicial(dialogo))),
                      wxFileName(inicial).GetFullName(), Comodines(dialogo.Filtros()),
                      wxFD_OPEN | (existe ? wxFD_FILE_MUST_EXIST : 0));
    if (caja.ShowModal() != wxID_OK)
        return false;
    const wxString ruta = caja.GetPath();
    if (ruta.empty()) { // the library doesn't take a name that is no UTF-8
        Caja(textos::kNombreIlegible, textos::kElige, MB_ICONERROR);
        return false;
    }
    Elige(dialogo, DeWx(ruta));
    return true;
}

bool CFrontalEscritorio::MuestraAyuda(const CString& ficheroAyuda)
{
    if (m_ayuda == nullptr || m_ayuda->GetFrame() == nullptr) {
        m_ayuda = std::make_unique<CVentanaAyuda>(
            Ultima() == nullptr ? wxIconBundle()
                                : static_cast<CVentanaDialogo*>(Ultima())->GetIcons());
        if (!m_ayuda->Abre(AWx(ficheroAyuda)))
            m_ayuda.reset();
    }
    if (m_ayuda == nullptr) {
        DiQueNoSeVeLaAyuda(ficheroAyuda);
        return false;
    }
    m_ayuda->GetFrame()->Show();
    m_ayuda->GetFrame()->Raise();
    return true;
}

bool CFrontalEscritorio::MuestraAyudaControl(const CString& temas, const HH_POPUP& popup)
{
    wxWindow* padre = Padre();
    const auto [fichero, interior] = ParteTemas(temas);
    const auto textos = LeeDeLaAyuda(AWx(fichero), AWx(interior));
    if (padre == nullptr || !textos)
        return false; // a key that gives nothing is answer enough
    wxString texto = AWx(TextoDeTema(*textos, popup.idString));
    texto.Replace("\r", "");
    texto.Replace("\n", " "); // the popup breaks its lines by itself
    if (texto.empty())
        return false;
    MuestraGlobo(padre, texto, {popup.pt.x, popup.pt.y}, wxColour(popup.clrBackground & 0xFFFFFFU));
    return true;
}
