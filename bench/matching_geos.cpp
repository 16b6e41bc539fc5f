#include <algorithm>

#include <geos_c.h>

#include "bench/matching_drawings.h"
#include "vexa_libs/ring.h"

using vexageo::CPunto;
using vexageo::DobleArea;

namespace {

class CConGeos {
public:
    explicit CConGeos(const CDibujo& dibujo) : m_contexto(GEOS_init_r())
    {
        m_arbol = GEOSSTRtree_create_r(m_contexto, 10);
        m_anillos.reserve(dibujo.anillos.size());
        for (const CAnillo& anillo : dibujo.anillos) {
            GEOSGeometry* poligono = Poligono(anillo);
            m_anillos.push_back({poligono, GEOSPrepare_r(m_contexto, poligono), DobleArea(anillo),
                                 static_cast<int>(m_anillos.size())});
            GEOSSTRtree_insert_r(m_contexto, m_arbol, poligono, &m_anillos.back());
        }
    }
    CConGeos(const CConGeos&) = delete;
    CConGeos& operator=(const CConGeos&) = delete;
    ~CConGeos()
    {
        GEOSSTRtree_destroy_r(m_contexto, m_arbol);
        for (const CPreparado& anillo : m_anillos) {
            GEOSPreparedGeom_destroy_r(m_contexto, anillo.preparado);
            GEOSGeom_destroy_r(m_contexto, anillo.poligono);
        }
        GEOS_finish_r(m_contexto);
    }

    int Busca(const CPunto<int>& p)
    {
        GEOSGeometry* punto = GEOSGeom_createPointFromXY_r(m_contexto, p.X, p.Y);
        m_candidatos.clear();
        GEOSSTRtree_query_r(
            m_contexto, m_arbol, punto,
            [](void* anillo, void* candidatos) {
                static_cast<std::vector<const CPreparado*>*>(candidatos)
                    ->push_back(static_cast<const CPreparado*>(anillo));
            },
            &m_candidatos);
        std::sort(m_candidatos.begin(), m_candidatos.end(),
                  [](const CPreparado* a, const CPreparado* b) {
                      return a->area < b->area || (a->area == b->area && a->indice < b->indice);
                  });
        const auto hallado =
            std::find_if(m_candidatos.begin(), m_candidatos.end(), [&](const CPreparado* anillo) {
                return GEOSPreparedIntersects_r(m_contexto, anillo->preparado, punto) == 1;
            });
        GEOSGeom_destroy_r(m_contexto, punto);
        return hallado == m_candidatos.end() ? -1 : (*hallado)->indice;
    }

private:
    struct CPreparado {
        GEOSGeometry* poligono;
        const GEOSPreparedGeometry* preparado;
        double area;
        int indice;
    };

    GEOSGeometry* Poligono(const CAnillo& anillo)
    {
        const auto n = static_cast<unsigned>(anillo.size());
        GEOSCoordSequence* puntos = GEOSCoordSeq_create_r(m_contexto, n + 1, 2);
        for (unsigned i = 0; i <= n; ++i)
            GEOSCoordSeq_setXY_r(m_contexto, puntos, i, anillo[i % n].X, anillo[i % n].Y);
        return GEOSGeom_createPolygon_r(m_contexto, GEOSGeom_createLinearRing_r(m_contexto, puntos),
                                        nullptr, 0);
    }

    GEOSContextHandle_t m_contexto;
    GEOSSTRtree* m_arbol;
    std::vector<CPreparado> m_anillos;
    std::vector<const CPreparado*> m_candidatos;
};

} // namespace

std::vector<int> ConGeos(const CDibujo& dibujo)
{
    CConGeos geos(dibujo);
    std::vector<int> hallados;
    for (const CPunto<int>& punto : dibujo.puntos)
        hallados.push_back(geos.Busca(punto));
    return hallados;
}
