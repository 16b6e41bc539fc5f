#pragma once

#include <memory>
#include <vector>

#include "platform/front_end.h"

class CVentanaDialogo;
class CVisorAyuda;

/// Front end in the system's own windows.
class CFrontalWindows : public CFrontal {
public:
    CFrontalWindows();
    CFrontalWindows(const CFrontalWindows&) = delete;
    CFrontalWindows& operator=(const CFrontalWindows&) = delete;
    ~CFrontalWindows() override;

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
    /// The window on top, where one is seen.
    CVentanaDialogo* Delante() const;

    std::vector<CVentanaDialogo*> m_ventanas; ///< those shown, the last one on top
    CString m_carpeta;                        ///< of the file that was chosen last
    std::unique_ptr<CVisorAyuda> m_visor;
};
