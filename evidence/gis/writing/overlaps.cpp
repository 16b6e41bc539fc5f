#include "evidence/gis/writing/overlaps.h"

#include <algorithm>
#include <memory>

#include <cpl_error.h>

#include "evidence/gis/geometry.h"
#include "evidence/gis/writing/label_point.h"
#include "evidence/outline_pieces.h"
#include "platform/ansi.h"

namespace {

struct CPuesto {
    const CRecintoDibujado* recinto;
    bool esNuevo;
    std::unique_ptr<OGRPolygon> poligono;
    OGREnvelope caja;
};

/// The valid outlines, from left to right.
std::vector<CPuesto> Puestos(const std::vector<CRecintoDibujado>& recintos,
                             const std::vector<CRecintoRevisado>& revisados)
{
    std::vector<CPuesto> puestos;
    for (std::size_t i = 0; i < recintos.size(); ++i) {
        const CRecintoDibujado& recinto = recintos[i];
        std::unique_ptr<OGRPolygon> poligono = recinto.Valido() ? PoligonoDe(recinto) : nullptr;
        if (!poligono)
            continue;
        CPuesto& suyo = puestos.emplace_back(
            CPuesto{&recinto, revisados[i].nuevoContorno, std::move(poligono), {}});
        suyo.poligono->getEnvelope(&suyo.caja);
    }
    std::ranges::sort(puestos, {}, [](const CPuesto& puesto) { return puesto.caja.MinX; });
    return puestos;
}

/// The surfaces that two outlines share.
class CSolape {
public:
    CSolape(const CPuesto& a, const CPuesto& b)
    {
        if ((!a.esNuevo && !b.esNuevo) || a.caja.Intersects(b.caja) == FALSE)
            return;
        const CPLErrorHandlerPusher callado(
            CPLQuietErrorHandler); // of outlines that cross themselves
        m_comun.reset(a.poligono->Intersection(b.poligono.get()));
        if (!m_comun)
            return;
        for (const OGRGeometry* parte : PartesDe(*m_comun, wkbPolygon)) { // no line, no point
            const OGRPolygon& suya = *parte->toPolygon();
            m_area += suya.get_Area();
            if (m_mayor == nullptr || suya.get_Area() > m_mayor->get_Area())
                m_mayor = &suya;
        }
    }

    double Area() const { return m_area; }
    /// A point in the largest of them, in metres.
    OGRPoint Donde() const
    {
        return EnMetros(SituaRotulo(AnillosDe(*m_mayor), std::nullopt).punto);
    }

private:
    std::unique_ptr<OGRGeometry> m_comun;
    double m_area = 0; // square metres
    const OGRPolygon* m_mayor = nullptr;
};

CString Nombre(const CRecintoDibujado& recinto, ClaseTopologia que)
{
    return recinto.EsDeParcela() ? NombreDePieza(recinto, que) : "\"" + recinto.rotulo + "\"";
}

} // namespace

void AvisaSolapes(const CTopologiaDibujada& topologia, ClaseTopologia que,
                  const std::vector<CRecintoRevisado>& revisados, const CString& entrada,
                  CNoticias& noticias)
{
    constexpr double kMasDeUnMetro = 1;
    constexpr double kSeVe = 0.005; // square metres, as they are told
    const std::vector<CPuesto> puestos = Puestos(topologia.recintos, revisados);
    std::vector<const CPuesto*> abiertos; // may reach the next one
    int cuantos = 0;
    double total = 0;
    for (const CPuesto& uno : puestos) {
        std::erase_if(abiertos,
                      [&](const CPuesto* otro) { return otro->caja.MaxX <= uno.caja.MinX; });
        for (const CPuesto* otro : abiertos) {
            const CSolape solape(*otro, uno);
            cuantos += solape.Area() > 0 ? 1 : 0;
            total += solape.Area();
            if (solape.Area() <= kMasDeUnMetro)
                continue;
            const OGRPoint donde = solape.Donde();
            noticias.Advierte(
                "solapes de más de 1 m2"_ansi,
                Formatea("se solapan %s y %s del polígono %s: %.2lf m2 en %.2lf %.2lf"_ansi,
                         Nombre(*otro->recinto, que), Nombre(*uno.recinto, que), entrada,
                         solape.Area(), donde.getX(), donde.getY()),
                solape.Area());
        }
        abiertos.push_back(&uno);
    }
    if (total < kSeVe)
        return;
    const bool deParcelas = que == ClaseTopologia::Parcelas;
    noticias.Advierte(deParcelas ? "polígonos con solapes de parcelas"_ansi
                                 : "polígonos con solapes de subparcelas"_ansi,
                      Formatea("%d solapes de %s en el polígono %s: %.2lf m2 en total"_ansi,
                               cuantos, deParcelas ? "parcelas" : "subparcelas", entrada, total),
                      total);
}
