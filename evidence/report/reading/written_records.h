#pragma once

#include <cstdint>
#include <vector>

#include "evidence/record_key.h"

namespace informe {

/// What stands in the files R and M of a way back.
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

/// Reads both; one that isn't there leaves its part empty. A read that fails raises CFileException.
CEscritosCatastro LeeEscritos(const CString& ficheroR, const CString& ficheroM);

} // namespace informe
