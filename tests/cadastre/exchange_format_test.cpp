#include "cadastre/exchange_format.h"

#include "cadastre/column_reader.h"

#include <gtest/gtest.h>

TEST(FormatoCatastro, SplitsASurfaceTowardsZeroAndPutsItTogetherAgain)
{
    constexpr struct {
        const char* motivo;
        int superficie, hectareas, areas, centiareas;
    } kCasos[] = {
        {"nothing", 0, 0, 0, 0},
        {"one square metre", 1, 0, 0, 1},
        {"last before an are", 99, 0, 0, 99},
        {"first are", 100, 0, 1, 0},
        {"last before a hectare", 9999, 0, 99, 99},
        {"first hectare", 10000, 1, 0, 0},
        {"all three", 123456, 12, 34, 56},
        {"negative, each part with its sign", -123456, -12, -34, -56},
        {"greatest", 2147483647, 214748, 36, 47},
        {"least", -2147483647 - 1, -214748, -36, -48},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CDatosLinea datos;
        datos.PonSuperficie(caso.superficie);
        EXPECT_EQ(datos.hectareas, caso.hectareas);
        EXPECT_EQ(datos.areas, caso.areas);
        EXPECT_EQ(datos.centiareas, caso.centiareas);
        EXPECT_EQ(datos.DameSuperficie(), caso.superficie);
    }
}
