#pragma once

#include <functional>
#include <vector>

#include "vexa_libs/extent_tree.h"
#include "vexa_libs/ring.h"
#include "vexa_libs/ring_store.h"

namespace vexageo {

/// Which of many rings hold a point: a tree over their extents, and an exact test of the few whose
/// extents hold it. The ring with the least `preferencia` is asked first, of equal ones that with
/// the least `indice`, so the first one that the exact test accepts is the answer. A look-up
/// touches a few extents for rings side by side and for rings within one another alike. The first
/// one after rings were added builds the tree. One that was moved from has no rings. Not for
/// several threads at once.
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
    /// \param indice  what a look-up gives for it, 0 or more
    void Añade(const std::vector<CPunto<int>>& anillo, double preferencia, int indice);
    void Añade(std::vector<CPunto<int>>&& anillo, double preferencia, int indice) = delete;

    /// Index of the preferred ring that is accepted for the point, -1 if none is.
    /// \param acepta  is told how the point lies to the ring with an index, and decides; the point
    ///                may lie outside
    int Busca(const CPunto<int>& punto,
              const std::function<bool(int indice, Lugar lugar)>& acepta) const;
    /// Index of the preferred ring that holds the point, its boundary included; -1 if none does.
    int Busca(const CPunto<int>& punto) const
    {
        return Busca(punto, [](int, Lugar lugar) { return lugar != Lugar::Fuera; });
    }

private:
    CAlmacenAnillos m_anillos;
    mutable CArbolCajas m_arbol; // made at the first look-up after rings were added
};

} // namespace vexageo
