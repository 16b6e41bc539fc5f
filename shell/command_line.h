#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "platform/cstring.h"

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
