#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "platform/cstring.h"

struct CEscritos;

// What the window of a translation tells of its run outside the dialog's template, alike on every
// desktop: the title, a line with the run's times, and the ways to what it wrote. All texts are
// UTF-8.

/// The complaint that nothing opens a file here.
std::string NoSeAbre(const CString& ruta);
/// What a run has observed, as the texts of the boxes that tell it in front of its window: a
/// paragraph each, and as many in a box as a low screen has room for. No UTF-8, as boxes take none.
std::vector<CString> CajasDeObservaciones(const std::vector<CString>& observaciones);
/// The title of a window whose run is at so many per cent of its phase.
std::string TituloEnProceso(int hecho, const CString& titulo);

/// A page that is asked for. Whoever makes it has all that he needs for himself: the next run may
/// begin, or the window go.
struct CPaginaPedida {
    const char* mientras; ///< what is told meanwhile
    std::string queja;    ///< where none could be made
    /// Has it made, and waits for it. The page, empty where this call made none: one that was there
    /// before is another run's.
    std::function<CString()> hace;
};

/// The story of a window's runs, one after the other.
class CRelatoProceso {
public:
    using Reloj = std::chrono::steady_clock;

    /// \param programaInforme  name of the program that makes a report of a log; empty for none
    /// \param seEnsaya  the run can be tried first by that program
    explicit CRelatoProceso(CString programaInforme, bool seEnsaya = false);

    /// Forgets the run before: another is asked for.
    void Olvida();
    /// The run goes on. The first time it begins.
    /// \param hecho  per cent of the phase; where it falls, a new phase began
    void Avanza(Reloj::time_point ahora, int hecho);
    /// The run is over. Only what is there is offered.
    void Termina(Reloj::time_point ahora, const CEscritos& escritos);
    /// Takes out of the run the time in which it waited for the user.
    void Descuenta(Reloj::duration espera);

    bool EnProceso() const { return m_enProceso; }
    /// As long as there is no run to tell of: into which folder names without one go.
    const std::string& Texto() const { return m_texto; }
    /// Paths to be offered; empty for none, and as long as a run is at work.
    const CString& Log() const { return m_log; }
    const CString& Carpeta() const { return m_carpeta; }
    /// The log that a report may be made of: the program that makes it is there.
    const CString& DeInforme() const { return m_deInforme; }
    CPaginaPedida Informe() const;
    /// A trial can be made now: no run is at work, and the program is there.
    bool OfreceEnsayo() const { return m_seEnsaya && !m_enProceso; }
    /// \param orden  as the dialog gives it (CDialog::OrdenDeEnsayo)
    CPaginaPedida Ensayo(const std::vector<CString>& orden) const;

private:
    /// What has passed, as "0:12" or "1:02:03".
    std::string Pasado(Reloj::time_point ahora) const;
    /// The same, and what is left of the phase as far as its pace tells; too early in it nothing is
    /// foretold.
    std::string PasadoYResto(Reloj::time_point ahora) const;
    CString HazInforme() const;
    CString HazEnsayo(const std::vector<CString>& orden) const;
    CString HazPagina(const CString& pagina, const std::vector<std::string>& argumentos) const;

    CString m_programaInforme;
    bool m_seEnsaya;
    Reloj::time_point m_inicio; // the waits for the user are taken out of both
    Reloj::time_point m_inicioFase;
    bool m_enProceso = false;
    int m_hecho = 0;
    std::string m_texto;
    CString m_log;
    CString m_carpeta;
    CString m_deInforme;
    CString m_pagina;
    std::vector<CString> m_leidos; // of the run, as the next ones beside its log
    std::vector<CString> m_escritos;
};
