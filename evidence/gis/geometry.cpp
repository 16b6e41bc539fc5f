#include "evidence/gis/geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "evidence/units.h"

namespace {

constexpr double kFinosPorMetro = kUnidadesPorMetro * kFinos;
constexpr std::int64_t kMedio = kFinos / 2;

/// The whole unit nearest to a coordinate, the upper one of two; in thousandths as well.
std::int64_t Redondea(std::int64_t finos)
{
    const std::int64_t desplazado = finos + kMedio;
    const std::int64_t cociente = desplazado / kFinos;
    return (cociente - (desplazado % kFinos < 0 ? 1 : 0)) * kFinos;
}

void PonPuntos(OGRSimpleCurve& curva, const CAnillo& puntos)
{
    curva.setNumPoints(static_cast<int>(puntos.size()));
    for (std::size_t i = 0; i < puntos.size(); ++i)
        curva.setPoint(static_cast<int>(i), EnMetros(puntos[i].X), EnMetros(puntos[i].Y));
}

OGRLinearRing* AnilloDe(const CAnillo& contorno)
{
    auto anillo = std::make_unique<OGRLinearRing>();
    PonPuntos(*anillo, contorno);
    anillo->closeRings();
    return anillo.release();
}

/// Finds the greatest radius of the arcs of a geometry.
class CMayorRadio : public OGRDefaultConstGeometryVisitor {
public:
    using OGRDefaultConstGeometryVisitor::visit;

    void visit(const OGRCircularString* arcos) override
    {
        constexpr int kPuntosArco = 2; // that each arc has beside its first one
        for (int i = 0; i + kPuntosArco < arcos->getNumPoints(); i += kPuntosArco) {
            double radio = 0;
            double cx = 0;
            double cy = 0;
            double alfa0 = 0;
            double alfa1 = 0;
            double alfa2 = 0;
            if (OGRGeometryFactory::GetCurveParameters(arcos->getX(i), arcos->getY(i),
                                                       arcos->getX(i + 1), arcos->getY(i + 1),
                                                       arcos->getX(i + 2), arcos->getY(i + 2),
                                                       radio, cx, cy, alfa0, alfa1, alfa2) != 0)
                m_radio = std::max(m_radio, radio);
        }
    }
    double Radio() const { return m_radio; }

private:
    double m_radio = 0;
};

} // namespace

OGRPoint EnMetros(const vexageo::CPunto<int>& punto)
{
    return {EnMetros(punto.X), EnMetros(punto.Y)};
}

vexageo::CPunto<int> EnUnidades(double x, double y)
{
    return {static_cast<int>(std::lround(x * kUnidadesPorMetro)),
            static_cast<int>(std::lround(y * kUnidadesPorMetro))};
}

std::vector<const OGRGeometry*> PartesDe(const OGRGeometry& geometria, OGRwkbGeometryType tipo)
{
    std::vector<const OGRGeometry*> partes;
    if (wkbFlatten(geometria.getGeometryType()) == tipo)
        partes.push_back(&geometria);
    else if (OGR_GT_IsSubClassOf(geometria.getGeometryType(), wkbGeometryCollection) != FALSE)
        for (const OGRGeometry* parte : *geometria.toGeometryCollection())
            if (wkbFlatten(parte->getGeometryType()) == tipo)
                partes.push_back(parte);
    return partes;
}

std::unique_ptr<OGRGeometry> SinArcos(const OGRGeometry& geometria, double tolerancia)
{
    constexpr double kGrados = 180 / std::numbers::pi;
    constexpr double kMayorPaso = 45; // degrees: an arc stays one
    CMayorRadio mayor;
    geometria.accept(&mayor);
    double paso = kMayorPaso;
    if (mayor.Radio() > tolerancia) // the height of a chord's arc is r (1 - cos(angle / 2))
        paso = std::min(paso, 2 * std::acos(1 - tolerancia / mayor.Radio()) * kGrados);
    return std::unique_ptr<OGRGeometry>(geometria.getLinearGeometry(paso));
}

void Ensancha(OGREnvelope& caja, const CAnillo& puntos)
{
    for (const vexageo::CPunto<int>& punto : puntos)
        caja.Merge(EnMetros(punto.X), EnMetros(punto.Y));
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

std::unique_ptr<OGRPolygon> PoligonoDe(const std::vector<CAnillo>& anillos)
{
    auto poligono = std::make_unique<OGRPolygon>();
    for (const CAnillo& anillo : anillos)
        poligono->addRingDirectly(AnilloDe(anillo));
    return poligono;
}

std::vector<CAnillo> AnillosDe(const OGRPolygon& poligono)
{
    std::vector<CAnillo> anillos;
    for (const OGRLinearRing* anillo : poligono) {
        auto& suyo = anillos.emplace_back();
        for (int i = 0; i + 1 < anillo->getNumPoints(); ++i) {
            const vexageo::CPunto<int> punto = EnUnidades(anillo->getX(i), anillo->getY(i));
            if (suyo.empty() || !(suyo.back() == punto))
                suyo.push_back(punto);
        }
    }
    return anillos;
}

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

std::unique_ptr<OGRLineString> LineaDe(const CAnillo& puntos)
{
    auto linea = std::make_unique<OGRLineString>();
    PonPuntos(*linea, puntos);
    return linea;
}

CFino EnFinos(double x, double y)
{
    return {std::llround(x * kFinosPorMetro), std::llround(y * kFinosPorMetro)};
}

CFino Redondea(const CFino& punto)
{
    return {Redondea(punto.x), Redondea(punto.y)};
}

vexageo::CPunto<int> EnUnidades(const CFino& redondo)
{
    return {static_cast<int>(redondo.x / kFinos), static_cast<int>(redondo.y / kFinos)};
}

std::unique_ptr<OGRLineString> LineaDe(const CAnilloFino& anillo)
{
    auto linea = std::make_unique<OGRLineString>();
    linea->setNumPoints(static_cast<int>(anillo.size()) + 1);
    for (std::size_t i = 0; i <= anillo.size(); ++i) {
        const CFino& punto = anillo[i % anillo.size()];
        linea->setPoint(static_cast<int>(i), static_cast<double>(punto.x) / kFinosPorMetro,
                        static_cast<double>(punto.y) / kFinosPorMetro);
    }
    return linea;
}
