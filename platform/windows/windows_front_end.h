#pragma once

#include <memory>

#include "platform/windowed_front_end.h"

class CVentanaDialogo;
class CVisorAyuda;

/// Front end in the system's own windows.
class CFrontalWindows : public CFrontalVentanas {
public:
    CFrontalWindows();
    CFrontalWindows(const CFrontalWindows&) = delete;
    CFrontalWindows& operator=(const CFrontalWindows&) = delete;
    ~CFrontalWindows() override;

    void IniciaControles() override;
    void MuestraModal(CDialog& dialogo) override;
    int Caja(const CString& texto, const CString& titulo, UINT flags) override;
    bool EligeFichero(CFileDialog& dialogo) override;
    bool MuestraAyuda(const CString& ficheroAyuda) override;
    bool MuestraAyudaControl(const CString& temas, const HH_POPUP& popup) override;

private:
    /// The window on top, where one is seen.
    const CVentanaDialogo* DeDelante() const;

    std::unique_ptr<CVisorAyuda> m_visor;
};
