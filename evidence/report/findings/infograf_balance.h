#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "evidence/report/findings/balance.h"
#include "evidence/report/reading/run_files.h"
#include "evidence/report/reading/written_records.h"
#include "vexa_libs/point.h"

namespace informe {

/// What the way on to Infograf made of the drawings, beside its balance.
struct CEvidenciaInfograf {
    struct CClase {
        std::int64_t recintos = 0;
        std::int64_t huerfanos = 0; ///< of those
        std::int64_t registros = 0;
        double dibujada = 0; ///< square metres of the outlines
        double esperada = 0; ///< and of those that get a record
        double escrita = 0;  ///< and of the records
    };
    /// An outline that gets no record, as none holds it that should.
    struct CSinPadre {
        CString entrada;
        std::string que; ///< "parcela «12»"
        std::string porque;
        vexageo::CPunto<int> sitio;
    };
    /// Files that the run asks for and that aren't there, or aren't whole.
    struct CFaltan {
        CString entrada; ///< empty for the sheets
        std::string que; ///< "falta su .PAR"
    };

    std::array<CClase, kClasesInfograf> clases;
    std::vector<CSinPadre> sinPadre;
    std::vector<CFaltan> faltan;
    bool acabaAntes = false; ///< the records end before those of the drawings do
};

/// Outlines of the drawings against the records of the file CSP. Reads the drawings once more as
/// the run does, and raises CFileException where one can't be read.
CBalance BalanceInfograf(const CFicheros& ficheros, CEvidenciaInfograf& evidencia);

} // namespace informe
