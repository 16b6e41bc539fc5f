#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "vexa_libs/ring.h"

namespace vexageo {

/// The rings of an index, in blocks that are all full but the last one, so that they grow without a
/// copy of all. One that was moved from has none.
class CAlmacenAnillos {
public:
    struct CAnillo {
        CAnilloConsultado consulta;
        double preferencia; ///< the ring with the least comes first, of equal ones the least index
        int indice;
    };

    void Añade(CAnillo&& anillo)
    {
        if (m_bloques.empty() || m_bloques.back().size() == kPorBloque)
            m_bloques.emplace_back();
        m_bloques.back().push_back(std::move(anillo));
    }
    // A count beside the blocks would stay behind when they are moved.
    std::size_t Cantidad() const
    {
        return m_bloques.empty() ? 0
                                 : (m_bloques.size() - 1) * kPorBloque + m_bloques.back().size();
    }
    const CAnillo& operator[](std::size_t i) const
    {
        return m_bloques[i / kPorBloque][i % kPorBloque];
    }

private:
    static constexpr std::size_t kPorBloque = 64;

    std::vector<std::vector<CAnillo>> m_bloques;
};

} // namespace vexageo
