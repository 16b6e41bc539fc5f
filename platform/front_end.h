#pragma once

#include <vector>

#include "platform/cstring.h"
#include "platform/types.h"

class CControl;
class CDialog;
class CFileDialog;
struct HH_POPUP;

/// The files that a run has written, and those of its inputs that are texts.
struct CEscritos {
    CString log;                  ///< by its whole path; empty where the run made none
    std::vector<CString> salidas; ///< in the order in which they were written
    std::vector<CString> leidos;
    /// What the run says beside its boxes, a sentence each: its input may not be what it was read
    /// as.
    std::vector<CString> observaciones;
    bool huboErrores = false; ///< boxes told some, which stand in no log
    CString informe = {};     ///< page of the run's report; empty for one of the log's name
};

/// What became of the commands that a script gave in place of a user.
struct CGuionMandatos {
    bool hay = false; ///< the commands come from a file or a pipe; nobody sits there
    int leidos = 0;
    int fallidos = 0; ///< that couldn't be carried out; each was told when it was read
};

/// All that a front end does for the layer. A terminal, real windows and the tests' script each
/// implement it; the dialogs' own code is the same behind all of them.
class CFrontal {
public:
    virtual ~CFrontal() = default;

    /// Makes ready what shows controls, before any is shown.
    virtual void IniciaControles() {}

    /// Shows the dialog, whose controls exist and are filled, and serves the user until the
    /// dialog's `EndDialog` was called. The user's actions go to the dialog as messages.
    virtual void MuestraModal(CDialog& dialogo) = 0;

    /// Takes one pending event of the user, if there is one, and never waits for one. Called many
    /// times a second during a run.
    virtual void AtiendeUno(CDialog& dialogo) = 0;

    /// Shows a box and gives the user's answer (IDOK, IDYES, IDNO, IDRETRY, IDCANCEL). `flags` are
    /// those of MessageBox.
    virtual int Caja(const CString& texto, const CString& titulo, UINT flags) = 0;

    /// Tells whether somebody is there who can answer a question.
    virtual bool AlguienContesta() const { return true; }

    /// Lets the user choose a file. False if he gave up; else the dialog holds the path.
    virtual bool EligeFichero(CFileDialog& dialogo) = 0;

    /// Tells that what a control shows was set, often to what it was. The dialog may be a hidden
    /// one.
    virtual void Refleja(const CDialog& dialogo, const CControl& control) = 0;

    /// Tells that a run of a dialog is asked for, which may come to nothing: what was told of the
    /// one before is no longer so.
    virtual void InicioDeProceso(const CDialog& /*dialogo*/) {}

    /// Tells that the run of a dialog, hidden or not, is over and what it left, so that the user
    /// can be led there.
    virtual void FinDeProceso(const CDialog& /*dialogo*/, const CEscritos& /*escritos*/) {}

    /// What became of a script's commands until now. A front end that reads none has none.
    virtual CGuionMandatos Guion() const { return {}; }

    /// Tells that a dialog, hidden or not, is gone.
    virtual void Cierra(const CDialog& /*dialogo*/) {}

    /// Shows the help file on its default topic. False where it can't be shown.
    virtual bool MuestraAyuda(const CString& ficheroAyuda) = 0;

    /// Shows the help text of one control. False where it can't be shown.
    /// \param temas  the help file, "::" and the file inside it that holds the texts
    virtual bool MuestraAyudaControl(const CString& temas, const HH_POPUP& popup) = 0;
};

/// The one of the application object.
CFrontal& FrontalDeLaAplicacion();
