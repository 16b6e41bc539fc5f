#pragma once

#include "vexa_libs/cversion_app.h"

/// The program: its start is its whole life.
class CCampivaApp : public CVersionApp {
public:
    BOOL InitInstance() override;

private:
    /// The choice of translation, then the dialog chosen. Closing that one ends the program.
    void MuestraDialogos();
    /// Does something with a translation's dialog, which is the main window meanwhile.
    template <class D, class F>
    void ConDialogo(F accion);
};
