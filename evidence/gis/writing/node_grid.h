#pragma once

#include <cstdint>
#include <vector>

#include "evidence/gis/geometry.h"

/// A node of an arrangement: the whole point in the middle of its cell.
struct CNudo {
    CFino punto; ///< whole units times kFinos
    /// Every way through its cell goes through it; else only those that run exactly through it.
    bool atrae = true;

    friend auto operator<=>(const CNudo&, const CNudo&) = default;
};

/// The nodes of an arrangement by their place, so that those near a way are found at once.
class CRejillaNudos {
public:
    explicit CRejillaNudos(const std::vector<CNudo>& nudos);

    /// Appends to `camino` the nodes that the way from a to b goes through, in its order: the whole
    /// points of its two ends first and last.
    void Camino(const CFino& a, const CFino& b, CAnilloFino& camino) const;

private:
    void Busca(const CFino& a, const CFino& b, std::vector<CNudo>& hallados) const;
    std::int64_t Celda(std::int64_t x, std::int64_t y) const;

    struct CEnCelda {
        std::int64_t celda;
        CNudo nudo;

        friend auto operator<=>(const CEnCelda&, const CEnCelda&) = default;
    };
    std::vector<CEnCelda> m_nudos; // by cell
    CFino m_origen;
    std::int64_t m_lado = 1;
    std::int64_t m_columnas = 1;
};

/// Tells whether the way from a to b goes through the cell of a node. Exact.
bool Atraviesa(const CFino& a, const CFino& b, const CFino& nudo);

/// Tells whether the way from a to b runs exactly through a point.
bool PasaPor(const CFino& a, const CFino& b, const CFino& punto);
