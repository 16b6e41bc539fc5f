#include "vexa_libs/ring.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <numeric>
#include <random>
#include <span>

#include <gtest/gtest.h>

#include "vexa_libs/entity.h"
#include "vexa_libs/ring_index.h"

using vexageo::CIndiceAnillos;
using vexageo::CLinea;
using vexageo::CPunto;
using vexageo::Lugar;
using vexageo::Situa;

namespace {

using CAnillo = std::vector<CPunto<int>>;

CAnillo Cuadrado(int x, int y, int lado)
{
    return {{x, y}, {x + lado, y}, {x + lado, y + lado}, {x, y + lado}};
}

/// Asks from each corner on and in both directions, as neither may matter, and closed as well.
void EsperaLugar(const CAnillo& anillo, const CPunto<int>& punto, Lugar esperado)
{
    CAnillo girado = anillo;
    for (std::size_t vuelta = 0; vuelta < anillo.size(); ++vuelta) {
        std::rotate(girado.begin(), girado.begin() + 1, girado.end());
        CAnillo cerrado = girado;
        cerrado.push_back(girado.front());
        const CAnillo reves(girado.rbegin(), girado.rend());
        EXPECT_EQ(Situa(girado, punto), esperado) << "from corner " << vuelta;
        EXPECT_EQ(Situa(cerrado, punto), esperado) << "closed, from corner " << vuelta;
        EXPECT_EQ(Situa(reves, punto), esperado) << "reversed, from corner " << vuelta;
        CLinea<int> linea;
        linea.Puntos() = girado;
        EXPECT_EQ(linea.EstaDentro(punto) != 0, esperado != Lugar::Fuera) << "as a line";
    }
}

CIndiceAnillos IndiceDe(const std::vector<CAnillo>& anillos)
{
    CIndiceAnillos indice;
    for (std::size_t i = 0; i < anillos.size(); ++i)
        indice.Añade(anillos[i], vexageo::DobleArea(anillos[i]), static_cast<int>(i));
    return indice;
}

/// What the index of the rings must answer: by a walk of them all.
int Andando(std::span<const CAnillo> anillos, const CPunto<int>& punto)
{
    const auto area = [&](int i) {
        return vexageo::DobleArea(anillos[static_cast<std::size_t>(i)]);
    };
    int hallado = -1;
    for (int i = 0; i < static_cast<int>(anillos.size()); ++i)
        if (Situa(anillos[static_cast<std::size_t>(i)], punto) != Lugar::Fuera &&
            (hallado < 0 || area(i) < area(hallado)))
            hallado = i;
    return hallado;
}

} // namespace

TEST(Anillo, TellsInsideBoundaryAndOutside)
{
    const CAnillo rombo = {{0, -10}, {10, 0}, {0, 10}, {-10, 0}};
    const CAnillo muesca = {{0, 0}, {10, 0}, {10, 10}, {5, 5}, {0, 10}};
    const CAnillo escalon = {{0, 0}, {10, 0}, {10, 5}, {5, 5}, {5, 10}, {0, 10}};
    const CAnillo repetido = {{0, 0}, {0, 0}, {10, 0}, {10, 10}, {10, 10}, {0, 10}};
    const CAnillo ocho = {{0, 0}, {10, 10}, {10, 0}, {0, 10}}; // crosses itself
    const CAnillo ida = {{0, 0}, {10, 0}, {0, 0}};
    const struct {
        const char* motivo;
        const CAnillo& anillo;
        CPunto<int> punto;
        Lugar lugar;
    } casos[] = {
        {"the ray leaves through a corner", rombo, {0, 0}, Lugar::Dentro},
        {"a corner", rombo, {10, 0}, Lugar::Borde},
        {"level with a corner, outside", rombo, {-11, 0}, Lugar::Fuera},
        {"level with the lowest corner", rombo, {-5, -10}, Lugar::Fuera},
        {"level with the highest corner", rombo, {5, 10}, Lugar::Fuera},
        {"on a slanted edge", rombo, {5, 5}, Lugar::Borde},
        {"one step off it", rombo, {5, 6}, Lugar::Fuera},
        {"in the notch", muesca, {5, 6}, Lugar::Fuera},
        {"at the bottom of the notch", muesca, {5, 5}, Lugar::Borde},
        {"below the notch", muesca, {5, 4}, Lugar::Dentro},
        {"on a level edge", escalon, {7, 5}, Lugar::Borde},
        {"on the line of a level edge, inside", escalon, {2, 5}, Lugar::Dentro},
        {"on the line of a level edge, outside", escalon, {12, 5}, Lugar::Fuera},
        {"repeated corners", repetido, {5, 5}, Lugar::Dentro},
        {"a lobe of the eight", ocho, {1, 5}, Lugar::Dentro},
        {"between the lobes", ocho, {5, 1}, Lugar::Fuera},
        {"where it crosses", ocho, {5, 5}, Lugar::Borde},
        {"there and back holds its own line", ida, {4, 0}, Lugar::Borde},
        {"and nothing else", ida, {4, 1}, Lugar::Fuera},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EsperaLugar(caso.anillo, caso.punto, caso.lugar);
    }
    EXPECT_EQ(Situa({{0, 0}, {10, 0}}, {5, 0}), Lugar::Fuera) << "two points hold nothing";
    EXPECT_EQ(Situa({}, {0, 0}), Lugar::Fuera);
}

