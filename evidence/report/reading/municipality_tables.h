#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "evidence/report/reading/people.h"
#include "evidence/report/reading/record_key.h"
#include "evidence/report/reading/run_files.h"
#include "evidence/report/reading/surfaces.h"

namespace informe {

/// What the rows of the six tables come to by the rules of the way back.
struct CTablasLeidas {
    struct CClase {
        bool hay = false;
        std::int64_t filas = 0;
        std::int64_t deOtro = 0;      ///< of another municipality
        std::int64_t incompletas = 0; ///< lack what they need: lost without a message
        std::int64_t unidas = 0;      ///< joined one that was there, without a message
        std::int64_t conMensaje = 0;  ///< should have been dropped with one
        std::vector<CClave> quedan;
    };

    CClase titulares;
    CClase parcelas;
    CClase modulos;
    CClase subparcelas;
    CClase parajes;
    CClase cotitulares;
    std::int64_t cotitularesSinParcela = 0; ///< of those with a message
    std::int64_t cotitularesSinTitular = 0;
};

/// Reads the tables' rows of a municipality. A table that can't be opened leaves `hay` false; a
/// read that fails raises CFileException.
/// \param personas     is told of all holders
/// \param superficies  gets those of the parcels
CTablasLeidas LeeTablas(const std::array<CString, kTablas>& tablas, short mun, CPersonas& personas,
                        CSuperficies& superficies);

} // namespace informe
