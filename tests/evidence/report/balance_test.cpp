#include "evidence/report/findings/balance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace informe;
using testing::ElementsAre;

namespace {

CPartida Cotejada(const std::vector<CClave>& esperadas, const std::vector<CClave>& halladas)
{
    CPartida partida;
    CCotejo cotejo;
    for (const CClave& clave : esperadas)
        cotejo.Espera(clave);
    for (const CClave& clave : halladas)
        cotejo.Hay(clave);
    cotejo.Cierra(partida);
    return partida;
}

} // namespace

TEST(Balance, TellsWhatIsMissingAndWhatIsTooMuch)
{
    const CPartida partida = Cotejada({{1, 2, {}}, {1, 1, "a"}, {1, 1, "a"}, {0, 0, "ANA "}},
                                      {{1, 1, "a"}, {1, 2, {}}, {9, 9, {}}});
    EXPECT_EQ(partida.faltan, 2);
    EXPECT_EQ(partida.sobran, 1);
    EXPECT_THAT(partida.ejemplos, ElementsAre("falta ANA", "falta 1-1 a", "sobra 9-9"));
}

TEST(Balance, LeavesNothingUnsaidWhenTheSumsAgreeByChance)
{
    CPartida partida = Cotejada({{1, 1, {}}}, {{2, 2, {}}});
    partida.Entra("líneas", 1);
    partida.Sale("filas", 1);
    EXPECT_EQ(partida.SinExplicar(), 2);
    partida.Entra("más líneas", 7);
    EXPECT_EQ(partida.SinExplicar(), 7) << "the greater of the two";
    partida.noSePuede = "no está";
    EXPECT_EQ(partida.SinExplicar(), 0);
}

TEST(Balance, NamesAFewOfManyAndCountsAll)
{
    std::vector<CClave> muchas;
    for (int i = 1; i <= 1000; ++i)
        muchas.push_back({1, i, {}});
    const CPartida partida = Cotejada(muchas, {});
    EXPECT_EQ(partida.faltan, 1000);
    EXPECT_EQ(partida.ejemplos.size(), 8U);
}