TEST(Anillo, IsExactAtTheEndsOfTheCoordinates)
{
    const CAnillo todo = {
        {INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MAX}};
    EsperaLugar(todo, {0, 0}, Lugar::Dentro);
    EsperaLugar(todo, {INT_MAX, 7}, Lugar::Borde);
    // The diagonal passes one unit from the point; in floating point it would pass through it.
    const CAnillo mitad = {{INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MAX}};
    EsperaLugar(mitad, {5, 5}, Lugar::Borde);
    EsperaLugar(mitad, {5, 6}, Lugar::Dentro);
    EsperaLugar(mitad, {6, 5}, Lugar::Fuera);
    CLinea<int> linea;
    linea.Puntos() = todo;
    EXPECT_DOUBLE_EQ(linea.Area(100.0), 4294967295.0 * 4294967295.0 / 10000);
}

TEST(Linea, JoinsStretchesWithoutRepeatingTheirEnds)
{
    const struct {
        const char* motivo;
        CAnillo una, otra;
        bool sinRepetir;
        std::size_t puntos;
    } casos[] = {
        {"the end repeats", {{0, 0}, {1, 0}}, {{1, 0}, {2, 0}}, true, 3},
        {"it is to be repeated", {{0, 0}, {1, 0}}, {{1, 0}, {2, 0}}, false, 4},
        {"another height is another point", {{0, 0}, {1, 0, 5}}, {{1, 0}, {2, 0}}, true, 4},
        {"nothing before", {}, {{1, 0}, {2, 0}}, true, 2},
        {"nothing behind", {{0, 0}, {1, 0}}, {}, true, 2},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CLinea<int> una;
        una.Puntos() = caso.una;
        CLinea<int> otra;
        otra.Puntos() = caso.otra;
        EXPECT_TRUE(una.Une(otra, caso.sinRepetir));
        EXPECT_EQ(una.Puntos().size(), caso.puntos);
    }
}

TEST(IndiceAnillos, AnswersAsAWalkOfAllRingsDoes)
{
    // Squares side by side, within one another, equal ones, and one without an extent.
    std::vector<CAnillo> anillos;
    for (int i = 0; i < 400; ++i)
        anillos.push_back(Cuadrado(i % 20 * 10, i / 20 * 10, 10));
    for (int i = 0; i < 50; ++i)
        anillos.push_back(Cuadrado(i, i, 200 - 2 * i));
    anillos.push_back(anillos[7]);
    anillos.push_back({{3, 3}});
    EXPECT_EQ(CIndiceAnillos().Busca({5, 5}), -1) << "no ring at all";
    const CIndiceAnillos indice = IndiceDe(anillos);
    for (int x = -3; x < 210; x += 3) {
        for (int y = -3; y < 210; y += 7) {
            const CPunto<int> punto(x, y);
            ASSERT_EQ(indice.Busca(punto), Andando(anillos, punto)) << x << ", " << y;
        }
    }
}

