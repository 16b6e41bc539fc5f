#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "vexa_libs/point.h"

// Extents of rings: boxes, upright or turned. All are exact in that a box holds each point of what
// it is made for.

namespace vexageo {

/// A point along the two axes of a frame.
using CMedidas = std::array<int, 2>;

/// The axes along which a box lies: the upright ones, or those turned by an eighth of a circle at
/// most to either side. A turned one counts in steps of up to the square root of 2, so that its
/// measures fit where coordinates do.
class CMarco {
public:
    CMarco() = default; ///< upright
    /// \param angulo  in radians
    static CMarco Girado(double angulo);
    static CMarco Diagonal() { return {kUno / 2, kUno / 2}; }

    bool Recto() const { return m_seno == 0; }
    /// Where a point lies, rounded down to a step.
    CMedidas Mide(const CPunto<int>& punto) const
    {
        const auto mide = [](std::int64_t a, std::int64_t b) {
            return static_cast<int>((a + b) >> kBits);
        };
        const std::int64_t coseno = m_coseno;
        const std::int64_t seno = m_seno;
        return {mide(coseno * punto.X, seno * punto.Y), mide(coseno * punto.Y, -seno * punto.X)};
    }
    /// Of a square as wide as a step, in squared units of the drawing.
    double AreaDePaso() const;
    /// The turn from another frame to this one, each in its steps: its cosine and sine, stretched.
    std::array<double, 2> Desde(const CMarco& otro) const;

    friend bool operator==(const CMarco&, const CMarco&) = default;

private:
    static constexpr int kBits = 30;
    static constexpr int kUno = 1 << kBits;

    CMarco(int coseno, int seno) : m_coseno(coseno), m_seno(seno) {}

    double Norma() const;

    // In parts of `kUno`. Without their signs they come to that together at most, which holds the
    // measures in 32 bits.
    int m_coseno = kUno;
    int m_seno = 0;
};

/// A box along the axes of a frame, its sides included.
struct CCaja {
    CMedidas minimo, maximo;

    /// \param puntos  one at least
    static CCaja De(const std::vector<CPunto<int>>& puntos, const CMarco& marco);
    /// What holds all of some boxes of one frame, one at least.
    static CCaja De(const std::vector<CCaja>& cajas);

    bool Tiene(const CMedidas& medidas) const
    {
        return minimo[0] <= medidas[0] && medidas[0] <= maximo[0] && minimo[1] <= medidas[1] &&
               medidas[1] <= maximo[1];
    }
    void Junta(const CCaja& otra)
    {
        minimo = {std::min(minimo[0], otra.minimo[0]), std::min(minimo[1], otra.minimo[1])};
        maximo = {std::max(maximo[0], otra.maximo[0]), std::max(maximo[1], otra.maximo[1])};
    }
    /// Leaves what both hold, which is something.
    void Recorta(const CCaja& otra)
    {
        minimo = {std::max(minimo[0], otra.minimo[0]), std::max(minimo[1], otra.minimo[1])};
        maximo = {std::min(maximo[0], otra.maximo[0]), std::min(maximo[1], otra.maximo[1])};
    }
    /// In squared steps of the frame.
    double Area() const
    {
        return (static_cast<double>(maximo[0]) - minimo[0] + 1) *
               (static_cast<double>(maximo[1]) - minimo[1] + 1);
    }
    /// A box of another frame that holds all that this one does.
    CCaja Gira(const CMarco& de, const CMarco& a) const;
};

/// Which way edges run. Those at right angles run the same way, and the longest ones decide.
class CRumbo {
public:
    /// \param puntos  of a ring, one at least; of many a few chords are taken
    void Toma(const std::vector<CPunto<int>>& puntos);
    void Junta(const CRumbo& otro);
    /// The frame along most of them; none where they run upright, or all ways.
    std::optional<CMarco> Marco() const;

private:
    // The sum of the fourth powers of the edges, taken as complex numbers, which makes one
    // direction of four at right angles; and the sum that they would have if all ran the same way.
    double m_x = 0;
    double m_y = 0;
    double m_total = 0;
};

} // namespace vexageo
