#pragma once

#include <map>
#include <optional>
#include <utility>

#include "report/balance.h"
#include "report/log_messages.h"
#include "report/people.h"
#include "report/run_files.h"

namespace informe {

/// What the way back says of a parcel's surface, on either side of it.
struct CSuperficie {
    std::optional<int> tabla;
    std::optional<int> escrita; ///< in the file R
    bool concentrada = false;
};

/// By polygon and parcel.
using CSuperficies = std::map<std::pair<int, int>, CSuperficie>;

/// The balance of a way back: rows of the tables against records of the files R and M and messages.
/// A read that fails raises CFileException.
/// \param personas     is told of all holders of the tables
/// \param superficies  gets those of all parcels
CBalance BalanceVuelta(const CFicheros& ficheros, const CRegistroLeido& registro,
                       CPersonas& personas, CSuperficies& superficies);

} // namespace informe
