#include "platform/desktop/message_box.h"

#include <algorithm>
#include <vector>

#include <wx/arrstr.h>
#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/crt.h>
#include <wx/dialog.h>
#include <wx/display.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/timer.h>

#include "platform/dialog.h"
#include "platform/layer_texts.h"
#include "platform/system.h"

namespace {

constexpr int kLetrasPorLinea = 90;
constexpr int kEntreMiradas = 200; // milliseconds

wxArtID DibujoDe(UINT flags)
{
    switch (flags & MB_ICONMASK) {
    case MB_ICONERROR:
        return wxART_ERROR;
    case MB_ICONWARNING:
        return wxART_WARNING;
    case MB_ICONQUESTION:
        return wxART_QUESTION;
    default:
        return {};
    }
}

/// Pixels that a line of a box's text may take, beside so many for its icon. A box wider than its
/// screen would be made narrower behind its layout's back, which is then too low for the text.
int AnchoDeLinea(const wxDialog& caja, int icono)
{
    const int cabe = wxDisplay(&caja).GetClientArea().width;
    const int orillas = 6 * caja.GetCharWidth(); // of the box and of its window
    return std::min(kLetrasPorLinea * caja.GetCharWidth(), cabe - orillas - icono);
}

/// The text with a line end in each word that is too long for a line: a path may be.
wxString ConCortes(const wxString& texto, const wxDialog& caja, int ancho)
{
    wxString cortado;
    wxString palabra;
    for (const wxUniChar c : texto) {
        palabra = wxIsspace(c) ? wxString() : palabra + c;
        if (caja.GetTextExtent(palabra).x > ancho) {
            cortado += '\n';
            palabra = c;
        }
        cortado += c;
    }
    return cortado;
}

constexpr const char* kEntreColumnas = " : ";

/// Tells whether lines of the text put numbers one below the other, as a fixed font would show
/// them.
bool TieneColumnas(const wxArrayString& lineas)
{
    return std::ranges::count_if(
               lineas, [](const wxString& linea) { return linea.Contains(kEntreColumnas); }) > 1;
}

struct CBoton {
    int respuesta;
    const char* leyenda; ///< with its letter behind the first sign
};

/// The buttons of a box; the first answers Enter, the last Escape.
std::vector<CBoton> Botones(UINT flags)
{
    switch (flags & MB_TYPEMASK) {
    case MB_YESNO:
        return {{IDYES, textos::kSi}, {IDNO, textos::kNo}};
    case MB_RETRYCANCEL:
        return {{IDRETRY, textos::kReintentar}, {IDCANCEL, textos::kCancelar}};
    default:
        return {{IDOK, textos::kAceptar}};
    }
}

/// A run of lines in columns: the blanks that would bring them into line are left to the layout.
wxSizer* PonColumnas(wxWindow* padre, const wxArrayString& lineas)
{
    auto* tabla = new wxFlexGridSizer(3, {padre->GetCharHeight() / 4, padre->GetCharWidth()});
    const auto pon = [&](const wxString& texto, int flags) {
        auto* rotulo = new wxStaticText(padre, wxID_ANY, {});
        rotulo->SetLabelText(texto);
        tabla->Add(rotulo, 0, flags);
    };
    for (const wxString& linea : lineas) {
        const std::size_t corte = linea.find(kEntreColumnas);
        const bool partida = corte != wxString::npos;
        pon(linea.Left(corte).Trim(), 0); // all of it where there is no cut
        pon(partida ? ":" : "", 0);
        pon(partida ? linea.Mid(corte + 3).Trim(false) : wxString(), wxALIGN_RIGHT);
    }
    return tabla;
}

/// Puts the buttons into the box.
wxSizer* PonBotones(wxDialog& caja, UINT flags)
{
    auto* botones = new wxBoxSizer(wxHORIZONTAL);
    // An id of the library's own would bring the system's text, in whatever language.
    const auto pon = [&](int respuesta, const char* leyenda) {
        auto* boton = new wxButton(&caja, wxID_ANY, wxString::FromUTF8(leyenda));
        boton->Bind(wxEVT_BUTTON,
                    [&caja, respuesta](wxCommandEvent&) { caja.EndModal(respuesta); });
        botones->Add(boton, 0, wxLEFT, caja.GetCharWidth());
        return boton;
    };
    const std::vector<CBoton> suyos = Botones(flags);
    std::vector<wxButton*> puestos;
    puestos.reserve(suyos.size());
    for (const CBoton& boton : suyos)
        puestos.push_back(pon(boton.respuesta, boton.leyenda));
    puestos.front()->SetDefault();
    puestos.front()->SetFocus();
    caja.SetEscapeId(puestos.back()->GetId());
    // A letter alone answers a question, without Alt.
    caja.Bind(wxEVT_CHAR_HOOK, [&caja, suyos](wxKeyEvent& tecla) {
        for (const CBoton& boton : suyos)
            if (suyos.size() > 1 && !tecla.HasAnyModifiers() &&
                wxToupper(tecla.GetKeyCode()) == wxToupper(boton.leyenda[1]))
                return caja.EndModal(boton.respuesta);
        tecla.Skip();
    });
    return botones;
}

} // namespace

int MuestraCaja(wxWindow* padre, const wxString& texto, const wxString& titulo, UINT flags)
{
    wxDialog caja(padre, wxID_ANY, titulo);
    const int hueco = 2 * caja.GetCharWidth();
    auto* cuerpo = new wxBoxSizer(wxHORIZONTAL);
    int anchoIcono = 0;
    if (const wxArtID icono = DibujoDe(flags); !icono.empty()) {
        auto* dibujo = new wxStaticBitmap(&caja, wxID_ANY,
                                          wxArtProvider::GetBitmapBundle(icono, wxART_MESSAGE_BOX));
        cuerpo->Add(dibujo, 0, wxRIGHT, hueco);
        anchoIcono = dibujo->GetBestSize().x + hueco;
    }
    if (const wxArrayString lineas = wxSplit(texto, '\n', '\0'); TieneColumnas(lineas)) {
        cuerpo->Add(PonColumnas(&caja, lineas), 1, wxALIGN_CENTER_VERTICAL);
    } else {
        auto* rotulo = new wxStaticText(&caja, wxID_ANY, {});
        const int ancho = AnchoDeLinea(caja, anchoIcono);
        rotulo->SetLabelText(ConCortes(texto, caja, ancho));
        rotulo->Wrap(ancho);
        cuerpo->Add(rotulo, 1, wxALIGN_CENTER_VERTICAL);
    }

    auto* marco = new wxBoxSizer(wxVERTICAL);
    marco->Add(cuerpo, 1, wxEXPAND | wxALL, hueco);
    marco->Add(PonBotones(caja, flags), 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, hueco);
    caja.SetSizerAndFit(marco);
    caja.CentreOnParent();
    // A process that is to end waits for nobody's answer.
    wxTimer mirada(&caja);
    caja.Bind(wxEVT_TIMER, [&caja, flags](wxTimerEvent&) {
        if (caja.IsModal() && sistema::HayQueAcabar()) // and nobody has just answered
            caja.EndModal(Botones(flags).back().respuesta);
    });
    mirada.Start(kEntreMiradas);
    return caja.ShowModal();
}
