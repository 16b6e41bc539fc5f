#pragma once

#include "evidence/report/findings/balance.h"
#include "evidence/report/reading/log_messages.h"
#include "evidence/report/reading/run_files.h"
#include "evidence/report/reading/surfaces.h"

// The balances of the two ways. A file that can't be read raises CFileException.

namespace informe {

/// Lines of the input against rows of the six tables and messages. An input that isn't there leaves
/// it empty but for a note.
/// \param personas  is told of all holders of the input
CBalance BalanceIda(const CFicheros& ficheros, const CRegistroLeido& registro, CPersonas& personas);

/// Rows of the tables against records of the files R and M and messages.
/// \param personas     is told of all holders of the tables
/// \param superficies  gets those of all parcels
CBalance BalanceVuelta(const CFicheros& ficheros, const CRegistroLeido& registro,
                       CPersonas& personas, CSuperficies& superficies);

} // namespace informe
