#pragma once

#include <wx/panel.h>

#include "platform/desktop/run_clock.h"

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
    bool EnProceso() const { return m_enProceso; }
    /// Takes out of the run the time in which it waited for the user.
    void Descuenta(CRelojProceso::Reloj::duration espera) { m_reloj.Descuenta(espera); }

private:
    wxButton* PonBoton(const char* leyenda, wxString CPieProceso::*destino);
    void Ofrece(wxButton& boton, const wxString& nombre, const wxString& ruta);
    void Escribe(const wxString& texto);
    void Abre(const wxString& ruta);

    CRelojProceso m_reloj;
    bool m_enProceso = false;
    int m_hecho = 0;
    wxString m_log;     ///< path of the last run's log
    wxString m_carpeta; ///< of its outputs
    wxStaticText* m_texto;
    wxButton* m_abreLog;
    wxButton* m_abreCarpeta;
};
