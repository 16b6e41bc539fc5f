#pragma once

#include <cstdint>
#include <vector>

#include "evidence/record_key.h"

namespace informe {

/// What stands in the file of a way on to Infograf.
struct CEscritosInfograf {
    struct CRegistro {
        CClaveRegistro clave;
        double area; ///< square metres
    };

    bool hay = false;
    std::int64_t ajenos = 0; ///< lines that are no record
    // In the order of the file.
    std::vector<CRegistro> parcelas;
    std::vector<CRegistro> poligonos;
    std::vector<CRegistro> subparcelas;
};

/// Reads the file; one that isn't there leaves all empty. Raises CFileException where a read fails.
CEscritosInfograf LeeInfograf(const CString& csp);

} // namespace informe
