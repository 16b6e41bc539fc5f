#include "evidence/gis/writing/noding.h"

#include <cmath>
#include <functional>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "evidence/gis/writing/label_point.h"
#include "evidence/gis/writing/node_grid.h"
#include "evidence/gis/writing/stretches.h"
#include "tests/support/files.h"
#include "vexa_libs/ring.h"
#include "vexa_libs/topology.h"

using vexageo::CPunto;

namespace {

CAnilloFino Fino(std::initializer_list<std::pair<double, double>> puntos)
{
    CAnilloFino anillo;
    for (const auto& [x, y] : puntos)
        anillo.push_back({std::llround(x * kFinos), std::llround(y * kFinos)});
    return anillo;
}

/// A ring that doesn't cross itself: a star around a point, by steps of its angle.
CAnilloFino Estrella(std::mt19937& azar, double x, double y, double radio)
{
    constexpr int kPuntas = 24;
    CAnilloFino anillo;
    for (int i = 0; i < kPuntas; ++i) {
        const double angulo = 6.283185307 * i / kPuntas;
        const double r = radio * (0.2 + 0.8 * static_cast<double>(azar() % 1000) / 1000);
        anillo.push_back({std::llround((x + r * std::cos(angulo)) * kFinos),
                          std::llround((y + r * std::sin(angulo)) * kFinos)});
    }
    return anillo;
}

using CArista = std::pair<std::pair<int, int>, std::pair<int, int>>;

std::set<CArista> AristasDe(const std::vector<CAnillo>& anillos)
{
    std::set<CArista> aristas;
    for (const CAnillo& anillo : anillos)
        for (std::size_t i = 0; i < anillo.size(); ++i) {
            const CPunto<int>& a = anillo[i];
            const CPunto<int>& b = anillo[(i + 1) % anillo.size()];
            aristas.insert(std::minmax(std::pair(a.X, a.Y), std::pair(b.X, b.Y)));
        }
    return aristas;
}

std::int64_t Giro(std::pair<int, int> a, std::pair<int, int> b, std::pair<int, int> p)
{
    return std::int64_t{b.first - a.first} * (p.second - a.second) -
           std::int64_t{b.second - a.second} * (p.first - a.first);
}

/// Tells whether two edges have a point in common that isn't an end of both.
bool SeCortan(const CArista& e, const CArista& f)
{
    const auto [a, b] = e;
    const auto [c, d] = f;
    const auto signo = [](std::int64_t giro) { return (giro > 0) - (giro < 0); };
    const int ladoC = signo(Giro(a, b, c));
    const int ladoD = signo(Giro(a, b, d));
    const int ladoA = signo(Giro(c, d, a));
    const int ladoB = signo(Giro(c, d, b));
    const auto entre = [](std::pair<int, int> p, std::pair<int, int> q, std::pair<int, int> r) {
        return r != p && r != q && std::min(p.first, q.first) <= r.first &&
               r.first <= std::max(p.first, q.first) && std::min(p.second, q.second) <= r.second &&
               r.second <= std::max(p.second, q.second);
    };
    return (ladoC * ladoD < 0 && ladoA * ladoB < 0) || (ladoC == 0 && entre(a, b, c)) ||
           (ladoD == 0 && entre(a, b, d)) || (ladoA == 0 && entre(c, d, a)) ||
           (ladoB == 0 && entre(c, d, b));
}

} // namespace

TEST(NodeGrid, KnowsTheCellsThatAWayCrosses)
{
    const CFino nudo{0, 0};
    const struct {
        const char* motivo;
        CFino a;
        CFino b;
        bool atraviesa;
    } casos[] = {
        {"through the middle", {-9000, 0}, {9000, 0}, true},
        {"past it", {-9000, 600}, {9000, 600}, false},
        {"ends inside", {9000, 9000}, {499, 499}, true},
        {"ends on its own side", {-9000, 0}, {-500, 0}, true},
        {"ends on the other one's side", {9000, 0}, {500, 0}, false},
        {"along its own side", {-500, -9000}, {-500, 9000}, true},
        {"along the other one's side", {500, -9000}, {500, 9000}, false},
        {"through its own corner", {-1000, 0}, {0, -1000}, true},
        {"touches a corner of others", {0, 1000}, {1000, 0}, false},
        {"from corner to corner of others", {-500, 500}, {500, -500}, true},
        {"the same, longer", {-9000, 9000}, {9000, -9000}, true},
        {"touches the corner above", {-1000, 0}, {0, 1000}, false},
        {"a point", {0, 0}, {0, 0}, true},
        {"a point on the other side", {500, 0}, {500, 0}, false},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(Atraviesa(caso.a, caso.b, nudo), caso.atraviesa) << caso.motivo;
        EXPECT_EQ(Atraviesa(caso.b, caso.a, nudo), caso.atraviesa) << caso.motivo << ", back";
    }
}

