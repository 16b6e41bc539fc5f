#pragma once

#include "evidence/report/findings/balance.h"
#include "evidence/report/reading/log_messages.h"
#include "evidence/report/reading/people.h"
#include "evidence/report/reading/run_files.h"
#include "evidence/report/reading/surfaces.h"

namespace informe {

/// The balance of a way back: rows of the tables against records of the files R and M and messages.
/// A read that fails raises CFileException.
/// \param personas     is told of all holders of the tables
/// \param superficies  gets those of all parcels
CBalance BalanceVuelta(const CFicheros& ficheros, const CRegistroLeido& registro,
                       CPersonas& personas, CSuperficies& superficies);

} // namespace informe
