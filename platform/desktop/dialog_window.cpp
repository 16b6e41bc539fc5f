#include "platform/desktop/dialog_window.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/gauge.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "platform/cwinapp.h"
#include "platform/desktop/layout.h"
#include "platform/desktop/text.h"
#include "platform/desktop/toolkit.h"

namespace {

using enum ClaseControl;
using std::chrono::milliseconds;

// A tick of a run costs less than a microsecond, a look for events about one and a redrawn bar
// thousands. So both are done as often as a person can tell, and no more.
constexpr milliseconds kEntreMiradas{10};
constexpr milliseconds kEntreBarras{100};

/// A drawing of the program in the largest size that keeps its proportions within the place.
wxBitmapBundle Dibujo(UINT id, const wxSize& sitio)
{
    const CDibujoRecurso* dibujo = AfxGetApp()->Recursos().Dibujo(id);
    if (dibujo == nullptr)
        return {};
    const double escala = std::min(sitio.x / static_cast<double>(dibujo->ancho),
                                   sitio.y / static_cast<double>(dibujo->alto));
    return wxBitmapBundle::FromSVG(
        dibujo->svg, wxSize(wxRound(dibujo->ancho * escala), wxRound(dibujo->alto * escala)));
}

long Estilo(bool encima)
{
    constexpr long kComun = wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX;
    return kComun | (encima ? wxFRAME_FLOAT_ON_PARENT | wxFRAME_NO_TASKBAR : wxMINIMIZE_BOX);
}

void PonTexto(wxWindow& widget, const wxString& texto)
{
    if (auto* edicion = dynamic_cast<wxTextCtrl*>(&widget)) {
        if (edicion->GetValue() != texto) // else the caret would jump under the user's hands
            edicion->ChangeValue(texto);
    } else if (auto* rotulo = dynamic_cast<wxStaticText*>(&widget)) {
        if (rotulo->GetLabelText() != texto)
            rotulo->SetLabelText(texto);
    } else if (widget.GetLabel() != texto) {
        widget.SetLabel(texto);
    }
}

} // namespace

CVentanaDialogo::CVentanaDialogo(CDialog& dialogo, wxWindow* debajo)
    : wxFrame(debajo, wxID_ANY, AWx(dialogo.Plantilla().titulo), wxDefaultPosition, wxDefaultSize,
              Estilo(debajo != nullptr)),
      m_dialogo(dialogo), m_panel(new wxPanel(this))
{
    if (debajo != nullptr)
        HazModal(*this);
    PonIconos();
    CreaWidgets();
    Coloca();
    if (m_sinMarca != nullptr)
        m_sinMarca->SetValue(true);
    for (const CControl& control : m_dialogo.Controles())
        Refleja(control);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& cierre) {
        cierre.Veto();
        Despacha([this] { m_dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0); });
    });
    Bind(wxEVT_CHAR_HOOK, &CVentanaDialogo::AlTeclear, this);
}

void CVentanaDialogo::PonIconos()
{
    wxIconBundle iconos;
    for (const int lado : {16, 24, 32, 48, 64, 128, 256})
        iconos.AddIcon(Dibujo(m_dialogo.Icono(), {lado, lado}).GetIcon({lado, lado}));
    SetIcons(iconos);
}

void CVentanaDialogo::CreaWidgets()
{
    for (CControl& control : m_dialogo.Controles()) {
        wxWindow* widget = Crea(control);
        m_widgets.emplace(&control, widget);
        // What has a caption of its own that says enough is read as it stands.
        const ClaseControl clase = control.Plantilla().clase;
        const bool sinLeyenda = clase == Edicion || clase == Lista || clase == Progreso;
        const bool boton = clase == Boton || clase == BotonPorDefecto;
        const wxString nombre = AWx(m_dialogo.NombreDe(control));
        if (sinLeyenda || (boton && nombre != wxControl::RemoveMnemonics(widget->GetLabel())))
            PonNombreAccesible(*widget, nombre);
    }
}

