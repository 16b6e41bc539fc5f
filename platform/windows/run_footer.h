#pragma once

#include "platform/windows/win32.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/run_story.h"

/// What stands below the template in a translation's window: during a run its times, and then the
/// way to what the run has written.
class CPieProceso {
public:
    /// Its text and buttons are made as children of the window, hidden where there is nothing to
    /// tell.
    /// \param relato  what is to be told; must live as long as the object
    /// \param orden  asks the dialog what is to be tried
    CPieProceso(HWND ventana, const CRelatoProceso& relato,
                std::function<std::vector<CString>()> orden);

    /// Brings text and buttons to what the story says.
    void PonAlDia();
    /// Pixels that it takes.
    int Alto() const;
    void Coloca(const RECT& sitio);
    /// Does what a click on one of its buttons asks. False for any other window.
    bool AlPulsar(HWND boton);
    /// Comes to the window when the report is made that was asked for; the user goes on meanwhile.
    static constexpr UINT kHayInforme = WM_APP;
    void AbreInformeHecho();

private:
    struct CInforme {
        std::string queja; ///< where it couldn't be made
        CString pagina;    ///< empty where it couldn't be made
    };

    HWND Crea(const wchar_t* clase, const char* texto, DWORD estilo);
    /// Shows a button where there is what it opens.
    static void Ofrece(HWND boton, const char* nombre, const CString& ruta);
    /// Makes a page while the user goes on; one at a time.
    void Haz(CPaginaPedida pedida);
    void Deja(bool pedir);
    void Abre(const CString& ruta) const;
    void Quejate(const std::string& queja) const;

    HWND m_ventana;
    RECT m_sitio = {};
    const CRelatoProceso& m_relato;
    std::shared_ptr<CInforme> m_informe; ///< that is being made; its maker has it, too
    bool m_hayInforme = false;           ///< it is made, and waits for the end of a run
    std::function<std::vector<CString>()> m_orden;
    HWND m_texto;
    HWND m_haceEnsayo;
    HWND m_haceInforme;
    HWND m_abreLog;
    HWND m_abreCarpeta;
};
