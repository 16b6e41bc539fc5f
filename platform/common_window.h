#pragma once

#include <exception>
#include <functional>
#include <string>
#include <string_view>

#include "platform/dialog.h"
#include "platform/run_story.h"

struct CEscritos;

/// Gives a field what its user wrote into it. A path that was copied in a file manager comes in
/// quotes, out of which it is taken; then it is what the field shows, and true.
bool TomaLoEscrito(CControl& campo, std::string_view texto);

/// The window of a dialog, as far as it is the same on every desktop: the handlers that the user
/// sets to work, and what a translation's window shows of its run.
///
/// A handler may run inside another: a translation takes the user's clicks while it works. No
/// exception may cross the code of a windows' library or of the system, so what a handler throws is
/// kept, the loop that called it is left, and whoever asked for that loop throws it again:
/// `Muestra` for the user's own handlers, `AtiendeUno` for one that came in the middle of a run.
class CVentanaComun {
public:
    explicit CVentanaComun(CDialog& dialogo);
    CVentanaComun(const CVentanaComun&) = delete;
    CVentanaComun& operator=(const CVentanaComun&) = delete;
    virtual ~CVentanaComun() = default;

    const CDialog& Dialogo() const { return m_dialogo; }
    virtual bool SeVe() const = 0;
    /// Shows the window and serves the user until the dialog is closed and none of its handlers is
    /// at work any more, or until one has thrown something that no other one caught. That is thrown
    /// here, when the window is hidden.
    void Muestra();
    /// Takes one pending event, of whatever window, and never waits for one; nothing where it is
    /// too early to look. What a handler threw is thrown here.
    void AtiendeUno();
    /// Brings the window to the state of a control. The bar of a run follows when the next event is
    /// looked for, unless it goes back to its beginning.
    void Refleja(const CControl& control);
    /// Has the user answer a box. The time that it takes is the user's and not the run's.
    int Espera(const std::function<int()>& caja);
    /// A run is asked for.
    void InicioDeProceso();
    /// The run at work is over.
    void FinDeProceso(const CEscritos& escritos);

protected:
    CDialog& Suyo() { return m_dialogo; }
    /// The bar of a translation's dialog, null in others.
    const CControl* Avance() const { return m_avance; }
    const CRelatoProceso& Relato() const { return m_relato; }
    /// Has a handler of the dialog do its work, and keeps what it throws.
    void Despacha(const std::function<void()>& trabajo);
    /// Closes the dialog as its button IDCANCEL does.
    void Cancela();
    /// Tells that the user's loop has nothing more to do.
    bool HayQueSalir() const;

private:
    using Reloj = CRelatoProceso::Reloj;

    // What each desktop does in its own way.
    virtual void Aparece() = 0;
    virtual void Esconde() = 0; ///< from here on the user sees nothing of it; a run may go on
    /// Serves the user's events until `HayQueSalir`, which may be true from the start.
    virtual void SirveAlUsuario() = 0;
    /// `HayQueSalir` became true inside that loop, which may be waiting for an event.
    virtual void DejaDeServir() = 0;
    /// Takes one pending event; false where there is none.
    virtual bool TomaUno() = 0;
    virtual void PonControl(const CControl& control) = 0; ///< any but the bar
    virtual void PonBarra(int hecho) = 0;
    virtual void PonTitulo(const std::string& utf8) = 0;
    virtual void PonPie() = 0; ///< brings the line below the template to the story

    void PonAvanceAlDia();
    void PonSuTitulo();
    void LanzaLoGuardado();

    CDialog& m_dialogo;
    const CControl* m_avance;
    CRelatoProceso m_relato;
    Reloj::time_point m_calma;   // until when no event is looked for
    Reloj::time_point m_pintada; // when the bar was drawn last
    int m_despachos = 0;         // handlers at work
    std::exception_ptr m_lanzado;
};
