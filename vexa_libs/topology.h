#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/cstring.h"
#include "vexa_libs/drawing.h"
#include "vexa_libs/ring_index.h"
#include "vexa_libs/topological_polygon.h"

namespace vexageo {

/// Joins the boundary of a polygon from its stretches in the drawing, a negative one turned round.
/// A boundary of more than a million points that is longer than twice what the drawing can hold is
/// out of date too: `falla` is called, and the line is left empty. Raises CFileException where a
/// read fails.
/// \param dibujo  the open .BIN
/// \param linea   takes the boundary behind what it has
/// \param falla   called for each stretch that can't be read, which is left out; false ends all
/// \return false where `falla` ended it
bool ConstruyeLinea(const CPoligonoTopologico& poligono, CFile* dibujo, CLinea<int>& linea,
                    const std::function<bool()>& falla);

/// Tells whether the rings of a drawing have more points in all, `puntos` and those of one more
/// ring, than honest ones can have: over four million, and over 16 times what its file can hold. A
/// line bounds two polygons, or a few more where they overlap.
bool SonDesmedidos(std::uint64_t puntos, const CLinea<int>& otro, const CFile& dibujo);

/// Reads the entity that names a polygon, whatever its kind. False, with the label as it was, where
/// the polygon has none or none can be read at its place. Raises CFileException where a read fails.
bool LeeRotulo(const CPoligonoTopologico& poligono, CFile* dibujo, CTexto<int>& rotulo);

/// A whole topology file in memory, with what its polygons point to in the drawing. A copy is one
/// by itself; one that was moved from has no polygons.
class CTopologia {
public:
    /// Loads all polygons of the file and their entities. An island record goes into the list of
    /// the polygon before it. What can't be read is left out: a stretch, a centroid's text, or the
    /// rest of a damaged file; `FaltaAlgo` tells so. Every parent is -1 then. Gives true, and
    /// raises CFileException where a read fails.
    /// \param dibujo     the open .BIN
    /// \param poligonos  the open topology file
    bool Read(CFile* dibujo, CFile* poligonos);
    bool FaltaAlgo() const { return m_faltaAlgo; }
    /// Sorts by number, polygons of one number keeping their order.
    void OrdenaPoligonos();

    int Poligonos() const { return static_cast<int>(m_poligonos.size()); }
    const CPoligonoTopologico& Poligono(int i) const
    {
        return m_poligonos[static_cast<std::size_t>(i)];
    }
    /// Index of the polygon that holds the point: in its outer ring, boundary included, and not
    /// strictly inside one of its own islands. Of several the one of least area, as `DameArea`
    /// gives it, then the first; -1 if none does. The first question after a change builds an index
    /// of all rings.
    int EncuentraPoligono(const CPunto<int>& punto) const;
    /// The centroid; with `interior`, the interior point of a polygon that has none.
    CPunto<int> DameCentroide(int i, bool interior) const;
    /// Text of the centroid; empty where it has none that can be read.
    CString DameTextoCentroide(int i) const;
    /// Square metres, islands included as they are stored.
    double DameArea(int i) const { return Poligono(i).Area(); }
    /// Index of the polygon around it in another topology, -1 until it is set.
    void SetPadre(int i, int padre) { m_poligonos[static_cast<std::size_t>(i)].SetPadre(padre); }
    int GetPadre(int i) const { return Poligono(i).GetPadre(); }

private:
    void TomaEntidades(CPoligonoTopologico& poligono, CFile* dibujo);
    int Guarda(const CEntidadVexa<int>& entidad);
    int GuardaContorno(const CPoligonoTopologico& poligono, CFile* dibujo);
    /// The k-th of a polygon's rings: first its own boundary, then those of its islands.
    const CLinea<int>& Anillo(const CPoligonoTopologico& poligono, int k) const;
    /// The rings of the topology's own drawing, for questions. They stay behind when it is copied:
    /// the copy has other rings, and finds them at its own first question.
    struct CBuscador {
        CBuscador() = default;
        CBuscador(const CBuscador& /*otro*/) {}
        CBuscador(CBuscador&&) noexcept = default;
        CBuscador& operator=(const CBuscador& otro) { return *this = CBuscador(otro); }
        CBuscador& operator=(CBuscador&&) noexcept = default;
        ~CBuscador() = default;

        CIndiceAnillos contornos;
        std::vector<CIndiceAnillos> islas; ///< of each polygon
    };
    const CBuscador& Buscador() const;

    std::vector<CPoligonoTopologico> m_poligonos;
    bool m_faltaAlgo = false;
    /// What they point to in their drawing: a polygon's centroid index and its list of indexes are
    /// positions here.
    CDibujoVexa m_dibujo;
    mutable CBuscador m_buscador; // ready where it has as many polygons
};

} // namespace vexageo
