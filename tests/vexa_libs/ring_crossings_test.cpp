#include "vexa_libs/ring_crossings.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "vexa_libs/orientation.h"

using vexageo::BuscaEncuentro;
using vexageo::CPunto;
using vexageo::Cruz;
using vexageo::Encuentro;
using vexageo::Hacia;

namespace {

using CAnillo = std::vector<CPunto<int>>;
enum class Espera { Nada, Cruza, Repasa };

Espera Dice(const CAnillo& anillo)
{
    const auto encuentro = BuscaEncuentro(anillo);
    if (!encuentro)
        return Espera::Nada;
    return encuentro->clase == Encuentro::Cruza ? Espera::Cruza : Espera::Repasa;
}

/// Asks from each corner on, in both directions and in all quarters, as none may matter.
void EsperaSiempre(const CAnillo& anillo, Espera esperado)
{
    CAnillo girado = anillo;
    for (int cuarto = 0; cuarto < 4; ++cuarto) {
        for (std::size_t vuelta = 0; vuelta < anillo.size(); ++vuelta) {
            std::rotate(girado.begin(), girado.begin() + 1, girado.end());
            CAnillo cerrado = girado;
            cerrado.push_back(girado.front());
            EXPECT_EQ(Dice(girado), esperado) << "from corner " << vuelta;
            EXPECT_EQ(Dice(cerrado), esperado) << "closed, from corner " << vuelta;
            EXPECT_EQ(Dice({girado.rbegin(), girado.rend()}), esperado) << "reversed " << vuelta;
        }
        for (CPunto<int>& punto : girado)
            punto = {-punto.Y, punto.X};
    }
}

// The slow way to the same answer: every pair of edges, and every pair of passages through a point.

int Signo(vexageo::Ancho n)
{
    return (n > 0) - (n < 0);
}

bool EstaEnMedio(const CPunto<int>& a, const CPunto<int>& b, const CPunto<int>& p)
{
    const auto v = Hacia(a, p);
    const auto w = Hacia(p, b);
    return Cruz(v, w) == 0 && v.x * w.x + v.y * w.y > 0;
}

/// Whether a turn to the left from `desde` meets `p` before `hasta`.
bool EnElGiro(const vexageo::CVector& desde, const vexageo::CVector& p,
              const vexageo::CVector& hasta)
{
    const auto angulo = [&](const vexageo::CVector& v) {
        const double giro = std::atan2(static_cast<double>(v.y), static_cast<double>(v.x)) -
                            std::atan2(static_cast<double>(desde.y), static_cast<double>(desde.x));
        return giro < 0 ? giro + 2 * std::numbers::pi : giro;
    };
    return angulo(p) < angulo(hasta);
}

struct CPaso {
    CPunto<int> antes, en, despues;
};

struct CHallado {
    bool cruza = false;
    bool repasa = false;
};

CHallado ALoLento(const CAnillo& anillo)
{
    CHallado hallado;
    const std::size_t n = anillo.size();
    const auto punto = [&](std::size_t i) { return anillo[i % n]; };
    std::vector<CPaso> pasos;
    for (std::size_t i = 0; i < n; ++i) {
        pasos.push_back({punto(i + n - 1), punto(i), punto(i + 1)});
        for (std::size_t k = 0; k < n; ++k)
            if (EstaEnMedio(punto(k), punto(k + 1), punto(i)))
                pasos.push_back({punto(k), punto(i), punto(k + 1)});
        for (std::size_t k = i + 1; k < n; ++k) {
            const auto &a = punto(i), &b = punto(i + 1), &c = punto(k), &d = punto(k + 1);
            hallado.cruza |= Signo(Cruz(a, b, c)) * Signo(Cruz(a, b, d)) < 0 &&
                             Signo(Cruz(c, d, a)) * Signo(Cruz(c, d, b)) < 0;
        }
    }
    for (std::size_t i = 0; i < pasos.size(); ++i) {
        const CPaso& uno = pasos[i];
        const auto va = Hacia(uno.en, uno.antes), vb = Hacia(uno.en, uno.despues);
        const auto igual = [](const vexageo::CVector& v, const vexageo::CVector& w) {
            return Cruz(v, w) == 0 && v.x * w.x + v.y * w.y > 0;
        };
        hallado.repasa |= igual(va, vb);
        for (std::size_t k = i + 1; k < pasos.size(); ++k) {
            const CPaso& otro = pasos[k];
            if (!(uno.en == otro.en))
                continue;
            const auto wa = Hacia(otro.en, otro.antes), wb = Hacia(otro.en, otro.despues);
            if (igual(va, wa) || igual(va, wb) || igual(vb, wa) || igual(vb, wb))
                hallado.repasa = true;
            else
                hallado.cruza |= EnElGiro(va, wa, vb) != EnElGiro(va, wb, vb);
        }
    }
    return hallado;
}

constexpr int kLargo = 100000;

/// A comb whose long leaning teeth all lie in the same box.
CAnillo Peine(int dientes)
{
    constexpr int kAlto = 2000000000;
    CAnillo anillo;
    for (int i = 0; i < dientes; ++i) {
        anillo.emplace_back(4 * i, -kAlto + 4 * i);
        anillo.emplace_back(kAlto + 4 * i, 4 * i + 1);
    }
    anillo.emplace_back(kAlto + 4 * dientes, -kAlto);
    return anillo;
}

CAnillo Rueda(int puntos)
{
    CAnillo anillo;
    for (int i = 0; i < puntos; ++i) {
        const double giro = 2 * std::numbers::pi * i / puntos;
        const double radio = i % 2 == 0 ? 2.0e9 : 1.9e9;
        anillo.emplace_back(static_cast<int>(radio * std::cos(giro)),
                            static_cast<int>(radio * std::sin(giro)));
    }
    return anillo;
}

} // namespace

