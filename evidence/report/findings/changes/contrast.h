#pragma once

#include <string>

#include "evidence/report/findings/changes/changes.h"
#include "evidence/report/findings/run_evidence.h"
#include "evidence/report/reading/states/read_state.h"

namespace informe {

/// Two states of a municipality, and what changed between them.
struct CContraste {
    CContraste(CEstadoLeido viejo, CEstadoLeido nuevo, Municipios cuales = Municipios::DelNuevo);
    CContraste(const CContraste&) = delete; // the changes point into the states
    CContraste& operator=(const CContraste&) = delete;

    CEstadoLeido antes;
    CEstadoLeido ahora;
    CCambios cambios;
    std::string reparo; ///< why they can't be compared, a sentence; empty for nothing
};

/// The state that a run left: the tables of a way out, the file R of a way back.
CEstadoLeido EstadoDeProceso(const CProceso& proceso);

} // namespace informe
