#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/cstring.h"

namespace informe {

/// What the line of the program asks for.
struct COpciones {
    enum class Pide { Informes, Ayuda, Version };

    Pide pide = Pide::Informes;
    std::vector<CString> registros;
    // Of one log; empty for what its name tells.
    CString html;
    CString geojson;
    CString csv;
    CString lista;
    CString entrada;
    CString tablas; ///< folder
    CString ortos;
    std::vector<CString> con; ///< files of the run; what each is, its content tells
};

extern const char* const kUso;

/// Nothing, and the complaint, for a line that can't be understood.
/// \param argumentos  without the program's name
std::optional<COpciones> LeeOpciones(std::span<const std::string> argumentos, std::string& queja);

} // namespace informe
