#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "evidence/report/writing/anchors.h"
#include "evidence/report/writing/svg_map.h"

namespace informe {

struct CMapaHecho {
    std::string titulo;
    std::string marcas;
};

/// The maps of a page, as far as it has room for them.
class CMapas {
public:
    /// \param anclas  gets the places that the maps have
    /// \param perdidas  the parcels that lose surface by their outlines; grows as polygons come
    CMapas(const CIndiceAvisos& indice, const CPerdidas& perdidas, CAnclas& anclas)
        : m_indice(indice), m_perdidas(perdidas), m_anclas(anclas)
    {
    }

    /// Draws a polygon, each once, in the order of the list.
    void Toma(const CPoligonoDibujado& poligono);
    /// The maps; to be called once, when all polygons were taken.
    std::vector<CMapaHecho> Acaba();

private:
    bool HayMensajes(const CPoligonoDibujado& poligono) const;

    const CIndiceAvisos& m_indice;
    const CPerdidas& m_perdidas;
    CAnclas& m_anclas;
    CPresupuesto m_presupuesto;
    std::vector<CMapaHecho> m_mapas;
    int m_dibujados = 0;
    std::int64_t m_sinMapa = 0;
};

} // namespace informe
