#include "evidence/gis/writing/noding.h"

#include <algorithm>
#include <memory>

#include <ogr_geometry.h>

#include "evidence/gis/writing/node_grid.h"
#include "vexa_libs/ring.h"

namespace {

constexpr std::size_t kMenosPuntos = 3; // of a ring that holds something

/// An edge between two whole points, the lesser one first.
using CArista = std::pair<CFino, CFino>;

void Apunta(const CFino& a, const CFino& b, std::vector<CArista>& aristas)
{
    if (a != b)
        aristas.emplace_back(std::minmax(a, b));
}

void Ordena(std::vector<CArista>& aristas)
{
    std::ranges::sort(aristas);
    aristas.erase(std::unique(aristas.begin(), aristas.end()), aristas.end());
}

/// The edges of the rings as they are.
std::vector<CArista> AristasDe(const std::vector<CAnilloFino>& anillos)
{
    std::vector<CArista> aristas;
    for (const CAnilloFino& anillo : anillos)
        for (std::size_t i = 0; i < anillo.size(); ++i)
            Apunta(Redondea(anillo[i]), Redondea(anillo[(i + 1) % anillo.size()]), aristas);
    Ordena(aristas);
    return aristas;
}

/// The edges that the rings have once they are noded, rounded. False where GEOS can't.
bool AristasAnudadas(const std::vector<CAnilloFino>& anillos, std::vector<CArista>& aristas)
{
    OGRMultiLineString todas;
    for (const CAnilloFino& anillo : anillos)
        if (anillo.size() >= kMenosPuntos)
            todas.addGeometryDirectly(LineaDe(anillo).release());
    if (todas.getNumGeometries() == 0)
        return true;
    const std::unique_ptr<OGRGeometry> anudadas(todas.Union(todas.getGeometryRef(0)));
    if (!anudadas)
        return false;
    const auto punto = [](const OGRLineString& linea, int i) {
        return Redondea(EnFinos(linea.getX(i), linea.getY(i)));
    };
    for (const OGRGeometry* parte : PartesDe(*anudadas, wkbLineString)) {
        const OGRLineString& linea = *parte->toLineString();
        for (int i = 1; i < linea.getNumPoints(); ++i)
            Apunta(punto(linea, i - 1), punto(linea, i), aristas);
    }
    Ordena(aristas);
    return true;
}

/// Takes out points that repeat the one before, and ways there and back.
void Limpia(CAnilloFino& anillo)
{
    CAnilloFino limpio;
    for (const CFino& punto : anillo) {
        if (!limpio.empty() && limpio.back() == punto)
            continue;
        if (limpio.size() > 1 && limpio[limpio.size() - 2] == punto)
            limpio.pop_back();
        else
            limpio.push_back(punto);
    }
    // The same over the seam.
    std::size_t desde = 0;
    while (limpio.size() - desde >= kMenosPuntos) {
        const bool sobraUltimo = limpio[desde] == limpio.back() || // or it is a spike
                                 limpio[desde] == limpio[limpio.size() - 2];
        if (sobraUltimo)
            limpio.pop_back();
        else if (limpio[desde + 1] == limpio.back()) // the first one is a spike
            ++desde;
        else
            break;
    }
    limpio.erase(limpio.begin(), limpio.begin() + static_cast<std::ptrdiff_t>(desde));
    if (limpio.size() < kMenosPuntos)
        limpio.clear();
    anillo = std::move(limpio);
}

/// Leads each ring through the nodes on its way.
void Lleva(std::vector<CAnilloFino>& anillos, const std::vector<CNudo>& nudos)
{
    const CRejillaNudos rejilla(nudos);
    for (CAnilloFino& anillo : anillos) {
        CAnilloFino camino;
        for (std::size_t i = 0; i < anillo.size(); ++i)
            rejilla.Camino(anillo[i], anillo[(i + 1) % anillo.size()], camino);
        Limpia(camino);
        anillo = std::move(camino);
    }
}

bool SonRedondos(const std::vector<CAnilloFino>& anillos)
{
    return std::ranges::all_of(anillos, [](const CAnilloFino& anillo) {
        return std::ranges::all_of(anillo,
                                   [](const CFino& punto) { return punto == Redondea(punto); });
    });
}

/// Adds the ends of edges to the nodes.
void PonExtremos(const std::vector<CArista>& aristas, bool atraen, std::vector<CNudo>& nudos)
{
    for (const auto& [a, b] : aristas) {
        nudos.push_back({a, atraen});
        nudos.push_back({b, atraen});
    }
}

/// The points of rings that stay as nodes.
std::vector<CNudo> NudosDe(const std::vector<CAnillo>& fijos, bool atraen)
{
    std::vector<CNudo> nudos;
    for (const CAnillo& anillo : fijos)
        for (const vexageo::CPunto<int>& punto : anillo)
            nudos.push_back({EnFinos(punto), atraen});
    return nudos;
}

/// Nodes and rounds until nothing is left to be noded. Rounding moves an edge by half a unit, which
/// may lead it into the cell of a node that it passed before; the next round takes it there, and a
/// round that changes nothing is the last. The bound is for points so crowded that rounding keeps
/// pushing them about: those are told as rings that can't be noded.
bool AnudaHastaQueCuadra(const std::vector<CNudo>& fijos, std::vector<CAnilloFino>& anillos)
{
    constexpr int kVueltas = 10;
    for (int vuelta = 0; vuelta < kVueltas; ++vuelta) {
        std::vector<CArista> anudadas;
        if (!AristasAnudadas(anillos, anudadas))
            return false;
        const std::vector<CArista> aristas = AristasDe(anillos);
        if (vuelta > 0 && anudadas == aristas)
            return true;
        std::vector<CNudo> nudos = fijos;
        PonExtremos(anudadas, true, nudos);
        PonExtremos(aristas, true, nudos);
        Lleva(anillos, nudos);
    }
    return false;
}

/// The ring in whole units; empty where rounding left it without a surface.
CAnillo AnilloEntero(const CAnilloFino& anillo)
{
    CAnillo redondo;
    for (const CFino& punto : anillo)
        redondo.push_back(EnUnidades(punto));
    if (vexageo::DobleArea(redondo) == 0)
        redondo.clear();
    return redondo;
}

} // namespace

bool Anuda(const std::vector<CAnilloFino>& anillos, const std::vector<CAnillo>& fijos,
           std::vector<CAnillo>& redondos)
{
    std::vector<CAnilloFino> llevados = anillos;
    if (SonRedondos(llevados)) {
        std::vector<CNudo> nudos = NudosDe(fijos, false);
        PonExtremos(AristasDe(llevados), false, nudos);
        Lleva(llevados, nudos);
    } else if (!AnudaHastaQueCuadra(NudosDe(fijos, true), llevados)) {
        return false;
    }
    redondos.clear();
    for (const CAnilloFino& anillo : llevados)
        redondos.push_back(AnilloEntero(anillo));
    return true;
}
