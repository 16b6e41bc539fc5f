#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "evidence/drawn_polygon.h"
#include "evidence/report/writing/markup.h"

// The sheet that a map is drawn on, and its signs. Lengths are decimetres: a drawing's hundredths
// would make the page longer by half, and nobody sees them.

namespace informe {

struct CSitioHoja {
    long long x; ///< from the left
    long long y; ///< from the top
};

/// A sheet as large as what is drawn on it.
class CHojaSvg {
public:
    using CAnillo = std::vector<vexageo::CPunto<int>>;

    /// For the outlines of a polygon.
    explicit CHojaSvg(const CPoligonoDibujado& poligono);
    /// For rings that are seen from afar: steps that nobody would see are left out.
    explicit CHojaSvg(const std::vector<CAnillo>& anillos);

    bool Hay() const { return m_maximas.Hay; } ///< there is something to be drawn
    CSitioHoja Sitio(const vexageo::CPunto<int>& punto) const;
    /// The place itself, or the one at the edge nearest to it.
    CSitioHoja Dentro(const CSitioHoja& sitio) const
    {
        return {std::clamp(sitio.x, 0LL, Ancho()), std::clamp(sitio.y, 0LL, Alto())};
    }
    /// Size of a letter that can be read on a page, which margins and signs go by.
    long long Letra() const { return std::max(std::max(Ancho(), Alto()) / 70, 1LL); }
    /// The way of an outline and its islands, as a path has it.
    std::string Camino(const CRecintoDibujado& recinto) const;
    std::string Camino(const CAnillo& anillo) const;
    /// How wide a ring is, from left to right.
    static long long Ancho(const CAnillo& anillo);
    /// A whole map: what `dentro` draws, a bar of a round length, and where north is.
    /// \param nombre  for who can't see it
    /// \param estilo  what it has beside the size of its letters
    void PonMapa(CMarcas& svg, const char* clase, const std::string& nombre,
                 const std::string& estilo, const std::function<void()>& dentro) const;

private:
    void PonEscala(CMarcas& svg) const;
    long long Ancho() const { return Sitio(m_maximas.Maximo).x + 1; }
    long long Alto() const { return Sitio(m_maximas.Minimo).y + 1; }

    vexageo::CMaximas<int> m_maximas;
    long long m_paso = 1; // the least step that is drawn
};

/// A cross around a place.
std::string CaminoCruz(const CSitioHoja& sitio, long long brazo);

/// The patterns of errors and warnings, stripes and dots that are apart by `paso`. Each map has its
/// own, as they grow with it; its style names them.
void PonTramas(CMarcas& svg, int serie, double paso);
std::string EstiloTramas(int serie);

} // namespace informe
