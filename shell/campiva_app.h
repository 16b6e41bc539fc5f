#pragma once

#include "shell/command_line.h"
#include "vexa_libs/cversion_app.h"

/// The program: its start is its whole life.
class CCampivaApp : public CVersionApp {
public:
    BOOL InitInstance() override;

private:
    /// The choice of translation, then the dialog chosen. Closing that one ends the program.
    void MuestraDialogos();
    void EjecutaCatastroAVexa(const CTokens& tokens);
    void EjecutaVexaACatastro(const CTokens& tokens);
    /// Does something with a translation's dialog, which is the main window meanwhile.
    template <class D, class F>
    void ConDialogo(F accion);
};
