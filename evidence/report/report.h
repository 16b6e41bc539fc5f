#pragma once

#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "evidence/report/findings/run_figures.h"
#include "evidence/report/reading/report_options.h"

namespace informe {

struct CResultado {
    std::string resumen;               ///< for the terminal
    std::optional<CCifras> cifras;     ///< none where something couldn't be read
    bool hayPerdidas = false;          ///< the same as of CContenido
    std::vector<std::string> quejas;   ///< what couldn't be read or written, a sentence each
    std::shared_ptr<const void> leido; ///< what it was made of (see CBalance)
};

/// Writes the report of a log, and what else the options ask for. Raises no CFileException: what
/// couldn't be read or written is one of the complaints, and ends the work.
/// \param registro  path of the log, or `kEstandar`
/// \param version   of the program, for the page
/// \param hecho     the time that the page tells
CResultado HazInforme(const CString& registro, const COpciones& opciones,
                      const std::string& version, std::time_t hecho);

} // namespace informe
