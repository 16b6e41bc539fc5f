#include "platform/desktop/dialog_window.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/display.h>
#include <wx/gauge.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include "platform/cwinapp.h"
#include "platform/desktop/path_field.h"
#include "platform/desktop/run_footer.h"
#include "platform/desktop/text.h"
#include "platform/desktop/toolkit.h"
#include "platform/run_story.h"

namespace {

using enum ClaseControl;

/// A drawing of the program in the largest size that keeps its proportions within the place.
wxBitmapBundle Dibujo(UINT id, const wxSize& sitio)
{
    const CDibujoRecurso* dibujo = BuscaRecurso(AfxGetApp()->Recursos().dibujos, id);
    if (dibujo == nullptr)
        return {};
    const double escala = std::min(sitio.x / static_cast<double>(dibujo->ancho),
                                   sitio.y / static_cast<double>(dibujo->alto));
    return wxBitmapBundle::FromSVG(
        dibujo->svg, wxSize(wxRound(dibujo->ancho * escala), wxRound(dibujo->alto * escala)));
}

long Estilo(const CDialog& dialogo, bool encima)
{
    constexpr long kComun = wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX;
    return kComun | (dialogo.Avance() != nullptr ? wxRESIZE_BORDER : 0) |
           (encima ? wxFRAME_FLOAT_ON_PARENT | wxFRAME_NO_TASKBAR : wxMINIMIZE_BOX);
}

void PonTexto(wxWindow& widget, const wxString& texto)
{
    if (auto* campo = dynamic_cast<CCampoRuta*>(&widget)) {
        campo->PonRuta(texto);
    } else if (auto* rotulo = dynamic_cast<wxStaticText*>(&widget)) {
        if (rotulo->GetLabelText() != texto)
            rotulo->SetLabelText(texto);
    } else if (widget.GetLabel() != texto) {
        widget.SetLabel(texto);
    }
}

wxWindow* NuevaEdicion(wxWindow& panel, CControl& control)
{
    auto* edicion = new CCampoRuta(&panel);
    edicion->Bind(wxEVT_TEXT, [edicion, &control](wxCommandEvent&) {
        if (TomaLoEscrito(control, DeWx(edicion->GetValue())))
            edicion->SetInsertionPointEnd();
    });
    return edicion;
}

wxWindow* NuevaLista(wxWindow& panel, CControl& control)
{
    auto* lista = new wxChoice(&panel, wxID_ANY);
    for (const char* elemento : control.Plantilla().elementos)
        lista->Append(AWx(elemento));
    lista->Bind(wxEVT_CHOICE,
                [lista, &control](wxCommandEvent&) { control.SetCurSel(lista->GetSelection()); });
    return lista;
}

} // namespace

CVentanaDialogo::CVentanaDialogo(CDialog& dialogo, wxWindow* debajo)
    : wxFrame(debajo, wxID_ANY, AWx(dialogo.Plantilla().titulo), wxDefaultPosition, wxDefaultSize,
              Estilo(dialogo, debajo != nullptr)),
      CVentanaComun(dialogo), m_marco(new wxPanel(this)), m_vista(new wxScrolledWindow(m_marco)),
      m_panel(new wxPanel(m_vista)), m_unidades(*m_panel)
{
    if (debajo != nullptr)
        HazModal(*this);
    PonIconos();
    CreaWidgets();
    if (dialogo.Avance() != nullptr)
        m_pie = new CPieProceso(m_marco, Relato(), [this] { return Suyo().OrdenDeEnsayo(); });
    MideUnidades();
    PonLados();
    if (m_sinMarca != nullptr)
        m_sinMarca->SetValue(true);
    for (const CControl& control : dialogo.Controles())
        Refleja(control);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& cierre) {
        cierre.Veto();
        Cancela();
    });
    Bind(wxEVT_CHAR_HOOK, &CVentanaDialogo::AlTeclear, this);
    m_marco->Bind(wxEVT_CHILD_FOCUS, &CVentanaDialogo::AlTomarFoco, this);
}

void CVentanaDialogo::PonIconos()
{
    wxIconBundle iconos;
    for (const int lado : {16, 24, 32, 48, 64, 128, 256})
        iconos.AddIcon(Dibujo(Dialogo().Icono(), {lado, lado}).GetIcon({lado, lado}));
    SetIcons(iconos);
}

