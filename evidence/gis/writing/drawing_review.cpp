#include "evidence/gis/writing/drawing_review.h"

#include <algorithm>
#include <memory>
#include <set>

#include <cpl_error.h>

#include "evidence/gis/geometry.h"
#include "evidence/gis/writing/label_point.h"
#include "evidence/outline_pieces.h"
#include "platform/ansi.h"
#include "vexa_libs/ring.h"

namespace {

constexpr ClaseTopologia kClases[] = {ClaseTopologia::Parcelas, ClaseTopologia::Subparcelas};

/// A valid outline in its place.
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

/// Tells of outlines of one kind that lie upon one another: each two that share more than a square
/// metre, with the place, and what all of them come to. Outlines without a valid label count for
/// nothing, so they are passed over, and so are two that lay there before.
void AvisaSolapes(const CPoligonoDibujado& poligono, ClaseTopologia que,
                  const std::vector<CRecintoRevisado>& revisados, CNoticias& noticias)
{
    constexpr double kMasDeUnMetro = 1;
    constexpr double kSeVe = 0.005; // square metres, as they are told
    const std::vector<CPuesto> puestos = Puestos(poligono.Topologia(que).recintos, revisados);
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
                         Nombre(*otro->recinto, que), Nombre(*uno.recinto, que), poligono.entrada,
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
                               cuantos, deParcelas ? "parcelas" : "subparcelas", poligono.entrada,
                               total),
                      total);
}

/// Tells what the way back will lose of each parcel, or letter, that stands in several outlines, if
/// one of these is new.
bool PermitePiezas(const CPoligonoDibujado& poligono, ClaseTopologia que,
                   const std::vector<CRecintoRevisado>& revisados, const CModoDibujo& modo)
{
    const std::vector<CRecintoDibujado>& recintos = poligono.Topologia(que).recintos;
    const auto piezas = ReunePiezas(recintos);
    std::set<CClavePiezas> conNuevas;
    for (std::size_t i = 0; i < recintos.size(); ++i)
        if (revisados[i].nuevoContorno || revisados[i].nuevoRotulo)
            conNuevas.insert(ClaveDePieza(recintos[i]));
    bool permitidas = true;
    for (const CRecintoDibujado& recinto : recintos) {
        const bool ultima = recinto.piezas > 1 && recinto.pieza == recinto.piezas;
        if (!recinto.EsDeParcela() || !ultima || !conNuevas.contains(ClaveDePieza(recinto)))
            continue;
        const double perdida = piezas.at(ClaveDePieza(recinto)).AreaPerdida();
        const CString frase =
            Formatea("%s del polígono %s está en %d recintos: la vuelta toma el último, de %.2lf "
                     "m2, y pierde %.2lf m2 de los otros"_ansi,
                     NombreDePieza(recinto, que), poligono.entrada, recinto.piezas,
                     recinto.areaRegistro, perdida);
        constexpr const char* kClase = "parcelas o letras en varios recintos"_ansi;
        if (modo.admitePiezas)
            modo.noticias->Advierte(kClase, frase, perdida);
        else
            modo.noticias->Falla(kClase, frase + ". Con la opción PIEZAS=SI se escribe así"_ansi);
        permitidas = permitidas && modo.admitePiezas;
    }
    return permitidas;
}

/// Tells of subparcels whose fields name another parcel than the one that they lie in: no label
/// says that, so it has no effect.
void AvisaDeOtraParcela(const CPoligonoDibujado& poligono,
                        const std::vector<CRecintoRevisado>& revisados, CNoticias& noticias)
{
    const std::vector<CRecintoDibujado>& recintos = poligono.subparcelas.recintos;
    for (std::size_t i = 0; i < recintos.size(); ++i) {
        const CRecintoRevisado& suyo = revisados[i];
        if (!suyo.nombre.IsEmpty() && (suyo.nuevoContorno || suyo.nuevoRotulo) &&
            suyo.parcelaDicha && recintos[i].EsDeParcela() &&
            recintos[i].parcela != *suyo.parcelaDicha)
            noticias.Apunta("subparcelas que caen en otra parcela que la que dicen"_ansi,
                            suyo.nombre);
    }
}

/// Tells of new parcels that lie in no outline of their polygon: Infograf asks that outline for the
/// polygon's number, and gets no record of them.
void AvisaDeFuera(const CPoligonoDibujado& poligono, const std::vector<CRecintoRevisado>& revisados,
                  CNoticias& noticias)
{
    const std::vector<CRecintoDibujado>& suyos = poligono.poligonos.recintos;
    for (std::size_t i = 0; i < revisados.size() && !suyos.empty(); ++i) {
        const CRecintoDibujado& parcela = poligono.parcelas.recintos[i];
        const bool dentro = std::ranges::any_of(suyos, [&](const CRecintoDibujado& suyo) {
            return vexageo::Situa(suyo.contorno, parcela.punto) != vexageo::Lugar::Fuera;
        });
        if (revisados[i].nuevoContorno && parcela.EsDeParcela() && !dentro)
            noticias.Apunta("parcelas que caen fuera del contorno de su polígono (capa poligonos), "
                            "así que no pasan a Infograf"_ansi,
                            revisados[i].nombre);
    }
}

} // namespace

bool RevisaDibujo(CPoligonoDibujado poligono, CRevisados revisados, const CModoDibujo& modo)
{
    Relaciona(poligono, {});
    bool bien = true;
    for (const ClaseTopologia que : kClases)
        AvisaSolapes(poligono, que, revisados[que], *modo.noticias);
    for (const ClaseTopologia que : kClases)
        bien = PermitePiezas(poligono, que, revisados[que], modo) && bien;
    AvisaDeFuera(poligono, revisados[ClaseTopologia::Parcelas], *modo.noticias);
    AvisaDeOtraParcela(poligono, revisados[ClaseTopologia::Subparcelas], *modo.noticias);
    return bien;
}
