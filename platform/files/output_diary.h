#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/safe_replacement.h"

// The diary of a set of outputs, as it stands in its file: what is about to be replaced.

/// What a diary says of one target.
struct CEntradaDiario {
    CReemplazo::Ruta destino;
    bool habia;           ///< a file stood there before
    std::uint64_t numero; ///< of the file that takes its place
};

struct CDiarioLeido {
    std::vector<CReemplazo::Ruta> diarios;
    std::vector<CEntradaDiario> entradas;
};

/// The bytes of a diary.
/// \param diarios  paths of all diaries of the set, one in each folder
std::string EscribeDiario(const std::vector<CReemplazo::Ruta>& diarios,
                          const std::vector<CEntradaDiario>& entradas);

/// Reads the bytes of a diary. One that was cut short or damaged reads as empty.
CDiarioLeido LeeDiario(std::string_view bytes);
