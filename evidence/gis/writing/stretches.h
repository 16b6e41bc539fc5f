#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "evidence/gis/writing/noding.h"
#include "vexa_libs/drawing_writer.h"

/// The lines of a drawing: outlines cut where more than two of their edges meet, so that what
/// neighbours share is one line, which each of them names in its direction.
class CTramos {
public:
    /// \param anillos  noded, all those of the drawing
    explicit CTramos(const std::vector<CAnillo>& anillos);

    /// Gives the positions in the drawing of the lines that make one of the rings, in its order,
    /// negative for those that run the other way. Adds the lines that the drawing hasn't got yet.
    /// Empty where it has no room left.
    std::vector<int> Pon(const CAnillo& anillo, vexageo::CEscritorDibujo& dibujo);

private:
    using CClaveArista = std::pair<std::int64_t, std::int64_t>; // two points
    struct CDispersa {
        std::size_t operator()(const CClaveArista& clave) const;
    };

    static std::int64_t Clave(const vexageo::CPunto<int>& punto);
    /// Tells whether lines end at a point: other than two edges meet there.
    bool EsNudo(const vexageo::CPunto<int>& punto) const;
    int PonLinea(CAnillo linea, vexageo::CEscritorDibujo& dibujo);

    std::unordered_map<std::int64_t, int> m_aristas; // that end at a point
    std::unordered_map<CClaveArista, int, CDispersa>
        m_lineas; // by their first two points, either way
};
