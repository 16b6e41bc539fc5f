#pragma once

#include <array>

#include "vexa_libs/cversion_app.h"

/// What a command line asks for.
enum class Ruta {
    Dialogos,      ///< the choice of translation, then its dialog
    CatastroAVexa, ///< a batch run of the first translation
    VexaACatastro, ///< a batch run of the second one
    Ninguna        ///< nothing is started and nothing shown
};

inline constexpr std::size_t kTokens = 12;
using CTokens = std::array<CString, kTokens>;

/// The route for the tokens of the command line. A line that leaves one of tokens 1 to 7 empty asks
/// for the dialogs, whatever token 0 says.
Ruta EligeRuta(const CTokens& tokens);

/// The program: its start is its whole life.
class CCampivaApp : public CVersionApp {
public:
    BOOL InitInstance() override;
    void OnCommand(UINT mandato) override;

    /// Exit status of the process: 0; 1 after a batch run that showed a box with the error icon; 2
    /// for a command line that fits no route.
    int EstadoSalida() const { return m_estadoSalida; }

private:
    /// The choice of translation, then the dialog chosen. Closing that one ends the program.
    void MuestraDialogos();
    void EjecutaCatastroAVexa(const CTokens& tokens);
    void EjecutaVexaACatastro(const CTokens& tokens);
    /// Does something with a translation's dialog, which is the main window meanwhile.
    template <class D, class F>
    void ConDialogo(F accion);

    int m_estadoSalida = 0;
};
