#pragma once

#include <memory>
#include <vector>

#include "platform/front_end.h"

class CVentanaAyuda;
class CVentanaDialogo;
class wxWindow;

/// Front end in real windows.
class CFrontalEscritorio : public CFrontal {
public:
    /// Starts the windows' library. Check `Funciona` then.
    /// \param programa  its name on the command line; what else stands there is not the library's
    explicit CFrontalEscritorio(char* programa);
    CFrontalEscritorio(const CFrontalEscritorio&) = delete;
    CFrontalEscritorio& operator=(const CFrontalEscritorio&) = delete;
    ~CFrontalEscritorio() override;

    /// False where there is no screen to show windows on.
    bool Funciona() const { return m_funciona; }

    void IniciaControles() override;
    void MuestraModal(CDialog& dialogo) override;
    void AtiendeUno(CDialog& dialogo) override;
    int Caja(const CString& texto, const CString& titulo, UINT flags) override;
    bool EligeFichero(CFileDialog& dialogo) override;
    void Refleja(const CDialog& dialogo, const CControl& control) override;
    void FinDeProceso(const CDialog& dialogo, const CEscritos& escritos) override;
    bool MuestraAyuda(const CString& ficheroAyuda) override;
    bool MuestraAyudaControl(const CString& temas, const HH_POPUP& popup) override;

private:
    /// The window of a dialog that is shown, null for a hidden one.
    CVentanaDialogo* VentanaDe(const CDialog& dialogo) const;
    /// What a box stands in front of; null where no window is seen.
    wxWindow* Delante() const;
    bool m_funciona;
    std::vector<CVentanaDialogo*> m_ventanas; ///< those shown, the last one on top
    CString m_carpeta;                        ///< of the file that was chosen last
    std::unique_ptr<CVentanaAyuda> m_ayuda;
};