TEST(NodeGrid, FindsTheSameNodesAsALookAtEach)
{
    std::mt19937 azar(1);
    const auto coordenada = [&](int hasta) {
        return static_cast<std::int64_t>(azar() % static_cast<unsigned>(hasta));
    };
    std::vector<CNudo> nudos;
    for (int i = 0; i < 3000; ++i)
        nudos.push_back({{coordenada(400) * kFinos, coordenada(4000) * kFinos}, i % 2 == 0});
    const CRejillaNudos rejilla(nudos);
    for (int i = 0; i < 2000; ++i) {
        const CFino a = nudos[azar() % nudos.size()].punto;
        const CFino b{coordenada(400'000), coordenada(4'000'000)};
        CAnilloFino camino;
        rejilla.Camino(a, b, camino);
        std::set<CFino> esperados = {Redondea(a), Redondea(b)};
        for (const CNudo& nudo : nudos)
            if (nudo.atrae ? Atraviesa(a, b, nudo.punto) : PasaPor(a, b, nudo.punto))
                esperados.insert(nudo.punto);
        ASSERT_EQ(std::set<CFino>(camino.begin(), camino.end()), esperados);
        ASSERT_EQ(camino.front(), Redondea(a));
        ASSERT_EQ(camino.back(), Redondea(b));
        ASSERT_EQ(camino.size(), esperados.size());
    }
}

TEST(Noding, LeavesNothingThatCrossesAndHardlyMovesAnything)
{
    for (unsigned semilla = 0; semilla < 30; ++semilla) {
        SCOPED_TRACE(semilla);
        std::mt19937 azar(semilla);
        const double lado = semilla % 3 == 0 ? 40 : 4000; // units: crowded, and not
        std::vector<CAnilloFino> anillos;
        for (int i = 0; i < 12; ++i)
            anillos.push_back(Estrella(azar, static_cast<double>(azar() % 1000) / 1000 * lado,
                                       static_cast<double>(azar() % 1000) / 1000 * lado, lado));
        std::vector<CAnillo> redondos;
        ASSERT_TRUE(Anuda(anillos, {}, redondos));
        ASSERT_EQ(redondos.size(), anillos.size());
        const std::set<CArista> aristas = AristasDe(redondos);
        for (const CArista& e : aristas)
            for (const CArista& f : aristas)
                ASSERT_FALSE(e < f && SeCortan(e, f));
        for (std::size_t i = 0; i < anillos.size(); ++i) {
            CAnillo fino; // the same in thousandths, which a ring of this size has room for
            double borde = 0;
            for (std::size_t k = 0; k < anillos[i].size(); ++k) {
                const CFino& a = anillos[i][k];
                const CFino& b = anillos[i][(k + 1) % anillos[i].size()];
                fino.emplace_back(static_cast<int>(a.x), static_cast<int>(a.y));
                borde += std::hypot(static_cast<double>(b.x - a.x), static_cast<double>(b.y - a.y));
            }
            const double antes = vexageo::DobleArea(fino) / 2 / kFinos / kFinos;
            const double ahora = vexageo::DobleArea(redondos[i]) / 2;
            EXPECT_LE(std::fabs(antes - ahora), 2 * borde / kFinos);
        }
    }
}

TEST(Noding, GivesNeighboursTheSamePoints)
{
    // A wall between two parcels, the left one's corner a hair off the right one's edge.
    const std::vector<CAnilloFino> anillos = {
        Fino({{0, 0}, {100.0004, 0}, {100.0004, 50.2}, {0, 50}}),
        Fino({{100, -30}, {200, -30}, {200, 90}, {100, 90}})};
    std::vector<CAnillo> redondos;
    ASSERT_TRUE(Anuda(anillos, {}, redondos));
    EXPECT_EQ(redondos[1],
              (CAnillo{{100, -30}, {200, -30}, {200, 90}, {100, 90}, {100, 50}, {100, 0}}));
}

TEST(Noding, KeepsADrawingsOwnPointsAndAddsThoseThatLieOnIt)
{
    const std::vector<CAnilloFino> anillos = {
        Fino({{0, 0}, {100, 0}, {100, 100}, {0, 100}}), Fino({{100, 40}, {200, 40}, {200, 60}}),
        Fino({{90, 90}, {110, 90}, {110, 113}, {90, 111}})}; // crosses the first one
    std::vector<CAnillo> redondos;
    ASSERT_TRUE(Anuda(anillos, {}, redondos));
    EXPECT_EQ(redondos[0], (CAnillo{{0, 0}, {100, 0}, {100, 40}, {100, 100}, {0, 100}}));
    EXPECT_EQ(redondos[2], (CAnillo{{90, 90}, {110, 90}, {110, 113}, {90, 111}}));
}

TEST(Noding, EmptiesWhatRoundingLeavesWithoutASurface)
{
    std::vector<CAnillo> redondos;
    ASSERT_TRUE(
        Anuda({Fino({{0.1, 0.1}, {0.3, 0.1}, {0.2, 0.4}}), Fino({{10, 0}, {20, 0.2}, {30, 0.1}}),
               Fino({{0, 100}, {50, 100}, {50, 150}, {25, 125}, {25.2, 180}, {24.9, 125.1}})},
              {}, redondos));
    EXPECT_TRUE(redondos[0].empty());
    EXPECT_TRUE(redondos[1].empty());
    EXPECT_EQ(redondos[2].size(), 4U) << "a spike goes, the rest stays";
}

TEST(Stretches, AreCutWhereOutlinesPartAndSharedWithTheirSign)
{
    const CAnillo izquierda = {{0, 0}, {100, 0}, {100, 100}, {0, 100}};
    const CAnillo derecha = {{100, 0}, {200, 0}, {200, 100}, {100, 100}};
    const CAnillo suelta = {{900, 900}, {990, 900}, {990, 990}};
    const CAnillo alReves = {{990, 990}, {990, 900}, {900, 900}};
    CTramos tramos({izquierda, derecha, suelta, alReves}, std::identity());
    CCarpetaPrueba carpeta;
    vexageo::CEscritorDibujo dibujo;
    const std::vector<int> i = tramos.Pon(izquierda, dibujo);
    const std::vector<int> d = tramos.Pon(derecha, dibujo);
    ASSERT_EQ(i.size(), 2U);
    ASSERT_EQ(d.size(), 2U);
    EXPECT_TRUE(i[0] == -d[0] || i[0] == -d[1]) << "the wall between them";
    const std::vector<int> s = tramos.Pon(suelta, dibujo);
    const std::vector<int> r = tramos.Pon(alReves, dibujo);
    ASSERT_EQ(s.size(), 1U);
    EXPECT_EQ(r, std::vector<int>{-s[0]});
    // What is joined again from the drawing is the ring.
    ASSERT_TRUE(dibujo.Abre(carpeta.En("1.BIN")));
    dibujo.Cierra();
    CFile bin;
    ASSERT_TRUE(bin.Open(carpeta.En("1.BIN"), CFile::modeRead));
    for (const auto& [anillo, suyos] :
         {std::pair(izquierda, i), std::pair(derecha, d), std::pair(alReves, r)}) {
        vexageo::CLinea<int> linea;
        ASSERT_TRUE(vexageo::ConstruyeLinea(
            vexageo::NuevoPoligono(1, vexageo::CPoligonoTopologico::kParcela, anillo, suyos), &bin,
            linea, [] { return false; }));
        EXPECT_EQ(AristasDe({linea.Puntos()}).size(), anillo.size() + 1) << "and its closing point";
        EXPECT_EQ(linea.Puntos().front(), linea.Puntos().back());
        EXPECT_EQ(linea.Area(1), vexageo::DobleArea(anillo) / 2);
    }
}

TEST(LabelPoint, LiesStrictlyInsideWhateverIsWished)
{
    const CAnillo cuadro = {{0, 0}, {100, 0}, {100, 100}, {0, 100}};
    const CAnillo hueco = {{40, 0}, {100, 0}, {100, 90}, {40, 90}}; // along two sides
    const struct {
        const char* motivo;
        std::vector<CAnillo> anillos;
        std::optional<CPunto<int>> pedido;
        bool comoSePide;
        bool dentro;
    } casos[] = {
        {"as wished", {cuadro}, CPunto<int>(1, 99), true, true},
        {"on a boundary", {cuadro}, CPunto<int>(0, 50), false, true},
        {"outside", {cuadro}, CPunto<int>(-5, 50), false, true},
        {"no wish", {cuadro}, std::nullopt, false, true},
        {"in a hole", {cuadro, hueco}, CPunto<int>(50, 50), false, true},
        {"on a hole's boundary", {cuadro, hueco}, CPunto<int>(40, 50), false, true},
        {"a sliver", {{{0, 0}, {1000, 1}, {1000, 4}}}, std::nullopt, false, true},
        {"nothing inside", {{{0, 0}, {1000, 0}, {1000, 1}}}, std::nullopt, false, false},
        {"one point inside", {{{0, 0}, {2, 0}, {2, 2}, {0, 2}}}, std::nullopt, false, true},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CPuntoRotulo sitio = SituaRotulo(caso.anillos, caso.pedido);
        EXPECT_EQ(caso.pedido && EnElMismoSitio(sitio.punto, *caso.pedido), caso.comoSePide);
        EXPECT_EQ(sitio.dentro, caso.dentro);
        EXPECT_EQ(vexageo::Situa(caso.anillos[0], sitio.punto),
                  caso.dentro ? vexageo::Lugar::Dentro : vexageo::Lugar::Borde);
        for (std::size_t i = 1; i < caso.anillos.size(); ++i)
            EXPECT_EQ(vexageo::Situa(caso.anillos[i], sitio.punto), vexageo::Lugar::Fuera);
    }
}
