#include "cadastre/wrapping.h"

#include <limits>

#include <gtest/gtest.h>

TEST(Envuelve, SumsWrapAt32Bits)
{
    EXPECT_EQ(Suma(2147483647, 1), -2147483647 - 1);
    EXPECT_EQ(Suma(-2147483647 - 1, -1), 2147483647);
    EXPECT_EQ(Suma(-5, 3), -2);
}

TEST(Envuelve, CutsTowardsZeroAndKeepsTheLow32Bits)
{
    constexpr struct {
        const char* motivo;
        double valor;
        int entero;
    } kCasos[] = {
        {"positive", 2.99, 2},
        {"negative", -2.99, -2},
        {"one past 32 bits", 4294967297.0, 1},
        {"one past 32 bits, negative", -4294967297.5, -1},
        {"past 64 bits", 1e19, -1981284352},
        {"so far past them that nothing is left below", 1e30, 0},
        {"first past 64 bits", 9223372036854775808.0, 0},
        {"no number", std::numeric_limits<double>::quiet_NaN(), 0},
        {"infinite", -std::numeric_limits<double>::infinity(), 0},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(Corta(caso.valor), caso.entero);
    }
}
