#include "evidence/gis/geometry.h"

#include <cmath>

namespace {

void PonPuntos(OGRSimpleCurve& curva, const std::vector<vexageo::CPunto<int>>& puntos)
{
    curva.setNumPoints(static_cast<int>(puntos.size()));
    for (std::size_t i = 0; i < puntos.size(); ++i)
        curva.setPoint(static_cast<int>(i), puntos[i].X / kPorMetro, puntos[i].Y / kPorMetro);
}

OGRLinearRing* AnilloDe(const std::vector<vexageo::CPunto<int>>& contorno)
{
    auto anillo = std::make_unique<OGRLinearRing>();
    PonPuntos(*anillo, contorno);
    anillo->closeRings();
    return anillo.release();
}

} // namespace

OGRPoint EnMetros(const vexageo::CPunto<int>& punto)
{
    return {punto.X / kPorMetro, punto.Y / kPorMetro};
}

vexageo::CPunto<int> EnUnidades(double x, double y)
{
    return {static_cast<int>(std::lround(x * kPorMetro)),
            static_cast<int>(std::lround(y * kPorMetro))};
}

std::unique_ptr<OGRPolygon> PoligonoDe(const CRecintoDibujado& recinto)
{
    if (recinto.contorno.empty())
        return nullptr;
    auto poligono = std::make_unique<OGRPolygon>();
    poligono->addRingDirectly(AnilloDe(recinto.contorno));
    for (const CIslaDibujada& isla : recinto.islas)
        if (!isla.contorno.empty())
            poligono->addRingDirectly(AnilloDe(isla.contorno));
    return poligono;
}

std::unique_ptr<OGRLineString> LineaDe(const std::vector<vexageo::CPunto<int>>& puntos)
{
    auto linea = std::make_unique<OGRLineString>();
    PonPuntos(*linea, puntos);
    return linea;
}
