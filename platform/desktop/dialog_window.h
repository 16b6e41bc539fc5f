#pragma once

#include <functional>
#include <unordered_map>

#include <wx/evtloop.h>
#include <wx/frame.h>
#include <wx/scrolwin.h>

#include "platform/desktop/layout.h"
#include "platform/dialog.h"
#include "platform/run_pace.h"

class CPieProceso;
class wxDialog;
class wxGauge;
class wxPanel;
class wxRadioButton;
struct CEscritos;

/// A dialog in a real window: its widgets show the state of the controls, and what the user does to
/// them goes to the dialog. The window of a translation, which is what has a bar, can be made wider
/// and has a line below its template for the run's times and files.
class CVentanaDialogo : public wxFrame {
public:
    /// \param debajo  the window that is to wait meanwhile; null for none
    CVentanaDialogo(CDialog& dialogo, wxWindow* debajo);

    const CDialog& Dialogo() const { return m_dialogo; }
    /// Shows the window and serves the user until the dialog is closed and none of its handlers is
    /// at work any more.
    void Muestra();
    /// Takes one pending event, of whatever window, and never waits for one.
    void AtiendeUno();
    /// Brings a widget to the state of its control.
    void Refleja(const CControl& control);
    /// Shows a box and gives its answer. The time that it takes is the user's and not the run's.
    int Espera(wxDialog& caja);
    /// The run at work is over.
    void FinDeProceso(const CEscritos& escritos);

private:
    using Reloj = CRitmoProceso::Reloj;

    void PonIconos();
    void CreaWidgets();
    wxWindow* Crea(CControl& control);
    wxWindow* CreaRadio(const CPlantillaControl& plantilla);
    void MideUnidades();
    /// Gives the window the size of its template, or what of it the screen takes.
    void PonLados();
    void Coloca();
    /// Bar, title and times lag behind a run; this brings them there.
    void PonAvanceAlDia();
    void PonTitulo(const wxString& titulo);
    void AlTomarFoco(wxChildFocusEvent& suceso);
    /// Scrolls a widget into view.
    void TraeALaVista(const wxWindow& widget);
    const CControl* ControlDe(const wxWindow* widget) const;
    /// Has a handler of the dialog do its work. One may run inside another: a translation takes the
    /// user's clicks while it works.
    void Despacha(const std::function<void()>& trabajo);
    void AlTeclear(wxKeyEvent& tecla);
    void PideAyuda();

    CDialog& m_dialogo;
    wxPanel* m_marco;          ///< leads the Tab key through all that follows
    wxScrolledWindow* m_vista; ///< what of the template the screen has place for
    wxPanel* m_panel;          ///< the template's area, which holds the widgets
    CPieProceso* m_pie = nullptr;
    CUnidades m_unidades;
    std::unordered_map<const CControl*, wxWindow*> m_widgets;
    wxGUIEventLoop m_bucle;
    int m_despachos = 0;  ///< handlers at work
    UINT m_foco = kSinId; ///< of the control that has the focus

    wxRadioButton* m_sinMarca = nullptr; ///< hidden in the row of radio buttons
    const CControl* m_progreso = nullptr;
    wxGauge* m_barra = nullptr;
    CRitmoProceso m_ritmo;
};
