#pragma once

#include <memory>

#include "platform/windowed_front_end.h"

class CVentanaAyuda;
class wxWindow;

/// Front end in real windows.
class CFrontalEscritorio : public CFrontalVentanas {
public:
    /// Starts the windows' library. Check `Funciona` then.
    /// \param programa  its name on the command line; what else stands there is not the library's
    /// \param entrada   the program's entry in the desktop's menu
    CFrontalEscritorio(char* programa, const char* entrada);
    CFrontalEscritorio(const CFrontalEscritorio&) = delete;
    CFrontalEscritorio& operator=(const CFrontalEscritorio&) = delete;
    ~CFrontalEscritorio() override;

    /// False where there is no screen to show windows on.
    bool Funciona() const { return m_funciona; }

    void IniciaControles() override;
    void MuestraModal(CDialog& dialogo) override;
    int Caja(const CString& texto, const CString& titulo, UINT flags) override;
    bool EligeFichero(CFileDialog& dialogo) override;
    bool MuestraAyuda(const CString& ficheroAyuda) override;
    bool MuestraAyudaControl(const CString& temas, const HH_POPUP& popup) override;

private:
    /// What a box stands in front of; null where no window is seen.
    wxWindow* Padre() const;

    bool m_funciona;
    std::unique_ptr<CVentanaAyuda> m_ayuda;
};
