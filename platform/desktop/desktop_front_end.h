#pragma once

#include <memory>
#include <vector>

#include "platform/front_end.h"

class CGloboAyuda;
class CVentanaDialogo;
class wxHtmlHelpController;
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

    void MuestraModal(CDialog& dialogo) override;
    void AtiendeUno(CDialog& dialogo) override;
    int Caja(const CString& texto, const CString& titulo, UINT flags) override;
    bool EligeFichero(CFileDialog& dialogo) override;
    void Refleja(const CDialog& dialogo, const CControl& control) override;
    bool MuestraAyuda(const CString& ficheroAyuda) override;
    bool MuestraAyudaControl(const CString& temas, const HH_POPUP& popup) override;

private:
    /// The window of a dialog that is shown, null for a hidden one.
    CVentanaDialogo* VentanaDe(const CDialog& dialogo) const;
    /// What a box stands in front of; null where no window is seen.
    wxWindow* Delante() const;
    /// Opens the help's window. A file that can't be read leaves none.
    void AbreAyuda(const CString& ficheroAyuda);

    bool m_funciona;
    std::vector<CVentanaDialogo*> m_ventanas; ///< those shown, the last one on top
    std::unique_ptr<wxHtmlHelpController> m_ayuda;
};
