#pragma once

#include <functional>
#include <future>
#include <string>
#include <vector>

#include <wx/panel.h>
#include <wx/timer.h>

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
    void HazEnsayo() { Haz(m_relato.Ensayo(m_orden())); }
    void HazInforme() { Haz(m_relato.Informe()); }
    /// Makes a page while the user goes on; one at a time.
    void Haz(CPaginaPedida pedida);
    /// Opens the page if it is made by now.
    void MiraSiEsta();
    void Abre(const CString& ruta);
    void Quejate(const std::string& queja);

    const CRelatoProceso& m_relato;
    std::function<std::vector<CString>()> m_orden;
    std::future<CString> m_pagina; ///< that is being made; empty where it can't be made
    std::string m_queja;           ///< of that one, for then
    wxWindow* m_foco = nullptr;    ///< what had the focus when it was asked for
    wxTimer m_mirada;
    wxStaticText* m_texto;
    wxButton* m_haceEnsayo;
    wxButton* m_haceInforme;
    wxButton* m_abreLog;
    wxButton* m_abreCarpeta;
};
