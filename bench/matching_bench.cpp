#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <functional>
#include <vector>

#include "bench/matching_drawings.h"
#include "vexa_libs/ring_index.h"

// Which of many rings holds a label: the program's index against that of GEOS, a tree over extents
// with prepared polygons, and where rings don't cross against a sweep too, on the same rings and
// the same points in one run. All must find the same. Prints a line for each kind of drawing, and
// fails where the ratio to the better of the others passes its bound. With --small the drawings are
// smaller and a bound is passed later, for machines that do other things meanwhile.

using vexageo::CIndiceAnillos;
using vexageo::CPunto;
using vexageo::DobleArea;

namespace {

/// Of the processor, which others' work doesn't lengthen.
double Segundos(const std::function<void()>& trabajo)
{
    const std::clock_t antes = std::clock();
    trabajo();
    return static_cast<double>(std::clock() - antes) / CLOCKS_PER_SEC;
}

/// For each point the index of the smallest ring that holds it.
std::vector<int> ConIndice(const CDibujo& dibujo)
{
    CIndiceAnillos indice;
    for (std::size_t i = 0; i < dibujo.anillos.size(); ++i)
        indice.Añade(dibujo.anillos[i], DobleArea(dibujo.anillos[i]), static_cast<int>(i));
    std::vector<int> hallados;
    for (const CPunto<int>& punto : dibujo.puntos)
        hallados.push_back(indice.Busca(punto));
    return hallados;
}

/// A way to the answers, and its least time so far.
struct CManera {
    const char* nombre;
    std::vector<int> (*halla)(const CDibujo& dibujo);
    double tiempo = 1e9;
};

/// Measures all ways three times in turn, the least counts. False where they differ, or where ours
/// passes the bound of the best of the others.
bool Compara(const CDibujo& dibujo, double holgura)
{
    constexpr int kVeces = 3;
    CManera nuestra{"", ConIndice};
    std::vector<CManera> otras = {{"GEOS", ConGeos}};
    if (dibujo.barrido)
        otras.push_back({"sweep", ConBarrido});
    bool iguales = true;
    for (int vez = 0; vez < kVeces; ++vez) {
        const auto mide = [&](CManera& manera) {
            std::vector<int> hallados;
            manera.tiempo =
                std::min(manera.tiempo, Segundos([&] { hallados = manera.halla(dibujo); }));
            return hallados;
        };
        const std::vector<int> nuestros = mide(nuestra);
        for (CManera& otra : otras)
            iguales = mide(otra) == nuestros && iguales;
    }
    std::printf("%-24s %6zu rings %7zu labels  %9.2f ms", dibujo.nombre, dibujo.anillos.size(),
                dibujo.puntos.size(), nuestra.tiempo * 1e3);
    double mejor = 1e9;
    for (const CManera& otra : otras) {
        std::printf(", %s %9.2f ms", otra.nombre, otra.tiempo * 1e3);
        mejor = std::min(mejor, otra.tiempo);
    }
    const double razon = nuestra.tiempo / mejor;
    const bool lento = razon > dibujo.cota * holgura;
    std::printf("  ratio %6.3f of %.2f%s%s\n", razon, dibujo.cota, iguales ? "" : "  THEY DIFFER",
                lento ? "  TOO SLOW" : "");
    return iguales && !lento;
}

} // namespace

int main(int argc, char* argv[])
{
    const bool pequeño = argc == 2 && std::strcmp(argv[1], "--small") == 0;
    const int parte = pequeño ? 10 : 1;
    const auto rotulos = [&](int n) { return static_cast<std::size_t>(n / parte); };
    const CDibujo dibujos[] = {
        Parcelas(143),
        AnilloLargo(1'000'000 / parte, rotulos(100'000)),
        Solapados(10'000 / parte, rotulos(20'000)),
        Tiras("diagonal strips", 1, 10'000 / parte, rotulos(2'000)),
        Tiras("strips that rise by 1/2", 0.5, 10'000 / parte, rotulos(2'000)),
        Tiras("strips that fall by 3/5", -0.6, 10'000 / parte, rotulos(2'000)),
        Tiras("strips that rise by 1/10", 0.1, 10'000 / parte, rotulos(2'000)),
        Peines(10'000 / parte, rotulos(20'000)),
        Rombos(2'000, rotulos(20'000)),
    };
    bool bien = true;
    for (const CDibujo& dibujo : dibujos)
        bien = Compara(dibujo, pequeño ? 1.5 : 1.15) && bien;
    return bien ? 0 : 1;
}
