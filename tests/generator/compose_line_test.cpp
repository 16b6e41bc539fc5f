#include "generator/compose_line.h"

#include <gtest/gtest.h>

using sintetico::PonEnLinea;

TEST(LineaCompuesta, PutsAValueIntoALineWhereItIsRead)
{
    std::string linea = "TL";
    PonEnLinea(linea, {5, 3, 0}, 79);
    EXPECT_EQ(linea, "TL   079"); // filled up with blanks
    PonEnLinea(linea, {2, 3, 0}, -2);
    EXPECT_EQ(linea, "TL-02079");
    PonEnLinea(linea, {5, 3, 0}, std::string_view("A"));
    EXPECT_EQ(linea, "TL-02A  "); // the old value goes
    PonEnLinea(linea, {3, 2, 0}, std::string_view("XYZ"));
    EXPECT_EQ(linea, "TL-XYA  "); // cut: the neighbour stays
}
