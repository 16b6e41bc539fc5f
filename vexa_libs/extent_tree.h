#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "vexa_libs/extent.h"
#include "vexa_libs/extent_rows.h"
#include "vexa_libs/ring_store.h"

namespace vexageo {

/// A tree over the extents of rings: which rings may hold a point, the best first. The extents are
/// upright boxes. Where many of those in a node hold the same points, as those of slanted strips or
/// of rings within one another do, turned boxes stand beside them, along the edges of what they are
/// of. So a look-up touches a few nodes, whatever way the rings run. Not for several threads at
/// once.
class CArbolCajas {
public:
    /// Where to look: at a ring, or at a node for the best ring below it.
    struct CVia {
        double preferencia; ///< the least is the best, of equal ones that with the least `indice`
        int indice;
        unsigned posicion; ///< of the ring in its store; those of nodes go on behind the rings

        bool operator<(const CVia& otra) const
        {
            return preferencia < otra.preferencia ||
                   (preferencia == otra.preferencia && indice < otra.indice);
        }
    };

    CArbolCajas() = default;
    /// The tree keeps nothing of the rings but their extents.
    explicit CArbolCajas(const CAlmacenAnillos& anillos);

    bool Vacio() const { return m_nodos.empty(); }
    /// Gives the rings whose extents hold the point, the best first, until one is accepted.
    void Recorre(const CPunto<int>& punto, const std::function<bool(const CVia&)>& acepta) const;

private:
    static constexpr std::size_t kPorNodo = CCajasJuntas::kCabida;

    struct CGiro {
        CMarco marco;
        CCajasJuntas cajas;

        CGiro(const CMarco& deQue, const std::vector<CCaja>& lasCajas)
            : marco(deQue), cajas(lasCajas)
        {
        }
    };
    struct CNodo {
        CCajasJuntas cajas;
        std::unique_ptr<const CGiro> giro; ///< if there is one, the best box stands first
        std::array<CVia, kPorNodo> vias{};
    };
    /// Boxes of a node that are still to be looked at, and the way into the best of them.
    struct CPendiente {
        const CNodo* nodo;
        const CVia* mejor;
        CCajasJuntas::CSeleccion cajas;
    };
    struct CSitio;
    struct CRama;
    class CDeAnillos;
    class CDeRamas;
    class CBusqueda;

    static constexpr std::size_t Nodos(std::size_t cajas) { return (cajas - 1) / kPorNodo + 1; }
    template <class F>
    std::vector<CRama> PonNivel(const F& fuente);
    template <class F>
    CRama PonNodo(const F& fuente, const std::vector<CCaja>& rectas,
                  std::span<const CSitio> sitios);
    template <class F>
    void PonGiro(const F& fuente, std::vector<CCaja>& cajas, CRama& rama);

    std::size_t m_anillos = 0;
    std::vector<CNodo> m_nodos;                   // level by level, the root last
    mutable std::vector<CPendiente> m_pendientes; // a look-up keeps its memory for the next
};

} // namespace vexageo
