#include "generator/compose_line.h"

#include <gtest/gtest.h>

TEST(PonEnLinea, FillsTheColumnAndNothingElse)
{
    const struct {
        const char* motivo;
        const char* linea;
        CLectura donde;
        const char* valor;
        const char* queda;
    } casos[] = {
        {"as wide as the column", "123456", {2, 3}, "abc", "12abc6"},
        {"longer is cut", "123456", {2, 3}, "abcd", "12abc6"},
        {"shorter leaves nothing of what stood there", "123456", {2, 3}, "a", "12a  6"},
        {"a short line grows to the column's end", "1", {2, 3}, "a", "1 a  "},
    };
    for (const auto& caso : casos) {
        std::string linea = caso.linea;
        sintetico::PonEnLinea(linea, caso.donde, std::string_view(caso.valor));
        EXPECT_EQ(linea, caso.queda) << caso.motivo;
    }
}

TEST(PonEnLinea, PutsZerosInFrontOfANumber)
{
    const struct {
        int valor;
        const char* queda;
    } casos[] = {{7, "1200076"}, {0, "1200006"}, {-7, "12-0076"}, {12345, "1212346"}};
    for (const auto& caso : casos) {
        std::string linea = "12xxxx6";
        sintetico::PonEnLinea(linea, {2, 4}, caso.valor);
        EXPECT_EQ(linea, caso.queda);
    }
}
