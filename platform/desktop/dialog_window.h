#pragma once

#include <string>
#include <unordered_map>

#include <wx/evtloop.h>
#include <wx/frame.h>
#include <wx/scrolwin.h>

#include "platform/common_window.h"
#include "platform/desktop/layout.h"

class CPieProceso;
class wxDialog;
class wxGauge;
class wxPanel;
class wxRadioButton;

/// A dialog in a real window: its widgets show the state of the controls, and what the user does to
/// them goes to the dialog. The window of a translation, which is what has a bar, can be made wider
/// and has a line below its template for the run's times and files.
class CVentanaDialogo : public wxFrame, public CVentanaComun {
public:
    /// \param debajo  the window that is to wait meanwhile; null for none
    CVentanaDialogo(CDialog& dialogo, wxWindow* debajo);

    bool SeVe() const override { return IsShown(); }

private:
    void Aparece() override;
    void Esconde() override { Hide(); }
    void SirveAlUsuario() override;
    /// A box may have a loop of its own on top.
    void DejaDeServir() override { m_bucle.ScheduleExit(); }
    bool TomaUno() override;
    void PonControl(const CControl& control) override;
    void PonBarra(int hecho) override;
    void PonTitulo(const std::string& utf8) override;
    void PonPie() override;

    void PonIconos();
    void CreaWidgets();
    wxWindow* Crea(CControl& control);
    wxWindow* CreaRadio(const CPlantillaControl& plantilla);
    void MideUnidades();
    /// What of the screen a dialog can take.
    wxSize Cabe() const;
    /// Brings the rows of a dialog that is higher than the screen closer together, until it isn't
    /// or widgets would touch.
    void JuntaFilas();
    bool SeTocan(const CUnidades& unidades) const;
    /// The size of the template with what stands below it.
    wxSize Entera(const CUnidades& unidades) const;
    /// Gives the window the size of its template, or what of it the screen takes.
    void PonLados();
    void Coloca();
    void AlTomarFoco(wxChildFocusEvent& suceso);
    /// Scrolls a widget into view.
    void TraeALaVista(const wxWindow& widget);
    const CControl* ControlDe(const wxWindow* widget) const;
    void AlTeclear(wxKeyEvent& tecla);
    void PideAyuda();

    wxPanel* m_marco;          ///< leads the Tab key through all that follows
    wxScrolledWindow* m_vista; ///< what of the template the screen has place for
    wxPanel* m_panel;          ///< the template's area, which holds the widgets
    CPieProceso* m_pie = nullptr;
    CUnidades m_unidades;
    std::unordered_map<const CControl*, wxWindow*> m_widgets;
    wxGUIEventLoop m_bucle;
    UINT m_foco = kSinId; ///< of the control that has the focus

    wxRadioButton* m_sinMarca = nullptr; ///< hidden in the row of radio buttons
    wxGauge* m_barra = nullptr;
};
