#pragma once

#include <functional>
#include <vector>

#include "vexa_libs/ring.h"

namespace vexageo {

/// Which of many rings hold a point: a tree over their extents. The rings are asked in a fixed
/// order of preference, so the first one that an exact test accepts is the answer. A look-up
/// touches a few extents for rings side by side and for rings within one another alike.
class CIndiceAnillos {
public:
    /// A ring's extent, with what decides among several: the smaller preference, then the smaller
    /// index.
    struct CAnillo {
        int minX, minY, maxX, maxY;
        double preferencia;
        int indice;
        std::size_t consulta; ///< in m_consultas
    };

    CIndiceAnillos() = default;
    CIndiceAnillos(const CIndiceAnillos&) = delete; // a copy of the rings stands elsewhere
    CIndiceAnillos(CIndiceAnillos&&) noexcept = default;
    CIndiceAnillos& operator=(const CIndiceAnillos&) = delete;
    CIndiceAnillos& operator=(CIndiceAnillos&&) noexcept = default;
    ~CIndiceAnillos() = default;

    /// Adds a ring, which must stay as it is, and where it is, as long as questions are asked; one
    /// without points holds nothing and is left out.
    void Añade(const std::vector<CPunto<int>>& anillo, double preferencia, int indice);
    void Añade(std::vector<CPunto<int>>&& anillo, double preferencia, int indice) = delete;

    /// The preferred ring that is accepted for the point, -1 if none is.
    /// \param acepta  is told how the point lies to the ring with an index, and decides
    int Busca(const CPunto<int>& punto,
              const std::function<bool(int indice, Lugar lugar)>& acepta) const;
    /// The preferred ring that holds the point, its boundary included.
    int Busca(const CPunto<int>& punto) const
    {
        return Busca(punto, [](int, Lugar lugar) { return lugar != Lugar::Fuera; });
    }

private:
    struct CNodo {
        CAnillo resumen;          // extent of all below it; the best preference and index there
        std::size_t desde, hasta; // in the level below; for a leaf, in m_anillos
    };

    void Construye() const;

    std::vector<CAnilloConsultado> m_consultas;
    // Made ready at the first look-up after rings were added.
    mutable std::vector<CAnillo> m_anillos;
    mutable std::vector<std::vector<CNodo>> m_niveles; // leaves' nodes first, the root's level last
    mutable bool m_listo = false;
};

} // namespace vexageo
