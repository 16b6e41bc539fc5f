#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "evidence/report/writing/anchors.h"
#include "evidence/report/writing/svg_map.h"
#include "evidence/report/writing/svg_overview.h"

namespace informe {

struct CMapaHecho {
    std::string ancla;
    std::string titulo;
    std::string marcas;
};

/// The maps of a page, as far as it has room for them.
class CMapas {
public:
    /// \param sinEscribir  parcels of the tables that weren't written
    CMapas(CComunDeMapas comun, CPerdidas sinEscribir)
        : m_comun(comun), m_sinEscribir(std::move(sinEscribir))
    {
    }

    /// Draws a drawing of a polygon, each once, those of one polygon one behind the other.
    void Toma(const CPoligonoDibujado& poligono);
    /// The maps, that of all polygons first; to be called once, when all were taken.
    std::vector<CMapaHecho> Acaba();

private:
    bool HayMensajes(const CPoligonoDibujado& poligono) const;
    void TomaSilueta(const CPoligonoDibujado& poligono, const std::string& ancla);

    CComunDeMapas m_comun;
    CPerdidas m_sinEscribir;
    std::vector<CMapaHecho> m_mapas;
    std::vector<CSilueta> m_siluetas;
    std::int64_t m_sinMapa = 0;
};

} // namespace informe
