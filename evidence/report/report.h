#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "evidence/report/findings/run_figures.h"
#include "evidence/report/reading/report_options.h"
#include "evidence/report/writing/output_file.h"

namespace informe {

struct CResultado {
    std::string resumen = {};               ///< for the terminal
    std::optional<CCifras> cifras = {};     ///< none where something couldn't be read
    bool hayPerdidas = false;               ///< the same as of CContenido
    std::vector<std::string> quejas = {};   ///< what couldn't be read or written, or is another's
    std::shared_ptr<const void> leido = {}; ///< what it was made of (see CBalance)
};

/// Writes the report of a log, and what else the options ask for. Raises no CFileException: what
/// couldn't be read or written is one of the complaints, and ends the work.
/// \param registro  path of the log, or `kEstandar`
/// \param firma     what the page tells of itself
CResultado HazInforme(const CString& registro, const COpciones& opciones, const CFirma& firma);

/// Sums up the results of a batch: reads each of its jobs, writes its report beside the results
/// unless it is told not to, and a page and a sheet of all. One job's files are in memory at a
/// time. Raises no CFileException: what couldn't be read or written is one of the complaints.
/// \param firma  what the pages tell of themselves
CResultado HazResumen(const COpciones& opciones, const CFirma& firma);

} // namespace informe
