#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "evidence/gis/writing/noding.h"
#include "vexa_libs/drawing_writer.h"

/// The lines of a drawing: outlines cut where more than two of their edges meet, so that what
/// neighbours share is one line, which each of them names in its direction.
class CTramos {
public:
    /// Gives a point the height that it has in the drawing.
    using CAltura = std::function<vexageo::CPunto<int>(const vexageo::CPunto<int>&)>;

    /// \param anillos  noded, all those of the drawing
    /// \param altura   of the points of new lines
    CTramos(const std::vector<CAnillo>& anillos, CAltura altura);

    /// A line that the drawing has already, and that bounds an outline: a ring that runs along all
    /// of it names it.
    /// \param posicion  in the drawing, from 1
    void Conoce(int posicion, const CAnillo& puntos);

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
    /// The ring closed, from a point on where one of its lines begins.
    CAnillo Girado(const CAnillo& anillo) const;
    int PonLinea(CAnillo linea, vexageo::CEscritorDibujo& dibujo);
    /// The longest known line that runs along the ring from one of its points on; its position with
    /// the sign of its direction, and how many of the ring's edges it covers; 0 for none.
    std::pair<int, std::size_t> Conocida(const CAnillo& cerrado, std::size_t desde) const;

    struct CConocida {
        int posicion;
        CAnillo puntos; // in its direction
    };
    std::unordered_multimap<CClaveArista, CConocida, CDispersa> m_conocidas; // by their first edge
    CAltura m_altura;
    std::unordered_map<std::int64_t, int> m_aristas; // that end at a point
    std::unordered_map<CClaveArista, int, CDispersa>
        m_lineas; // by their first two points, either way
};
