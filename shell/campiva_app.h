#pragma once

#include <array>
#include <span>
#include <string>

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

/// The arguments of a program as one text, joined by tabs, as the application is given them. A tab
/// inside an argument is kept apart from those.
CString UneArgumentos(std::span<const std::string> argumentos);
/// The tokens of such a text; those that it doesn't reach are empty, and those behind the twelfth
/// are dropped.
CTokens ParteMandato(const CString& mandato);

/// The route for the tokens of the command line. A line that leaves one of tokens 1 to 7 empty asks
/// for the dialogs, whatever token 0 says.
Ruta EligeRuta(const CTokens& tokens);

/// The program: its start is its whole life.
class CCampivaApp : public CVersionApp {
public:
    BOOL InitInstance() override;
    void OnCommand(UINT mandato) override;

    /// Exit status of the process, once it has run. A person at the dialogs has seen what came of
    /// his commands, so that they end with 0; for a script it is one of the constants below.
    int EstadoSalida() const;

    static constexpr int kHecho = 0;
    static constexpr int kHuboError = 1;  ///< an error box, or a command that couldn't be done
    static constexpr int kNadaPedido = 2; ///< a line that fits no route, dialogs without commands
    static constexpr int kDetenido = 130; ///< the user stopped the run

private:
    /// The choice of translation, then the dialog chosen. Closing that one ends the program.
    void MuestraDialogos();
    void EjecutaCatastroAVexa(const CTokens& tokens);
    void EjecutaVexaACatastro(const CTokens& tokens);
    /// Does something with a translation's dialog, which is the main window meanwhile.
    template <class D, class F>
    void ConDialogo(F accion);

    Ruta m_ruta = Ruta::Dialogos;
    bool m_detenido = false;
};
