#pragma once

#include <wx/panel.h>

#include "platform/run_story.h"

class wxButton;
class wxStaticText;

/// The line below a translation's window: during a run its times, and then the way to what the run
/// has written.
class CPieProceso : public wxPanel {
public:
    /// \param relato  what is to be told; must live as long as the window
    CPieProceso(wxWindow* padre, const CRelatoProceso& relato);

    /// Brings text and buttons to what the story says.
    void PonAlDia();

private:
    wxButton* PonBoton(const char* leyenda, void (CPieProceso::*alPulsar)());
    void Ofrece(wxButton& boton, const char* nombre, const CString& ruta);
    void AbreLog() { Abre(m_relato.Log()); }
    void AbreCarpeta() { Abre(m_relato.Carpeta()); }
    void AbreInforme();
    void Abre(const CString& ruta);
    void Quejate(const std::string& queja);

    const CRelatoProceso& m_relato;
    wxStaticText* m_texto;
    wxButton* m_haceInforme;
    wxButton* m_abreLog;
    wxButton* m_abreCarpeta;
};
