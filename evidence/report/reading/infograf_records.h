#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "evidence/record_key.h"

namespace informe {

/// The kinds of records.
enum ClaseInfograf { kDeParcela, kDePoligono, kDeSubparcela, kClasesInfograf };

/// What stands in the file of a way on to Infograf.
struct CEscritosInfograf {
    struct CRegistro {
        CClaveRegistro clave;
        double area; ///< square metres
    };

    bool hay = false;
    std::int64_t ajenos = 0;                                    ///< lines that are no record
    std::array<std::vector<CRegistro>, kClasesInfograf> clases; ///< in the order of the file
};

/// Reads the file; one that isn't there leaves all empty. Raises CFileException where a read fails.
CEscritosInfograf LeeInfograf(const CString& csp);

} // namespace informe
