#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "evidence/report/findings/drawn_balance.h"
#include "evidence/report/findings/matter_cost.h"
#include "evidence/report/findings/message_index.h"
#include "evidence/report/findings/run_evidence.h"

// Messages gathered by what lies behind them: one parcel that is dropped gives a message for each
// of its subparcels, and a drawing that is missing one for each of its parcels. What costs surface
// and gives no message is a matter as well.

namespace informe {

struct CAsunto {
    std::string titulo = {};
    CCoste coste = {};
    std::int64_t mensajes = 0;
    std::int64_t errores = 0;
    std::vector<std::pair<const CMensaje*, std::int64_t>> cuentas = {}; ///< the cause's in front
    std::vector<std::uint32_t> primeros = {}; ///< positions of its first messages
    int polig = CAviso::kNada; ///< where it lies, if it lies in one parcel or polygon
    int parcela = CAviso::kNada;
    /// The parcels that lose surface by it, and how many square metres: those that lose most first.
    std::vector<std::pair<CNumerosParcela, std::int64_t>> parcelas = {};
};

struct CAsuntos {
    std::vector<CAsunto> mayores; ///< the first ones: by cost, then by messages
    std::int64_t cuantos = 0;     ///< all
};

/// Gathers the messages of a log by what lies behind them; of a way on to Infograf, which has none,
/// files that are missing, and outlines that nothing holds, by polygon. Tells the largest ones, as
/// many as a page has room for.
/// \param lugares  this and the next one null where there are no drawings
CAsuntos ReuneAsuntos(const CProceso& proceso, const CLugaresDeAvisos* lugares,
                      const CBalanceDibujo* dibujo);

} // namespace informe
