#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/safe_replacement.h"

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

std::string EscribeDiario(const std::vector<CReemplazo::Ruta>& diarios,
                          const std::vector<CEntradaDiario>& entradas);

/// One that was cut short reads as empty.
CDiarioLeido LeeDiario(std::string_view bytes);
