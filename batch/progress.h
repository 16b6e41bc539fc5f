#pragma once

#include <chrono>
#include <cstddef>

#include "batch/job_states.h"

namespace lote {

/// Tells on the standard error how far the batch is: at a terminal in a line that changes,
/// elsewhere in a line a minute.
class CAvance {
public:
    explicit CAvance(int trabajos);
    CAvance(const CAvance&) = delete;
    CAvance& operator=(const CAvance&) = delete;
    ~CAvance(); ///< the line is gone

    void Cuenta(const CAcabados& acabados);

private:
    using Reloj = std::chrono::steady_clock;

    int m_trabajos;
    bool m_esTerminal;
    Reloj::time_point m_principio = Reloj::now();
    Reloj::time_point m_dicho = m_principio;
    std::size_t m_ancho = 0; // of the line that stands there
};

} // namespace lote