wxWindow* CVentanaDialogo::Crea(CControl& control)
{
    const CPlantillaControl& plantilla = control.Plantilla();
    const wxString leyenda = AWx(control.GetWindowText());
    const auto pulsa = [this, &control](wxCommandEvent&) {
        Despacha([this, &control] { m_dialogo.Pulsa(control); });
    };
    switch (plantilla.clase) {
    case Boton:
    case BotonPorDefecto: {
        auto* boton = new wxButton(m_panel, wxID_ANY, leyenda);
        boton->Bind(wxEVT_BUTTON, pulsa);
        if (plantilla.clase == BotonPorDefecto)
            boton->SetDefault();
        return boton;
    }
    case Casilla: {
        auto* casilla = new wxCheckBox(m_panel, wxID_ANY, leyenda);
        casilla->Bind(wxEVT_CHECKBOX, pulsa);
        return casilla;
    }
    case Radio: {
        wxWindow* radio = CreaRadio(plantilla);
        radio->Bind(wxEVT_RADIOBUTTON, pulsa);
        return radio;
    }
    case Edicion: {
        auto* edicion = new wxTextCtrl(m_panel, wxID_ANY);
        edicion->Bind(wxEVT_TEXT, [edicion, &control](wxCommandEvent&) {
            control.SetWindowText(DeWx(edicion->GetValue()));
        });
        return edicion;
    }
    case Lista: {
        auto* lista = new wxChoice(m_panel, wxID_ANY);
        for (const char* elemento : plantilla.elementos)
            lista->Append(AWx(elemento));
        lista->Bind(wxEVT_CHOICE, [lista, &control](wxCommandEvent&) {
            control.SetCurSel(lista->GetSelection());
        });
        return lista;
    }
    case Grupo:
        return new wxStaticBox(m_panel, wxID_ANY, leyenda);
    case Progreso:
        m_progreso = &control;
        return m_barra = new wxGauge(m_panel, wxID_ANY, 100);
    case Imagen:
    case Icono:
        return new wxStaticBitmap(m_panel, wxID_ANY, wxBitmapBundle());
    case Texto:
        break;
    }
    return new wxStaticText(m_panel, wxID_ANY, leyenda, wxDefaultPosition, wxDefaultSize,
                            wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
}

wxWindow* CVentanaDialogo::CreaRadio(const CPlantillaControl& plantilla)
{
    if (plantilla.abreGrupo) {
        // Of a row of these one is always marked. This one is where the dialog has none.
        m_sinMarca =
            new wxRadioButton(m_panel, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxRB_GROUP);
        m_sinMarca->Hide();
    }
    return new wxRadioButton(m_panel, wxID_ANY, AWx(plantilla.texto));
}

void CVentanaDialogo::Coloca()
{
    CUnidades unidades(*m_panel);
    for (const auto& [control, widget] : m_widgets)
        unidades.HazSitio(control->Plantilla(), widget->GetBestSize());
    for (const auto& [control, widget] : m_widgets) {
        const CPlantillaControl& plantilla = control->Plantilla();
        const wxRect sitio = unidades.Sitio(plantilla, widget->GetBestSize());
        if (auto* dibujo = dynamic_cast<wxStaticBitmap*>(widget))
            dibujo->SetBitmap(Dibujo(plantilla.id, sitio.GetSize()));
        widget->SetSize(sitio);
    }
    const CPlantillaDialogo& plantilla = m_dialogo.Plantilla();
    SetClientSize(unidades.Pixeles(plantilla.ancho, plantilla.alto));
}

void CVentanaDialogo::Muestra()
{
    CentreOnScreen();
    Show();
    m_panel->SetFocus();
    if (!m_dialogo.Terminado())
        m_bucle.Run();
    Hide();
}

void CVentanaDialogo::Despacha(const std::function<void()>& trabajo)
{
    ++m_despachos;
    trabajo();
    --m_despachos;
    if (!m_dialogo.Terminado())
        return;
    Hide(); // a run may go on behind it
    if (m_despachos == 0)
        m_bucle.Exit();
}

void CVentanaDialogo::AtiendeUno()
{
    const auto ahora = Reloj::now();
    if (ahora < m_calma)
        return;
    if (ahora >= m_barraPintada + kEntreBarras) {
        PonBarraAlDia();
        m_barraPintada = ahora;
    }
    wxEventLoopBase* bucle = wxEventLoopBase::GetActive();
    if (bucle != nullptr && bucle->Pending())
        bucle->Dispatch();
    else
        m_calma = ahora + kEntreMiradas;
}

void CVentanaDialogo::PonBarraAlDia()
{
    if (m_progreso != nullptr && m_barra->GetValue() != m_progreso->GetPos())
        m_barra->SetValue(m_progreso->GetPos());
}

void CVentanaDialogo::Refleja(const CControl& control)
{
    if (&control == m_progreso) {
        if (control.GetPos() == 0)
            m_barra->SetValue(0);
        return; // all else shows when the next event is looked for
    }
    wxWindow* widget = m_widgets.at(&control);
    PonTexto(*widget, AWx(control.GetWindowText()));
    if (auto* casilla = dynamic_cast<wxCheckBox*>(widget))
        casilla->SetValue(control.GetCheck() != 0);
    else if (auto* radio = dynamic_cast<wxRadioButton*>(widget); radio && control.GetCheck() != 0)
        radio->SetValue(true); // which takes the mark from the others
    else if (auto* lista = dynamic_cast<wxChoice*>(widget))
        lista->SetSelection(control.GetCurSel());
    widget->Enable(control.IsWindowEnabled());
    if (control.Id() == m_dialogo.Foco())
        widget->SetFocus();
}

void CVentanaDialogo::AlTeclear(wxKeyEvent& tecla)
{
    switch (tecla.GetKeyCode()) {
    case WXK_F1:
        PideAyuda();
        break;
    case WXK_ESCAPE:
        Despacha([this] { m_dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0); });
        break;
    default:
        tecla.Skip();
    }
}

void CVentanaDialogo::PideAyuda()
{
    const wxWindow* foco = FindFocus();
    for (const auto& [control, widget] : m_widgets) {
        if (widget != foco)
            continue;
        const wxRect sitio = widget->GetScreenRect();
        const wxPoint raton = wxGetMousePosition();
        const wxPoint punto = sitio.Contains(raton) ? raton : sitio.GetBottomLeft();
        const HELPINFO pregunta{control->Id() == kSinId ? -1 : static_cast<int>(control->Id()),
                                {punto.x, punto.y}};
        Despacha([&] {
            // A dialog that doesn't tell of its controls leaves the key to the manual.
            if (m_dialogo.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&pregunta)) == 0)
                m_dialogo.SendMessage(WM_COMMAND, ID_HELP, 0);
        });
        return;
    }
}