void CVentanaDialogo::CreaWidgets()
{
    for (CControl& control : Suyo().Controles()) {
        wxWindow* widget = Crea(control);
        m_widgets.emplace(&control, widget);
        if (!Dialogo().SeLlamaComoSuLeyenda(control))
            PonNombreAccesible(*widget, AWx(Dialogo().NombreDe(control)));
    }
}

wxWindow* CVentanaDialogo::Crea(CControl& control)
{
    const CPlantillaControl& plantilla = control.Plantilla();
    const wxString leyenda = AWx(control.GetWindowText());
    const auto pulsa = [this, &control](wxCommandEvent&) {
        Despacha([this, &control] { Suyo().Pulsa(control); });
    };
    switch (plantilla.clase) {
    case Boton:
    case BotonPorDefecto: {
        auto* boton = new wxButton(m_panel, wxID_ANY, leyenda);
        if (plantilla.clase == BotonPorDefecto)
            boton->SetDefault();
        boton->Bind(wxEVT_BUTTON, pulsa);
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
    case Edicion:
        return NuevaEdicion(*m_panel, control);
    case Lista:
        return NuevaLista(*m_panel, control);
    case Grupo:
        return new wxStaticBox(m_panel, wxID_ANY, leyenda);
    case Progreso:
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

void CVentanaDialogo::MideUnidades()
{
    for (const auto& [control, widget] : m_widgets)
        m_unidades.HazSitio(control->Plantilla(), widget->GetBestSize());
    JuntaFilas();
    for (const auto& [control, widget] : m_widgets)
        if (auto* dibujo = dynamic_cast<wxStaticBitmap*>(widget)) {
            const CPlantillaControl& plantilla = control->Plantilla();
            dibujo->SetBitmap(
                Dibujo(plantilla.id, m_unidades.Pixeles(plantilla.ancho, plantilla.alto)));
        }
}

wxSize CVentanaDialogo::Cabe() const
{
    const wxSize area = wxDisplay(this).GetClientArea().GetSize();
    return area - wxSize(2 * GetCharWidth(), 3 * GetCharHeight()); // title and edges
}

wxSize CVentanaDialogo::Entera(const CUnidades& unidades) const
{
    const CPlantillaDialogo& plantilla = Dialogo().Plantilla();
    return unidades.Pixeles(plantilla.ancho, plantilla.alto) +
           wxSize(0, m_pie != nullptr ? m_pie->GetBestSize().y : 0);
}

void CVentanaDialogo::JuntaFilas()
{
    while (Entera(m_unidades).y > Cabe().y) {
        const CUnidades juntas = m_unidades.MasJuntas();
        if (SeTocan(juntas))
            return;
        m_unidades = juntas;
    }
}

bool CVentanaDialogo::SeTocan(const CUnidades& unidades) const
{
    std::vector<wxRect> sitios;
    for (const auto& [control, widget] : m_widgets)
        if (const CPlantillaControl& plantilla = control->Plantilla(); plantilla.clase != Grupo)
            sitios.push_back(unidades.Sitio(plantilla, widget->GetBestSize(), 0).Inflate(0, 1));
    for (auto uno = sitios.begin(); uno != sitios.end(); ++uno)
        if (std::any_of(uno + 1, sitios.end(),
                        [&](const wxRect& otro) { return uno->Intersects(otro); }))
            return true;
    return false;
}

void CVentanaDialogo::PonLados()
{
    const CPlantillaDialogo& plantilla = Dialogo().Plantilla();
    m_panel->SetMinSize(m_unidades.Pixeles(plantilla.ancho, plantilla.alto));
    m_panel->Bind(wxEVT_SIZE, [this](wxSizeEvent& suceso) {
        Coloca();
        suceso.Skip();
    });
    auto* sitio = new wxBoxSizer(wxVERTICAL);
    sitio->Add(m_panel, 1, wxEXPAND);
    MuestraBarras(*m_vista);
    m_vista->SetScrollRate(GetCharWidth(), GetCharHeight());
    m_vista->SetSizer(sitio);
    auto* marco = new wxBoxSizer(wxVERTICAL);
    marco->Add(m_vista, 1, wxEXPAND);
    if (m_pie != nullptr)
        marco->Add(m_pie, 0, wxEXPAND);
    m_marco->SetSizer(marco);

    wxSize lados = Entera(m_unidades);
    const int entero = lados.y;
    if (entero > Cabe().y)
        lados.x += wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this);
    lados.DecTo(Cabe());
    SetClientSize(lados);
    SetMinClientSize(lados);
    SetMaxClientSize({-1, entero});
}

void CVentanaDialogo::Coloca()
{
    const int sobra =
        std::max(0, m_panel->GetSize().x - m_unidades.Pixeles(Dialogo().Plantilla().ancho, 0).x);
    for (const auto& [control, widget] : m_widgets)
        widget->SetSize(m_unidades.Sitio(control->Plantilla(), widget->GetBestSize(), sobra));
}

void CVentanaDialogo::Aparece()
{
    if (Dialogo().Centrada())
        CentreOnParent(); // the screen's where it has none
    Show();
    m_panel->SetFocus();
}

void CVentanaDialogo::SirveAlUsuario()
{
    if (!HayQueSalir())
        m_bucle.Run();
}

bool CVentanaDialogo::TomaUno()
{
    wxEventLoopBase* bucle = wxEventLoopBase::GetActive();
    const bool hay = bucle != nullptr && bucle->Pending();
    if (hay)
        bucle->Dispatch();
    return hay;
}

void CVentanaDialogo::PonBarra(int hecho)
{
    if (m_barra->GetValue() != hecho)
        m_barra->SetValue(hecho);
}

void CVentanaDialogo::PonTitulo(const std::string& utf8)
{
    if (const wxString titulo = wxString::FromUTF8(utf8); GetTitle() != titulo)
        SetTitle(titulo);
}

void CVentanaDialogo::PonPie()
{
    m_pie->PonAlDia();
}

void CVentanaDialogo::PonControl(const CControl& control)
{
    wxWindow* widget = m_widgets.at(&control);
    PonTexto(*widget, AWx(control.GetWindowText()));
    if (auto* casilla = dynamic_cast<wxCheckBox*>(widget))
        casilla->SetValue(control.GetCheck() != 0);
    else if (auto* radio = dynamic_cast<wxRadioButton*>(widget); radio && control.GetCheck() != 0)
        radio->SetValue(true); // which takes the mark from the others
    else if (auto* lista = dynamic_cast<wxChoice*>(widget))
        lista->SetSelection(control.GetCurSel());
    widget->Enable(control.IsWindowEnabled());
    if (control.Id() == Dialogo().Foco() && control.Id() != m_foco)
        widget->SetFocus(); // else it would be taken from where the user has it
}

const CControl* CVentanaDialogo::ControlDe(const wxWindow* widget) const
{
    const auto par =
        std::ranges::find_if(m_widgets, [=](const auto& p) { return p.second == widget; });
    return par != m_widgets.end() ? par->first : nullptr;
}

void CVentanaDialogo::AlTomarFoco(wxChildFocusEvent& suceso)
{
    suceso.Skip();
    const CControl* control = ControlDe(suceso.GetWindow());
    m_foco = control != nullptr ? control->Id() : kSinId;
    if (control == nullptr)
        return;
    Suyo().NotaFoco(control->Id());
    TraeALaVista(*suceso.GetWindow());
}

void CVentanaDialogo::TraeALaVista(const wxWindow& widget)
{
    const int paso = GetCharHeight();
    const int desde = m_vista->GetViewStart().y * paso;
    const int alto = m_vista->GetClientSize().y;
    const int arriba = widget.GetPosition().y - 3 * paso; // a line of its group too
    const int abajo = widget.GetRect().GetBottom() + paso;
    if (arriba < desde)
        m_vista->Scroll(-1, std::max(0, arriba) / paso);
    else if (abajo > desde + alto)
        m_vista->Scroll(-1, (abajo - alto + paso - 1) / paso);
}

void CVentanaDialogo::AlTeclear(wxKeyEvent& tecla)
{
    switch (tecla.GetKeyCode()) {
    case WXK_F1:
        PideAyuda();
        break;
    case WXK_ESCAPE:
        Cancela();
        break;
    default:
        tecla.Skip();
    }
}

void CVentanaDialogo::PideAyuda()
{
    const CControl* control = ControlDe(FindFocus());
    POINT punto;
    if (control != nullptr) {
        const wxRect sitio = m_widgets.at(control)->GetScreenRect();
        const wxPoint raton = wxGetMousePosition();
        const wxPoint donde = sitio.Contains(raton) ? raton : sitio.GetBottomLeft();
        punto = {donde.x, donde.y};
    }
    Despacha([&] { Suyo().PideAyuda(control, punto); });
}
