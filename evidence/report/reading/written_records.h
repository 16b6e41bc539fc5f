#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "evidence/record_key.h"

namespace informe {

// What stands in the files that a run on drawings writes. One that isn't there leaves its part
// empty; a read that fails raises CFileException.

/// The files R and M of a way back.
struct CEscritosCatastro {
    struct CParcelaEscrita {
        CClaveRegistro clave;
        int superficie;
        bool concentrada;
    };

    bool hayR = false;
    bool hayM = false;
    std::int64_t ajenos = 0; ///< lines that are no record of the written layout
    std::vector<CClaveRegistro> titulares;
    std::vector<CParcelaEscrita> parcelas;
    std::vector<CClaveRegistro> cotitulares; ///< one for each group of a CT record, by parcel
    std::vector<CClaveRegistro> subparcelas;
    std::vector<CClaveRegistro> parajes;
    std::vector<CClaveRegistro> modulos; ///< by class and intensity
};

CEscritosCatastro LeeEscritos(const CString& ficheroR, const CString& ficheroM);

/// The kinds of records of Infograf.
enum ClaseInfograf { kDeParcela, kDePoligono, kDeSubparcela, kClasesInfograf };

/// The file of a way on to Infograf.
struct CEscritosInfograf {
    struct CRegistro {
        CClaveRegistro clave;
        double area; ///< square metres
    };

    bool hay = false;
    std::int64_t ajenos = 0;                                    ///< lines that are no record
    std::array<std::vector<CRegistro>, kClasesInfograf> clases; ///< in the order of the file
};

CEscritosInfograf LeeInfograf(const CString& csp);

} // namespace informe