namespace {

/// Strips of a slope side by side, a hundred thousand long.
std::vector<CAnillo> Tiras(int cuantas, double pendiente)
{
    const int sube = static_cast<int>(100000 * pendiente);
    std::vector<CAnillo> tiras;
    for (int y = 0; y < cuantas * 100; y += 100)
        tiras.push_back({{0, y}, {100000, y + sube}, {100000, y + sube + 100}, {0, y + 100}});
    return tiras;
}

/// Squares within one another, the widest first, turned by an angle whose tangent is 3 / 5.
std::vector<CAnillo> Marcos(int cuantos)
{
    std::vector<CAnillo> marcos;
    for (int r = cuantos; r > 0; --r)
        marcos.push_back({{-4 * r, -r}, {r, -4 * r}, {4 * r, r}, {-r, 4 * r}});
    return marcos;
}

} // namespace

TEST(IndiceAnillos, AsksFewOfManyRings)
{
    std::vector<CAnillo> celdas;
    for (int i = 0; i < 10000; ++i)
        celdas.push_back(Cuadrado(i % 100 * 10, i / 100 * 10, 10));
    const auto enTira = [](double pendiente) {
        return CPunto<int>(40000, static_cast<int>(40000 * pendiente) + 500050);
    };
    const struct {
        const char* motivo;
        std::vector<CAnillo> anillos;
        CPunto<int> punto;
        int hallado;
        int preguntas; // no more
    } casos[] = {
        {"side by side", celdas, {505, 505}, 5050, 1},
        {"within one another", Marcos(10000), {0, 0}, 9999, 1},
        {"level strips", Tiras(10000, 0), enTira(0), 5000, 1},
        {"strips along a diagonal", Tiras(10000, 1), enTira(1), 5000, 2},
        {"strips along the other one", Tiras(10000, -1), enTira(-1), 5000, 2},
        {"a slope of one half", Tiras(10000, 0.5), enTira(0.5), 5000, 2},
        {"of three fifths, falling", Tiras(10000, -0.6), enTira(-0.6), 5000, 2},
        {"of a tenth", Tiras(10000, 0.1), enTira(0.1), 5000, 2},
        {"of three", Tiras(10000, 3), enTira(3), 5000, 2},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CIndiceAnillos indice = IndiceDe(caso.anillos);
        int preguntas = 0;
        const auto cuenta = [&](int, Lugar lugar) {
            ++preguntas;
            return lugar != Lugar::Fuera;
        };
        EXPECT_EQ(indice.Busca(caso.punto, cuenta), caso.hallado);
        EXPECT_LE(preguntas, caso.preguntas);
    }
}

TEST(IndiceAnillos, AnswersAsAWalkDoesWhereSlantedRingsCross)
{
    // Long quadrangles of all slopes, so that most nodes hold what crosses, some at the ends of the
    // coordinates.
    std::mt19937 azar(13);
    std::vector<CAnillo> anillos;
    for (int i = 0; i < 1500; ++i) {
        const int lado = i % 10 == 0 ? INT_MAX : 1'000'000;
        const auto en = [&](int hasta) {
            return static_cast<int>(azar() % static_cast<unsigned>(hasta));
        };
        const int x = en(lado / 2), y = en(lado / 2) - lado / 4;
        const int dx = en(lado / 2), dy = en(lado / 2) - lado / 4;
        const int ancho = 1 + en(lado / 500);
        anillos.push_back(
            {{x, y}, {x + dx, y + dy}, {x + dx - ancho, y + dy + ancho}, {x, y + ancho}});
    }
    const CIndiceAnillos indice = IndiceDe(anillos);
    for (int k = 0; k < 1500; ++k) { // on edges, near them, and anywhere
        const CAnillo& anillo = anillos[azar() % anillos.size()];
        const CPunto<int>& a = anillo[azar() % 4];
        const CPunto<int>& b = anillo[azar() % 4];
        const CPunto<int> punto(std::midpoint(a.X, b.X), std::midpoint(a.Y, b.Y) + k % 3);
        ASSERT_EQ(indice.Busca(punto), Andando(anillos, punto)) << punto.X << ", " << punto.Y;
    }
}

