#pragma once

#include <compare>
#include <cstdint>

#include "evidence/report/findings/drawn_balance.h"
#include "evidence/report/findings/run_evidence.h"

namespace informe {

/// What a matter costs: first the surface that doesn't come through, then records.
struct CCoste {
    std::int64_t metros = 0; ///< square metres
    std::int64_t registros = 0;

    CCoste& operator+=(const CCoste& otro)
    {
        metros += otro.metros;
        registros += otro.registros;
        return *this;
    }
    friend auto operator<=>(const CCoste& a, const CCoste& b) = default;
};

/// Tells what the messages of a run cost, each in turn: a surface that several of them speak of is
/// the first one's.
class CTarifa {
public:
    /// \param dibujo  null where there are no drawings; must outlive this object, as the run must
    CTarifa(const CProceso& proceso, const CBalanceDibujo* dibujo);

    CCoste De(const CAviso& aviso);

private:
    CCoste DeParcelaSinBase(const CNumerosParcela& parcela);
    CCoste DeParcelaSinGrafico(const CNumerosParcela& parcela) const;

    const CProceso& m_proceso;
    bool m_vuelta;
    bool m_hayEscritas;
    CPerdidas m_sinEscribir;
};

} // namespace informe
