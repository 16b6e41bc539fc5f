#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "evidence/report/findings/drawn_balance.h"
#include "evidence/report/findings/message_index.h"
#include "evidence/report/reading/people.h"
#include "evidence/report/reading/run_files.h"

// Messages gathered by what lies behind them: one parcel that is dropped gives a message for each
// of its subparcels, and a drawing that is missing one for each of its parcels.

namespace informe {

struct CAsunto {
    std::string titulo;
    std::int64_t mensajes = 0;
    std::int64_t errores = 0;
    std::vector<std::pair<const CMensaje*, std::int64_t>> cuentas; ///< the cause's in front
    std::vector<std::uint32_t> primeros; ///< positions of its first messages
    int polig = CAviso::kNada;           ///< where it lies, if it lies in one parcel or polygon
    int parcela = CAviso::kNada;
};

struct CAsuntos {
    std::vector<CAsunto> mayores; ///< the first ones, those with the most messages in front
    std::int64_t cuantos = 0;     ///< all
};

struct CDatosAsuntos {
    const CRegistroLeido& registro;
    const CPersonas& personas;
    Sentido sentido = Sentido::Ninguno;
    const CLugaresDeAvisos* lugares = nullptr; ///< null where there are no drawings
    const std::vector<CPoligonoRoto>* rotos = nullptr;
};

/// Gathers the messages of a log by what lies behind them. Tells the largest ones, as many as a
/// page has room for.
CAsuntos ReuneAsuntos(const CDatosAsuntos& datos);

} // namespace informe
