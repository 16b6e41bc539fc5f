#include "vexa_libs/extent.h"

#include <climits>
#include <random>

#include <gtest/gtest.h>

#include "vexa_libs/extent_rows.h"

using vexageo::CCaja;
using vexageo::CCajasJuntas;
using vexageo::CMarco;
using vexageo::CMedidas;
using vexageo::CPunto;
using vexageo::CRumbo;

namespace {

using CPuntos = std::vector<CPunto<int>>;

constexpr double kOctavo = 0.785398163397448; // of a circle

/// Points within a square, which lies anywhere; some of its ends among them.
CPuntos PuntosAlAzar(std::mt19937& azar, int bits)
{
    const std::int64_t lado = std::int64_t{1} << bits;
    const auto desde = [&] {
        return static_cast<std::int64_t>(azar() % ((std::uint64_t{1} << 32) - lado + 1)) + INT_MIN;
    };
    const std::int64_t x = desde();
    const std::int64_t y = desde();
    const auto en = [&](std::int64_t inicio) {
        const auto k = azar();
        const std::int64_t hasta = k % 5 == 0 ? 0 : k % 5 == 1 ? lado - 1 : k % lado;
        return static_cast<int>(inicio + hasta);
    };
    CPuntos puntos;
    for (int i = 0; i < 5; ++i)
        puntos.emplace_back(en(x), en(y));
    return puntos;
}

CMarco MarcoAlAzar(std::mt19937& azar)
{
    switch (azar() % 4) {
    case 0:
        return CMarco();
    case 1:
        return CMarco::Diagonal();
    case 2:
        return CMarco::Girado(azar() % 2 == 0 ? kOctavo : -kOctavo);
    default:
        return CMarco::Girado(std::uniform_real_distribution<>(-kOctavo, kOctavo)(azar));
    }
}

} // namespace

TEST(Caja, HoldsItsPointsTurnedFromFrameToFrame)
{
    std::mt19937 azar(3);
    for (int vez = 0; vez < 20000; ++vez) {
        const CPuntos puntos = PuntosAlAzar(azar, static_cast<int>(azar() % 33));
        const CMarco marco = MarcoAlAzar(azar);
        const CMarco otro = MarcoAlAzar(azar);
        const CCaja caja = CCaja::De(puntos, marco);
        const CCaja deCaja = caja.Gira(marco, otro);
        const CCaja deRecta = CCaja::De(puntos, CMarco()).Gira(CMarco(), otro);
        CCaja girada = deCaja;
        girada.Recorta(deRecta);
        for (std::size_t k = 0; k < 2; ++k) {
            ASSERT_EQ(girada.minimo[k], std::max(deCaja.minimo[k], deRecta.minimo[k]));
            ASSERT_EQ(girada.maximo[k], std::min(deCaja.maximo[k], deRecta.maximo[k]));
        }
        for (const CPunto<int>& punto : puntos) {
            ASSERT_TRUE(caja.Tiene(marco.Mide(punto))) << punto.X << ", " << punto.Y;
            ASSERT_TRUE(girada.Tiene(otro.Mide(punto))) << punto.X << ", " << punto.Y;
        }
    }
}

TEST(Marco, TurnsToWhereTheEdgesRun)
{
    const struct {
        const char* motivo;
        CPuntos puntos;
        double alto; // of the box of the points along that frame, in steps; 0: there is no frame
    } casos[] = {
        {"a strip", {{0, 0}, {100000, 50000}, {100000, 50100}, {0, 100}}, 120},
        {"one that falls", {{0, 0}, {100000, -10000}, {100000, -9900}, {0, 100}}, 120},
        {"a steep one", {{0, 0}, {10000, 100000}, {10100, 100000}, {100, 0}}, 120},
        {"a diamond", {{0, -100}, {100, 0}, {0, 100}, {-100, 0}}, 150},
        {"an upright rectangle", {{0, 0}, {100, 0}, {100, 50}, {0, 50}}, 0},
        {"a ring that is a point", {{7, 7}, {7, 7}, {7, 7}}, 0},
        {"an octagon",
         {{0, 0}, {12, -5}, {24, 0}, {29, 12}, {24, 24}, {12, 29}, {0, 24}, {-5, 12}},
         0},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CRumbo rumbo;
        rumbo.Toma(caso.puntos);
        const std::optional<CMarco> marco = rumbo.Marco();
        ASSERT_EQ(marco.has_value(), caso.alto != 0);
        if (!marco)
            continue;
        const CCaja caja = CCaja::De(caso.puntos, *marco);
        EXPECT_LE(std::min(caja.maximo[0] - caja.minimo[0], caja.maximo[1] - caja.minimo[1]),
                  caso.alto);
    }
}

TEST(CajasJuntas, LeaveOutNoneThatHoldsThePoint)
{
    std::mt19937 azar(5);
    for (int vez = 0; vez < 3000; ++vez) {
        const int bits = static_cast<int>(azar() % 33);
        const CPuntos esquinas = PuntosAlAzar(azar, bits);
        std::vector<CCaja> cajas;
        for (std::size_t n = 1 + azar() % CCajasJuntas::kCabida; cajas.size() < n;) {
            const auto una = [&] { return esquinas[azar() % esquinas.size()]; };
            cajas.push_back(CCaja::De({una(), una()}, CMarco()));
        }
        const CCajasJuntas juntas(cajas);
        CPuntos puntos = esquinas;
        for (const CPunto<int>& punto : PuntosAlAzar(azar, bits))
            puntos.push_back(punto);
        puntos.emplace_back(INT_MIN, INT_MAX);
        for (const CPunto<int>& punto : puntos) {
            const CMedidas medidas{punto.X, punto.Y};
            std::vector<std::size_t> esperadas;
            for (std::size_t i = 0; i < cajas.size(); ++i)
                if (cajas[i].Tiene(medidas))
                    esperadas.push_back(i);
            std::vector<std::size_t> halladas; // in the order of their positions
            for (auto cerca = juntas.Cerca(medidas); !cerca.Vacia(); cerca.Quita(halladas.back()))
                halladas.push_back(cerca.Primera());
            ASSERT_TRUE(halladas.empty() || halladas.back() < cajas.size());
            std::erase_if(halladas, [&](std::size_t i) { return !juntas.Tiene(i, medidas); });
            ASSERT_EQ(halladas, esperadas) << punto.X << ", " << punto.Y;
        }
    }
}
