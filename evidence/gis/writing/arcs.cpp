#include "evidence/gis/writing/arcs.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

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
