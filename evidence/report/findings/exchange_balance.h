#pragma once

#include "evidence/report/findings/balance.h"
#include "evidence/report/reading/log_messages.h"
#include "evidence/report/reading/people.h"
#include "evidence/report/reading/run_files.h"

namespace informe {

/// The balance of a way out: lines of the input against rows of the six tables and messages. An
/// input that can't be opened leaves it empty but for a note. A read that fails raises
/// CFileException.
/// \param personas  is told of all holders of the input
CBalance BalanceIda(const CFicheros& ficheros, const CRegistroLeido& registro, CPersonas& personas);

} // namespace informe
