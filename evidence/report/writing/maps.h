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
    /// \param anclas  gets the places that the maps have
    /// \param perdidas     the parcels that lose surface by their outlines; grows as polygons come
    /// \param sinEscribir  those of the tables that weren't written
    /// \param cambios      must stay as they are
    CMapas(const CIndiceAvisos& indice, const CPerdidas& perdidas, CPerdidas sinEscribir,
           CMarcasDeCambio cambios, CAnclas& anclas)
        : m_indice(indice), m_perdidas(perdidas), m_sinEscribir(std::move(sinEscribir)),
          m_cambios(cambios), m_anclas(anclas)
    {
    }

    /// Draws a polygon, each once, in the order of the list.
    void Toma(const CPoligonoDibujado& poligono);
    /// The maps, that of all polygons first; to be called once, when all were taken.
    std::vector<CMapaHecho> Acaba();

private:
    bool HayMensajes(const CPoligonoDibujado& poligono) const;
    void TomaSilueta(const CPoligonoDibujado& poligono, const std::string& ancla);

    const CIndiceAvisos& m_indice;
    const CPerdidas& m_perdidas;
    CPerdidas m_sinEscribir;
    CMarcasDeCambio m_cambios;
    CAnclas& m_anclas;
    CPresupuesto m_presupuesto;
    std::vector<CMapaHecho> m_mapas;
    std::vector<CSilueta> m_siluetas;
    int m_dibujados = 0;
    std::int64_t m_sinMapa = 0;
};

} // namespace informe
