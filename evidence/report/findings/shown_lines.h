#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "evidence/report/reading/log_messages.h"

namespace informe {

/// The lines of the log that a page shows, in order: all of a short log, of a longer one the first
/// of each number.
class CLineasMostradas {
public:
    struct CLinea {
        std::uint32_t posicion = 0; ///< among the log's lines, from 0
        std::string texto;
    };

    CLineasMostradas() = default;
    /// Reads their words. Raises CFileException where the log can't be read once more.
    explicit CLineasMostradas(const CRegistroLeido& registro);

    const std::vector<CLinea>& Lineas() const { return m_lineas; }
    bool Contiene(std::uint32_t posicion) const { return m_posiciones.contains(posicion); }

private:
    std::set<std::uint32_t> m_posiciones;
    std::vector<CLinea> m_lineas;
};

} // namespace informe
