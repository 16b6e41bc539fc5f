#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>

#include "bench/matching_drawings.h"
#include "vexa_libs/extent_tree.h"

// Which rings' boxes hold a label, the first stage of every look-up: the tree of the program's
// index against the R-tree of Boost on an honest drawing. Both must find the same, and the time to
// make them doesn't count. Fails where the ratio passes its bound; --small is that of
// matching_bench.

using vexageo::CAnilloConsultado;
using vexageo::CArbolCajas;
using vexageo::CPunto;

namespace {

namespace indice = boost::geometry::index;

using CPuntoBoost = boost::geometry::model::d2::point_xy<int>;
using CCajaBoost = boost::geometry::model::box<CPuntoBoost>;
using CHallados = std::vector<unsigned>;
using CBusca = std::function<void(const CPunto<int>&, CHallados&)>;

constexpr double kCota = 1.0;

CBusca Nuestro(const CDibujo& dibujo)
{
    vexageo::CAlmacenAnillos anillos;
    for (std::size_t i = 0; i < dibujo.anillos.size(); ++i)
        anillos.Añade({CAnilloConsultado(dibujo.anillos[i]), vexageo::DobleArea(dibujo.anillos[i]),
                       static_cast<int>(i)});
    return [arbol = std::make_shared<const CArbolCajas>(anillos)](const CPunto<int>& punto,
                                                                  CHallados& hallados) {
        arbol->Recorre(punto, [&hallados](const CArbolCajas::CVia& via) {
            hallados.push_back(via.posicion);
            return false;
        });
    };
}

CCajaBoost Caja(const CAnillo& anillo)
{
    const auto [minimo, maximo] = vexageo::CCaja::De(anillo, vexageo::CMarco());
    return {{minimo[0], minimo[1]}, {maximo[0], maximo[1]}};
}

/// Filled all at once, which makes the best tree; of nodes of 4 to 16 boxes those of 8 are the
/// fastest ones.
CBusca DeBoost(const CDibujo& dibujo)
{
    using CEntrada = std::pair<CCajaBoost, unsigned>;
    using CArbol = indice::rtree<CEntrada, indice::linear<8>>;
    std::vector<CEntrada> entradas;
    for (const CAnillo& anillo : dibujo.anillos)
        entradas.emplace_back(Caja(anillo), static_cast<unsigned>(entradas.size()));
    return [arbol = std::make_shared<const CArbol>(entradas)](const CPunto<int>& punto,
                                                              CHallados& hallados) {
        arbol->query(indice::intersects(CPuntoBoost(punto.X, punto.Y)),
                     boost::make_function_output_iterator([&hallados](const CEntrada& entrada) {
                         hallados.push_back(entrada.second);
                     }));
    };
}

/// Of the processor, to look all labels up; the boxes of each are added to `todos` in their order.
double Segundos(const CDibujo& dibujo, const CBusca& busca, CHallados& todos)
{
    std::vector<std::size_t> fines;
    fines.reserve(dibujo.puntos.size());
    todos.clear();
    const std::clock_t antes = std::clock();
    for (const CPunto<int>& punto : dibujo.puntos) {
        busca(punto, todos);
        fines.push_back(todos.size());
    }
    const std::clock_t hasta = std::clock();
    auto desde = todos.begin();
    for (const std::size_t fin : fines) {
        const auto alli = todos.begin() + static_cast<std::ptrdiff_t>(fin);
        std::sort(desde, alli);
        desde = alli;
    }
    return static_cast<double>(hasta - antes) / CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char* argv[])
{
    constexpr int kVeces = 9;
    const bool pequeño = argc == 2 && std::strcmp(argv[1], "--small") == 0;
    const CDibujo dibujo = Parcelas(pequeño ? 45 : 143);
    const CBusca nuestro = Nuestro(dibujo);
    const CBusca otro = DeBoost(dibujo);
    CHallados hallados, suyos;
    double tiempo = 1e9, suyo = 1e9;
    for (int vez = 0; vez < kVeces; ++vez) {
        tiempo = std::min(tiempo, Segundos(dibujo, nuestro, hallados));
        suyo = std::min(suyo, Segundos(dibujo, otro, suyos));
    }
    const bool iguales = hallados == suyos;
    const bool lento = tiempo / suyo > kCota * (pequeño ? 1.5 : 1.15);
    std::printf("%-24s %6zu boxes %7zu labels  %9.2f ms, Boost %9.2f ms  ratio %6.3f of %.2f%s%s\n",
                dibujo.nombre, dibujo.anillos.size(), dibujo.puntos.size(), tiempo * 1e3,
                suyo * 1e3, tiempo / suyo, kCota, iguales ? "" : "  THEY DIFFER",
                lento ? "  TOO SLOW" : "");
    return iguales && !lento ? 0 : 1;
}
