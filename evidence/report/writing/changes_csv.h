#pragma once

#include "evidence/report/findings/changes/contrast.h"
#include "evidence/report/writing/output_file.h"

namespace informe {

/// Writes all changes as a sheet, a row for each thing that differs: UTF-8 with its mark,
/// semicolons, CR LF. Raises CFileException.
void EscribeCambiosCsv(const CEscribe& escribe, const CContraste& contraste);

} // namespace informe
