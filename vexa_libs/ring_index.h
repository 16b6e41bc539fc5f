#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <vector>

#include "vexa_libs/ring.h"

namespace vexageo {

/// Which of many rings hold a point: a tree over their extents, which are octagons, as a slanted
/// ring fills little of an upright rectangle. The ring with the least `preferencia` is asked first,
/// of equal ones that with the least `indice`, so the first one that an exact test accepts is the
/// answer. A look-up touches a few extents for rings side by side and for rings within one another
/// alike. The first one after rings were added builds the tree. One that was moved from has no
/// rings. Not for several threads at once.
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
    static constexpr std::size_t kPorNodo = 16;
    static constexpr std::size_t kPorBloque = 64;
    static constexpr std::size_t kMedidas = 4;

    /// A point by each measure: x, y, and half of how far along either diagonal.
    using CMedidas = std::array<int, kMedidas>;
    static CMedidas Mide(const CPunto<int>& punto);

    struct CAnillo {
        CAnilloConsultado consulta;
        double preferencia;
        int indice;
    };
    /// Where to look: at a ring, or at a node for the best ring below it.
    struct CVia {
        double preferencia;
        int indice;
        unsigned posicion; ///< of the ring, or in the level of the node

        bool operator<(const CVia& otra) const;
    };
    /// Where a box lies: its centre, and how wide it is.
    struct CSitio {
        int x, y;
        unsigned ancho;
        unsigned posicion; ///< of what is in it

        bool PorY(const CSitio& otro) const;
        bool PorX(const CSitio& otro) const;
    };
    /// The extent, by each measure, of what is found that way.
    struct CCaja {
        CMedidas minimo, maximo;
        CVia via;

        CSitio Sitio() const;
        void Junta(const CCaja& otra);
    };
    /// Boxes near one another, the numbers of all side by side so that they are compared at once.
    struct CNodo {
        using CFila = std::array<int, kPorNodo>;
        std::array<CFila, kMedidas> minimo, maximo;
        std::array<CVia, kPorNodo> vias;

        CNodo();
        void Pon(std::size_t i, const CCaja& caja);
    };
    using CNivel = std::vector<CNodo>;
    /// What is still to be looked at: a ring, or a node of the level below.
    struct CPendiente {
        CVia via;
        std::size_t nivel;
    };

    const CAnillo& Anillo(std::size_t i) const { return m_bloques[i / kPorBloque][i % kPorBloque]; }
    CCaja Encierra(std::size_t anillo) const;
    static void Ordena(std::vector<CSitio>& sitios);
    template <class F>
    static std::vector<CCaja> Agrupa(std::vector<CNivel>& niveles, std::size_t cuantas, F caja);
    void Construye() const;
    void Mira(std::size_t nivel, std::size_t posicion, const CMedidas& punto) const;

    std::size_t Anillos() const
    {
        return m_bloques.empty() ? 0
                                 : (m_bloques.size() - 1) * kPorBloque + m_bloques.back().size();
    }

    // Of rings, all full but the last one, so that they grow without a copy of all. What tells
    // whether there are any: a count beside them would stay behind when they are moved.
    std::vector<std::vector<CAnillo>> m_bloques;
    // Made ready at the first look-up after rings were added: the nodes of rings by their place,
    // then those of nodes, level by level up to the root. A look-up keeps its memory for the next.
    mutable std::vector<CNivel> m_niveles;
    mutable std::vector<CPendiente> m_pendientes;
};

} // namespace vexageo
