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
    /// A ring, or all that stand below a node: the extent, and the best preference and index there.
    struct CCaja {
        int minX, minY, maxX, maxY;
        double preferencia;
        int indice;
        int consulta; ///< of a ring, in m_consultas

        bool Abarca(int x, int y) const;
        void Junta(const CCaja& otra);
    };
    /// A box that is still to be looked into.
    struct CPendiente {
        double preferencia;
        int indice;
        int nivel;
        std::size_t posicion;

        bool operator>(const CPendiente& otro) const;
    };

    void Construye() const;
    static void OrdenaPorSitio(std::vector<CCaja>& cajas);

    std::vector<CAnilloConsultado> m_consultas;
    // Made ready at the first look-up after rings were added: the rings by their place, then the
    // nodes above them, level by level up to the root. A look-up keeps its memory for the next.
    mutable std::vector<std::vector<CCaja>> m_niveles = std::vector<std::vector<CCaja>>(1);
    mutable std::vector<CPendiente> m_pendientes;
};

} // namespace vexageo