TEST(RingCrossings, TellsCrossingFromTouching)
{
    using enum Espera;
    const struct {
        const char* motivo;
        CAnillo anillo;
        Espera esperado;
    } casos[] = {
        {"no points", {}, Nada},
        {"one point", {{1, 1}}, Nada},
        {"one point many times", {{1, 1}, {1, 1}, {1, 1}}, Nada},
        {"there and back", {{0, 0}, {10, 0}}, Repasa},
        {"square", {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, Nada},
        {"repeated points", {{0, 0}, {0, 0}, {10, 0}, {10, 10}, {10, 10}, {0, 10}}, Nada},
        {"a point in the middle of a side", {{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}}, Nada},
        {"bow", {{0, 0}, {10, 10}, {10, 0}, {0, 10}}, Cruza},
        {"bow with its knot as a point",
         {{0, 0}, {5, 5}, {10, 10}, {10, 0}, {5, 5}, {0, 10}},
         Cruza},
        {"bow with a point on one way only", {{0, 0}, {5, 5}, {10, 10}, {10, 0}, {0, 10}}, Cruza},
        {"two triangles that touch in a corner of both",
         {{0, 0}, {10, 0}, {5, 5}, {10, 10}, {0, 10}, {5, 5}},
         Nada},
        {"a corner on a side from within", {{0, 0}, {10, 0}, {10, 10}, {5, 0}, {0, 10}}, Nada},
        {"a corner on a side from outside",
         {{0, 0},
          {10, 0},
          {10, 9},
          {5, 9},
          {3, 5},
          {1, 9},
          {1, 10},
          {20, 10},
          {20, 20},
          {-5, 20},
          {-5, 5},
          {0, 5}},
         Nada},
        {"through a side, by a corner on it", {{0, 0}, {10, 0}, {5, 0}, {5, -9}}, Repasa},
        {"a corner passes a side and comes back",
         {{0, 0}, {10, 0}, {10, 10}, {5, -1}, {0, 10}},
         Cruza},
        {"a way goes out and in at one corner",
         {{0, 0}, {6, 0}, {6, 6}, {0, 6}, {3, 3}, {-3, 3}},
         Nada},
        {"a spike", {{0, 0}, {10, 0}, {20, 0}, {10, 0}, {10, 10}}, Repasa},
        {"a spike half the way back", {{0, 0}, {20, 0}, {10, 0}, {10, 10}}, Repasa},
        {"a bridge to an island",
         {{0, 0},
          {20, 0},
          {20, 20},
          {0, 20},
          {0, 10},
          {5, 10},
          {5, 15},
          {8, 15},
          {8, 10},
          {5, 10},
          {0, 10}},
         Repasa},
        {"twice around", {{0, 0}, {9, 0}, {0, 9}, {0, 0}, {9, 0}, {0, 9}}, Repasa},
        {"three ways through one corner, none crosses",
         {{0, 0}, {9, 1}, {9, 2}, {0, 0}, {1, 9}, {0, 9}, {0, 0}, {-9, -1}, {-9, -2}},
         Nada},
        {"three ways through one corner, two cross",
         {{0, 0}, {9, 1}, {-9, -2}, {0, 0}, {1, 9}, {0, 9}, {0, 0}, {9, 5}, {9, 4}},
         Cruza},
        {"the whole plane of coordinates",
         {{INT_MIN, INT_MIN}, {INT_MAX, INT_MIN}, {INT_MAX, INT_MAX}, {INT_MIN, INT_MAX}},
         Nada},
        {"a bow over all of it",
         {{INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, {INT_MAX, INT_MIN}, {INT_MIN, INT_MAX}},
         Cruza},
        {"past a corner by less than the fraction of a unit",
         {{-2000000000, -1}, {2000000000, 2}, {2000000000, 9}, {0, 1}, {-2000000000, 9}},
         Nada},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        // Turned by quarters, the least coordinate would pass the greatest.
        if (!caso.anillo.empty() && caso.anillo.front().X == INT_MIN)
            EXPECT_EQ(Dice(caso.anillo), caso.esperado);
        else
            EsperaSiempre(caso.anillo, caso.esperado);
    }
}

TEST(RingCrossings, TellsThePlace)
{
    const auto encuentro = BuscaEncuentro({{0, 0, 7}, {10, 10}, {10, 0}, {0, 10}});
    ASSERT_TRUE(encuentro);
    EXPECT_EQ(encuentro->donde, CPunto<int>(5, 5));
    const auto lejos = BuscaEncuentro(
        {{INT_MIN, INT_MIN + 1}, {INT_MAX, INT_MAX}, {INT_MAX, INT_MIN + 1}, {INT_MIN, INT_MAX}});
    ASSERT_TRUE(lejos);
    EXPECT_NEAR(lejos->donde.X, 0, 1);
    EXPECT_NEAR(lejos->donde.Y, 0, 1);
}

TEST(RingCrossings, AgreesWithTheSlowWayOnCrowdedRings)
{
    std::mt19937 azar(7);
    int conAlgo = 0;
    for (int vez = 0; vez < 20000; ++vez) {
        std::uniform_int_distribution<int> coordenada(0, 2 + vez % 6);
        CAnillo anillo;
        for (int i = 0; i < 3 + vez % 8; ++i) {
            const CPunto<int> punto(coordenada(azar), coordenada(azar));
            if (anillo.empty() || !(anillo.back() == punto))
                anillo.push_back(punto);
        }
        while (anillo.size() > 1 && anillo.front() == anillo.back())
            anillo.pop_back();
        if (anillo.size() < 2)
            continue;
        const CHallado hallado = ALoLento(anillo);
        const Espera dice = Dice(anillo);
        ASSERT_EQ(dice != Espera::Nada, hallado.cruza || hallado.repasa) << "ring " << vez;
        ASSERT_TRUE(dice != Espera::Cruza || hallado.cruza) << "ring " << vez;
        ASSERT_TRUE(dice != Espera::Repasa || hallado.repasa) << "ring " << vez;
        conAlgo += dice == Espera::Nada ? 0 : 1;
    }
    EXPECT_GT(conAlgo, 1000);
    EXPECT_LT(conAlgo, 19000);
}

TEST(RingCrossings, GoesThroughLongRingsInNoTimeHoweverTheyLie)
{
    CAnillo rueda = Rueda(kLargo);
    EXPECT_EQ(Dice(rueda), Espera::Nada);
    std::swap(rueda[kLargo / 2], rueda[kLargo / 2 + 5]);
    EXPECT_EQ(Dice(rueda), Espera::Cruza);

    CAnillo peine = Peine(kLargo / 2);
    EXPECT_EQ(Dice(peine), Espera::Nada);
    std::swap(peine[kLargo / 2], peine[kLargo / 2 + 2]);
    EXPECT_EQ(Dice(peine), Espera::Cruza);

    CAnillo petalos; // all of them meet in one point
    for (int i = 0; i < kLargo / 3; ++i) {
        petalos.emplace_back(0, 0);
        petalos.emplace_back(1000000, 4 * i);
        petalos.emplace_back(1000000, 4 * i + 1);
    }
    EXPECT_EQ(Dice(petalos), Espera::Nada);
    petalos[2] = {900000, 5};
    EXPECT_EQ(Dice(petalos), Espera::Cruza);
}
