#pragma once

#include "platform/windows/win32.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/common_window.h"
#include "platform/windows/dialog_font.h"
#include "platform/windows/pictures.h"
#include "platform/windows/taskbar.h"
#include "platform/windows/window_frame.h"

class CPieProceso;

/// A dialog in a window of the system, made from its template: the system's controls show the state
/// of the dialog's, and what the user does to them goes to the dialog. The window of a translation,
/// which is what has a bar, can be made wider and has a line below its template for the run's times
/// and files.
class CVentanaDialogo : public CVentanaComun {
public:
    /// \param debajo  the window that is to wait meanwhile; null for none
    CVentanaDialogo(CDialog& dialogo, HWND debajo);
    ~CVentanaDialogo() override;

    HWND Manija() const { return m_ventana; }
    bool SeVe() const override { return IsWindowVisible(m_ventana) != 0; }
    /// The window of a control, null where there is none with the id.
    HWND ControlCon(UINT id) const { return GetDlgItem(m_ventana, static_cast<int>(id)); }

private:
    void Aparece() override;
    void Esconde() override { ShowWindow(m_ventana, SW_HIDE); }
    void SirveAlUsuario() override;
    void DejaDeServir() override { PostMessageW(m_ventana, WM_NULL, 0, 0); }
    /// No key of a dialog's navigation is heeded.
    bool TomaUno() override;
    void PonControl(const CControl& control) override;
    void PonBarra(int hecho) override;
    void PonTitulo(const std::string& utf8) override;
    void PonPie() override;

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
    /// The window came to a screen of another scale.
    /// \param sitio  where the system would have it now
    void CambiaEscala(int puntosPorPulgada, const RECT& sitio);
    /// Answers the question whether the session may end: not in the middle of a run, of which the
    /// system then tells its user, who may end it all the same.
    bool PuedeAcabarLaSesion();
    void AcabaLaSesion(bool deVerdad);

    HWND m_debajo;
    HWND m_ventana = nullptr;
    std::vector<HWND> m_controles; ///< in the dialog's order
    std::optional<CMarcoVentana> m_marco;
    CImagenes m_imagenes;
    std::unique_ptr<CPieProceso> m_pie;
    std::optional<CBarraDeTareas> m_tareas;
    UINT m_foco = kSinId; ///< of the control that has the focus
    Letra m_letra;        ///< of the controls, since the scale changed; null for the dialog's own
    bool m_reflejando = false; ///< what changes now is not the user's doing
};