namespace {

/// Rings of many kinds: of few different coordinates, so that edges lie on one another, corners on
/// edges, and the ring crosses itself; combs; smooth ones; and those as large as coordinates go.
CAnillo AnilloAlAzar(std::mt19937& azar)
{
    const int puntos = 3 + static_cast<int>(azar() % 700);
    const int clase = static_cast<int>(azar() % 4);
    const int lado = 2 + static_cast<int>(azar() % 60);
    const auto hasta = [&](int n) { return static_cast<int>(azar() % static_cast<unsigned>(n)); };
    CAnillo anillo;
    for (int i = 0; i < puntos; ++i) {
        const double angulo = 6.283185307179586 * i / puntos;
        if (clase == 0)
            anillo.push_back({hasta(lado), hasta(lado)});
        else if (clase == 1)
            anillo.push_back({i / 2, i / 2 % 2 == 0 ? lado : hasta(3)});
        else if (clase == 2)
            anillo.push_back({static_cast<int>(lado * std::cos(angulo)),
                              static_cast<int>(lado * std::sin(angulo))});
        else
            anillo.push_back({static_cast<int>(azar()), static_cast<int>(azar())});
    }
    return anillo;
}

} // namespace

TEST(AnilloConsultado, AnswersAsAWalkOfAllEdgesDoes)
{
    std::mt19937 azar(7);
    for (int vez = 0; vez < 300; ++vez) {
        const CAnillo anillo = AnilloAlAzar(azar);
        const vexageo::CAnilloConsultado consultado(anillo);
        for (int k = 0; k < 1000; ++k) { // near its corners, level with them, and on its edges
            const CPunto<int>& a = anillo[azar() % anillo.size()];
            const CPunto<int>& b = anillo[azar() % anillo.size()];
            const CPunto<int> puntos[] = {
                {a.X, b.Y}, {a.X, a.Y}, {std::midpoint(a.X, b.X), std::midpoint(a.Y, b.Y)}};
            for (const CPunto<int>& punto : puntos)
                ASSERT_EQ(consultado.Situa(punto), Situa(anillo, punto))
                    << "ring " << vez << " at " << punto.X << ", " << punto.Y;
        }
    }
}

TEST(IndiceAnillos, AnswersAsAWalkDoesForRingsOfManyKinds)
{
    std::mt19937 azar(11);
    std::vector<CAnillo> anillos(200);
    CIndiceAnillos indice;
    for (std::size_t cuantos = 0; cuantos < anillos.size();) { // asked between one and the next too
        anillos[cuantos] = AnilloAlAzar(azar);
        indice.Añade(anillos[cuantos], vexageo::DobleArea(anillos[cuantos]),
                     static_cast<int>(cuantos));
        ++cuantos;
        for (int k = 0; k < 20; ++k) {
            const CAnillo& anillo = anillos[azar() % cuantos];
            const CPunto<int>& a = anillo[azar() % anillo.size()];
            const CPunto<int>& b = anillo[azar() % anillo.size()];
            const CPunto<int> punto(std::midpoint(a.X, b.X), k % 2 == 0 ? a.Y : b.Y);
            ASSERT_EQ(indice.Busca(punto), Andando(std::span(anillos).first(cuantos), punto))
                << punto.X << ", " << punto.Y;
        }
    }
}

TEST(IndiceAnillos, ReachesTheEndsOfTheCoordinates)
{
    const CAnillo todo = {
        {INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MAX}};
    CIndiceAnillos indice;
    indice.Añade(todo, 1, 5);
    for (const CPunto<int>& esquina : todo)
        EXPECT_EQ(indice.Busca(esquina), 5);
    EXPECT_EQ(indice.Busca({0, -1}), 5);
}

TEST(IndiceAnillos, OneThatWasMovedFromHoldsNothingAndTakesRingsAgain)
{
    const CAnillo uno = Cuadrado(0, 0, 10);
    const CAnillo otro = Cuadrado(0, 0, 10);
    CIndiceAnillos indice;
    indice.Añade(uno, 1, 5);
    EXPECT_EQ(indice.Busca({5, 5}), 5);
    CIndiceAnillos tomado = std::move(indice);
    EXPECT_EQ(tomado.Busca({5, 5}), 5);
    // NOLINTNEXTLINE(bugprone-use-after-move): it counts none, and may be asked
    EXPECT_EQ(indice.Busca({5, 5}), -1);
    indice.Añade(otro, 1, 7);
    EXPECT_EQ(indice.Busca({5, 5}), 7);
    tomado = std::move(indice);
    EXPECT_EQ(tomado.Busca({5, 5}), 7);
    EXPECT_EQ(indice.Busca({5, 5}), -1); // NOLINT(bugprone-use-after-move): as above
}
