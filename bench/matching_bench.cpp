#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include <geos_c.h>

#include "vexa_libs/ring_index.h"

// Which of many rings holds a label: the program's index against that of GEOS, a tree over extents
// with prepared polygons, on the same rings and the same points in one run. Both must find the
// same. Prints a line for each kind of drawing, and fails where a ratio passes its bound. With
// --small the drawings are smaller and a bound is passed later, for machines that do other things
// meanwhile.

using vexageo::CIndiceAnillos;
using vexageo::CPunto;
using vexageo::DobleArea;

namespace {

using CAnillo = std::vector<CPunto<int>>;

struct CDibujo {
    const char* nombre;
    std::vector<CAnillo> anillos;
    std::vector<CPunto<int>> puntos;
    double cota; ///< that the ratio of the two times may reach
};

constexpr double kVuelta = 6.283185307179586;

std::vector<CPunto<int>> Puntos(std::size_t cuantos, int hasta)
{
    std::mt19937 azar(5);
    std::vector<CPunto<int>> puntos;
    for (std::size_t i = 0; i < cuantos; ++i)
        puntos.emplace_back(static_cast<int>(azar() % static_cast<unsigned>(hasta)),
                            static_cast<int>(azar() % static_cast<unsigned>(hasta)));
    return puntos;
}

CAnillo Liso(int x, int y, int radio, int esquinas)
{
    CAnillo anillo;
    for (int i = 0; i < esquinas; ++i) {
        const double angulo = kVuelta * i / esquinas;
        const double r = radio * (1 + 0.1 * std::sin(7 * angulo));
        anillo.emplace_back(x + static_cast<int>(r * std::cos(angulo)),
                            y + static_cast<int>(r * std::sin(angulo)));
    }
    return anillo;
}

/// Parcels side by side, each corner a little off its place, as an honest drawing has them.
CDibujo Parcelas(int lado)
{
    constexpr int kMalla = 5000;
    const auto esquina = [](int x, int y) {
        std::mt19937 azar(static_cast<unsigned>(x * 7919 + y));
        return CPunto<int>(x * kMalla + static_cast<int>(azar() % 2000),
                           y * kMalla + static_cast<int>(azar() % 2000));
    };
    CDibujo dibujo{"parcels side by side", {}, {}, 0.55};
    std::mt19937 azar(5);
    const auto dentro = [&](int celda) {
        return celda * kMalla + 2000 + static_cast<int>(azar() % 3000);
    };
    for (int x = 0; x < lado; ++x)
        for (int y = 0; y < lado; ++y) {
            dibujo.anillos.push_back(
                {esquina(x, y), esquina(x + 1, y), esquina(x + 1, y + 1), esquina(x, y + 1)});
            for (int rotulo = 0; rotulo < 3; ++rotulo) // as they stand in a file: by parcels
                dibujo.puntos.emplace_back(dentro(x), dentro(y));
        }
    return dibujo;
}

CDibujo AnilloLargo(int esquinas, std::size_t rotulos)
{
    return {"one smooth ring",
            {Liso(50'000'000, 50'000'000, 40'000'000, esquinas)},
            Puntos(rotulos, 100'000'000),
            0.8};
}

CDibujo Solapados(int cuantos, std::size_t rotulos)
{
    CDibujo dibujo{"huge rings that overlap", {}, Puntos(rotulos, 1'000'000), 1.2};
    std::mt19937 azar(3);
    for (int i = 0; i < cuantos; ++i)
        dibujo.anillos.push_back(Liso(static_cast<int>(azar() % 1'000'000),
                                      static_cast<int>(azar() % 1'000'000), 400'000, 200));
    return dibujo;
}

CDibujo Tiras(int cuantas, std::size_t rotulos)
{
    CDibujo dibujo{"diagonal strips", {}, Puntos(rotulos, 1'000'000), 1.2};
    const int ancho = 2'000'000 / cuantas;
    for (int i = 0; i < cuantas; ++i) {
        const int y = -1'000'000 + i * ancho;
        dibujo.anillos.push_back({{0, y},
                                  {1'000'000, y + 1'000'000},
                                  {1'000'000, y + 1'000'000 + ancho},
                                  {0, y + ancho}});
    }
    return dibujo;
}

CDibujo Peines(int puas, std::size_t rotulos)
{
    CDibujo dibujo{"combs", {}, Puntos(rotulos, 1'000'000), 1.2};
    for (int k = 0; k < 10; ++k) {
        CAnillo peine;
        for (int i = 0; i < puas; ++i)
            peine.emplace_back(i * (1'000'000 / puas),
                               i % 2 == 0 ? k * 100'000 : k * 100'000 + 90'000);
        peine.emplace_back(1'000'000, k * 100'000 - 10);
        peine.emplace_back(0, k * 100'000 - 10);
        dibujo.anillos.push_back(peine);
    }
    return dibujo;
}

CDibujo Rombos(int cuantos, std::size_t rotulos)
{
    CDibujo dibujo{"nested diamonds", {}, Puntos(rotulos, 1'000'000), 1.2};
    for (int i = 1; i <= cuantos; ++i) {
        const int r = i * (500'000 / cuantos);
        dibujo.anillos.push_back({{500'000 - r, 500'000},
                                  {500'000, 500'000 - r},
                                  {500'000 + r, 500'000},
                                  {500'000, 500'000 + r}});
    }
    return dibujo;
}

double Segundos(const std::function<void()>& trabajo)
{
    const auto antes = std::chrono::steady_clock::now();
    trabajo();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - antes).count();
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

/// The same by GEOS.
class CConGeos {
public:
    explicit CConGeos(const CDibujo& dibujo) : m_contexto(GEOS_init_r())
    {
        m_arbol = GEOSSTRtree_create_r(m_contexto, 10);
        m_anillos.reserve(dibujo.anillos.size());
        for (const CAnillo& anillo : dibujo.anillos) {
            GEOSGeometry* poligono = Poligono(anillo);
            m_anillos.push_back({poligono, GEOSPrepare_r(m_contexto, poligono), DobleArea(anillo),
                                 static_cast<int>(m_anillos.size())});
            GEOSSTRtree_insert_r(m_contexto, m_arbol, poligono, &m_anillos.back());
        }
    }
    CConGeos(const CConGeos&) = delete;
    CConGeos& operator=(const CConGeos&) = delete;
    ~CConGeos()
    {
        GEOSSTRtree_destroy_r(m_contexto, m_arbol);
        for (const CPreparado& anillo : m_anillos) {
            GEOSPreparedGeom_destroy_r(m_contexto, anillo.preparado);
            GEOSGeom_destroy_r(m_contexto, anillo.poligono);
        }
        GEOS_finish_r(m_contexto);
    }

    int Busca(const CPunto<int>& p)
    {
        GEOSGeometry* punto = GEOSGeom_createPointFromXY_r(m_contexto, p.X, p.Y);
        m_candidatos.clear();
        GEOSSTRtree_query_r(
            m_contexto, m_arbol, punto,
            [](void* anillo, void* candidatos) {
                static_cast<std::vector<const CPreparado*>*>(candidatos)
                    ->push_back(static_cast<const CPreparado*>(anillo));
            },
            &m_candidatos);
        std::sort(m_candidatos.begin(), m_candidatos.end(),
                  [](const CPreparado* a, const CPreparado* b) {
                      return a->area < b->area || (a->area == b->area && a->indice < b->indice);
                  });
        const auto hallado =
            std::find_if(m_candidatos.begin(), m_candidatos.end(), [&](const CPreparado* anillo) {
                return GEOSPreparedIntersects_r(m_contexto, anillo->preparado, punto) == 1;
            });
        GEOSGeom_destroy_r(m_contexto, punto);
        return hallado == m_candidatos.end() ? -1 : (*hallado)->indice;
    }

private:
    struct CPreparado {
        GEOSGeometry* poligono;
        const GEOSPreparedGeometry* preparado;
        double area;
        int indice;
    };

    GEOSGeometry* Poligono(const CAnillo& anillo)
    {
        const auto n = static_cast<unsigned>(anillo.size());
        GEOSCoordSequence* puntos = GEOSCoordSeq_create_r(m_contexto, n + 1, 2);
        for (unsigned i = 0; i <= n; ++i)
            GEOSCoordSeq_setXY_r(m_contexto, puntos, i, anillo[i % n].X, anillo[i % n].Y);
        return GEOSGeom_createPolygon_r(m_contexto, GEOSGeom_createLinearRing_r(m_contexto, puntos),
                                        nullptr, 0);
    }

    GEOSContextHandle_t m_contexto;
    GEOSSTRtree* m_arbol;
    std::vector<CPreparado> m_anillos;
    std::vector<const CPreparado*> m_candidatos;
};

std::vector<int> ConGeos(const CDibujo& dibujo)
{
    CConGeos geos(dibujo);
    std::vector<int> hallados;
    for (const CPunto<int>& punto : dibujo.puntos)
        hallados.push_back(geos.Busca(punto));
    return hallados;
}

/// Measures both three times, the least counts. False where they differ, or the bound is passed.
bool Compara(const CDibujo& dibujo, double holgura)
{
    constexpr int kVeces = 3;
    double nuestro = 1e9;
    double suyo = 1e9;
    std::vector<int> nuestros;
    std::vector<int> suyos;
    for (int vez = 0; vez < kVeces; ++vez) {
        nuestro = std::min(nuestro, Segundos([&] { nuestros = ConIndice(dibujo); }));
        suyo = std::min(suyo, Segundos([&] { suyos = ConGeos(dibujo); }));
    }
    const double razon = nuestro / suyo;
    const bool bien = nuestros == suyos && razon <= dibujo.cota * holgura;
    std::printf("%-24s %6zu rings %7zu labels  %9.2f ms, GEOS %9.2f ms  ratio %6.3f of %.2f%s%s\n",
                dibujo.nombre, dibujo.anillos.size(), dibujo.puntos.size(), nuestro * 1e3,
                suyo * 1e3, razon, dibujo.cota, nuestros == suyos ? "" : "  THEY DIFFER",
                razon <= dibujo.cota * holgura ? "" : "  TOO SLOW");
    return bien;
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
        Tiras(10'000 / parte, rotulos(2'000)),
        Peines(10'000 / parte, rotulos(20'000)),
        Rombos(2'000, rotulos(20'000)),
    };
    bool bien = true;
    for (const CDibujo& dibujo : dibujos)
        bien = Compara(dibujo, pequeño ? 1.5 : 1.15) && bien;
    return bien ? 0 : 1;
}
