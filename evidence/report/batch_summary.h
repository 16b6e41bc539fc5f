#pragma once

#include "evidence/report/report.h"

namespace informe {

/// Sums up the results of a batch: reads each of its jobs, writes its report beside the results
/// unless it is told not to, and a page and a sheet of all. One job's files are in memory at a
/// time. Raises no CFileException: what couldn't be read or written is one of the complaints.
/// \param version  of the program, for the pages
/// \param hecho    the time that they tell
CResultado HazResumen(const COpciones& opciones, const std::string& version, std::time_t hecho);

} // namespace informe
