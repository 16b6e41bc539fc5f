#pragma once

#include "platform/windows/win32.h"

#include <exception>
#include <functional>
#include <optional>
#include <vector>

#include "platform/dialog.h"
#include "platform/run_pace.h"
#include "platform/windows/pictures.h"
#include "platform/windows/window_frame.h"

class CPieProceso;
struct CEscritos;

/// A dialog in a window of the system, made from its template: the system's controls show the state
/// of the dialog's, and what the user does to them goes to the dialog. The window of a translation,
/// which is what has a bar, can be made wider and has a line below its template for the run's times
/// and files.
class CVentanaDialogo {
public:
    /// \param debajo  the window that is to wait meanwhile; null for none
    CVentanaDialogo(CDialog& dialogo, HWND debajo);
    CVentanaDialogo(const CVentanaDialogo&) = delete;
    CVentanaDialogo& operator=(const CVentanaDialogo&) = delete;
    ~CVentanaDialogo();

    const CDialog& Dialogo() const { return m_dialogo; }
    HWND Manija() const { return m_ventana; }
    bool SeVe() const { return IsWindowVisible(m_ventana) != 0; }
    /// Shows the window and serves the user until the dialog is closed. What a handler threw is
    /// thrown here.
    void Muestra();
    /// Takes one pending message, of whatever window, and never waits for one; no key of a dialog's
    /// navigation is heeded. What a handler threw is thrown here.
    void AtiendeUno();
    /// Brings a control of the window to the state of the dialog's.
    void Refleja(const CControl& control);
    /// Has the user answer a box. The time that it takes is the user's and not the run's.
    int Espera(const std::function<int()>& caja);
    /// The run at work is over.
    void FinDeProceso(const CEscritos& escritos);
    /// The window of a control, null where there is none with the id.
    HWND ControlCon(UINT id) const;

private:
    using Reloj = CRitmoProceso::Reloj;

    static INT_PTR CALLBACK AlLlegar(HWND ventana, UINT mensaje, WPARAM wParam, LPARAM lParam);
    /// The result is what the dialog's procedure gives.
    INT_PTR Atiende(UINT mensaje, WPARAM wParam, LPARAM lParam);
    void Crea(HWND debajo);
    void PreparaControles();
    void PonImagenes();
    void PonFocoInicial();
    /// Control and window by each other; null where one has none.
    HWND VentanaDe(const CControl& control) const;
    CControl* ControlDe(HWND ventana);
    void AlMandar(WORD aviso, WORD id, HWND ventana);
    void AlCambiar(CControl& control, WORD aviso, HWND ventana);
    void AlTomarFoco(HWND ventana);
    void PideAyuda(const AyudaDelSistema& pregunta);
    /// Bar, title and times lag behind a run; this brings them there.
    void PonAvanceAlDia();
    void PonTitulo(const std::wstring& titulo);
    /// Has a handler of the dialog do its work. One may run inside another: a translation takes the
    /// user's clicks while it works. What it throws waits until the system's own code is left,
    /// which no exception may cross.
    void Despacha(const std::function<void()>& trabajo);
    void LanzaLoGuardado();

    CDialog& m_dialogo;
    HWND m_debajo;
    HWND m_ventana = nullptr;
    std::vector<HWND> m_controles; ///< in the dialog's order
    std::optional<CMarcoVentana> m_marco;
    CImagenes m_imagenes;
    std::unique_ptr<CPieProceso> m_pie;
    const CControl* m_progreso;
    CRitmoProceso m_ritmo;
    UINT m_foco = kSinId;      ///< of the control that has the focus
    bool m_reflejando = false; ///< what changes now is not the user's doing
    std::exception_ptr m_lanzado;
};
