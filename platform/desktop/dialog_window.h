#pragma once

#include <chrono>
#include <functional>
#include <unordered_map>

#include <wx/evtloop.h>
#include <wx/frame.h>

#include "platform/dialog.h"

class wxGauge;
class wxPanel;
class wxRadioButton;

/// A dialog in a real window: its widgets show the state of the controls, and what the user does to
/// them goes to the dialog.
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
    /// The bar lags behind its control during a run; this brings it there.
    void PonBarraAlDia();

private:
    using Reloj = std::chrono::steady_clock;

    void PonIconos();
    void CreaWidgets();
    wxWindow* Crea(CControl& control);
    wxWindow* CreaRadio(const CPlantillaControl& plantilla);
    void Coloca();
    /// Has a handler of the dialog do its work. One may run inside another: a translation takes the
    /// user's clicks while it works.
    void Despacha(const std::function<void()>& trabajo);
    void AlTeclear(wxKeyEvent& tecla);
    void PideAyuda();

    CDialog& m_dialogo;
    wxPanel* m_panel; ///< holds the widgets and leads the Tab key through them
    std::unordered_map<const CControl*, wxWindow*> m_widgets;
    wxGUIEventLoop m_bucle;
    int m_despachos = 0; ///< handlers at work

    wxRadioButton* m_sinMarca = nullptr; ///< hidden in the row of radio buttons
    const CControl* m_progreso = nullptr;
    wxGauge* m_barra = nullptr;
    Reloj::time_point m_barraPintada;
    Reloj::time_point m_calma; ///< no event was pending a moment ago; until then none is looked for
};
