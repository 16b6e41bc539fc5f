#pragma once

#include <wx/panel.h>

#include "platform/run_story.h"

class wxButton;
class wxStaticText;
struct CEscritos;

/// The line below a translation's window: during a run its times, and then the way to what the run
/// has written.
class CPieProceso : public wxPanel {
public:
    explicit CPieProceso(wxWindow* padre);

    /// A run goes on.
    /// \param hecho  per cent of the phase
    void Avanza(int hecho);
    /// The run is over. Only what is there is offered.
    void Termina(const CEscritos& escritos);
    bool EnProceso() const { return m_relato.EnProceso(); }
    /// Takes out of the run the time in which it waited for the user.
    void Descuenta(CRelatoProceso::Reloj::duration espera) { m_relato.Descuenta(espera); }

private:
    wxButton* PonBoton(const char* leyenda, void (CPieProceso::*alPulsar)());
    void Ofrece(wxButton& boton, const char* nombre, const CString& ruta);
    /// Brings text and buttons to what the story says.
    void PonAlDia();
    void AbreLog() { Abre(m_relato.Log()); }
    void AbreCarpeta() { Abre(m_relato.Carpeta()); }
    void AbreInforme();
    void Abre(const CString& ruta);
    void Quejate(const std::string& queja);

    CRelatoProceso m_relato;
    wxStaticText* m_texto;
    wxButton* m_haceInforme;
    wxButton* m_abreLog;
    wxButton* m_abreCarpeta;
};
