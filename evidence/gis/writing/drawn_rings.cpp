#include "evidence/gis/writing/drawn_rings.h"

#include <memory>

#include "evidence/gis/geometry.h"

std::vector<CAnillo> AnillosDe(const CRecintoDibujado& recinto)
{
    std::vector<CAnillo> anillos;
    const auto pon = [&](CAnillo anillo) {
        while (anillo.size() > 1 && EnElMismoSitio(anillo.front(), anillo.back()))
            anillo.pop_back();
        if (!anillo.empty())
            anillos.push_back(std::move(anillo));
    };
    pon(recinto.contorno);
    for (const CIslaDibujada& isla : recinto.islas)
        pon(isla.contorno);
    return anillos;
}

std::vector<std::vector<CAnillo>> Alrededor(const OGRMultiPolygon& todas)
{
    const std::unique_ptr<OGRGeometry> juntas(todas.UnionCascaded());
    std::vector<std::vector<CAnillo>> recintos;
    if (juntas && wkbFlatten(juntas->getGeometryType()) == wkbPolygon)
        recintos.push_back(AnillosDe(*juntas->toPolygon()));
    else if (juntas && wkbFlatten(juntas->getGeometryType()) == wkbMultiPolygon)
        for (const OGRPolygon* poligono : *juntas->toMultiPolygon())
            recintos.push_back(AnillosDe(*poligono));
    return recintos;
}

CRecintoDibujado DibujadoDe(const CRecintoEntrante& recinto, const std::vector<CAnillo>& anillos,
                            const vexageo::CPoligonoTopologico& registro)
{
    CRecintoDibujado dibujado;
    dibujado.punto = registro.PuntoInterior();
    dibujado.areaRegistro = registro.Area();
    dibujado.contorno = anillos.front();
    for (std::size_t i = 1; i < anillos.size(); ++i)
        dibujado.islas.push_back({anillos[i], 0, true});
    dibujado.rotulo = recinto.rotulo.value_or(CString());
    dibujado.estado = recinto.rotulo
                          ? EstadoPorRotulo(recinto.clase, recinto.Codigo(), recinto.Borrado())
                          : EstadoRecinto::SinRotulo;
    return dibujado;
}
