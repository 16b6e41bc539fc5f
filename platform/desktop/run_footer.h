#pragma once

#include <functional>
#include <vector>

#include <wx/panel.h>

#include "platform/run_story.h"

class wxButton;
class wxStaticText;

/// The line below a translation's window: during a run its times, and then the way to what the run
/// has written.
class CPieProceso : public wxPanel {
public:
    /// \param relato  what is to be told; must live as long as the window
    /// \param orden  asks the dialog what is to be tried
    CPieProceso(wxWindow* padre, const CRelatoProceso& relato,
                std::function<std::vector<CString>()> orden);

    /// Brings text and buttons to what the story says.
    void PonAlDia();

private:
    wxButton* PonBoton(const char* leyenda, void (CPieProceso::*alPulsar)());
    void Ofrece(wxButton& boton, const char* nombre, const CString& ruta);
    void AbreLog() { Abre(m_relato.Log()); }
    void AbreCarpeta() { Abre(m_relato.Carpeta()); }
    void AbreEnsayo();
    void AbreInforme();
    void Abre(const CString& ruta);
    void Quejate(const std::string& queja);

    const CRelatoProceso& m_relato;
    std::function<std::vector<CString>()> m_orden;
    wxStaticText* m_texto;
    wxButton* m_haceEnsayo;
    wxButton* m_haceInforme;
    wxButton* m_abreLog;
    wxButton* m_abreCarpeta;
};
