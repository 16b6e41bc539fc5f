#include "evidence/report/findings/balance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/ansi.h"

using namespace informe;
using testing::ElementsAre;

namespace {

using CClaves = std::vector<CClaveRegistro>;

CPartida Cotejada(const CClaves& esperadas, const CClaves& halladas)
{
    CPartida partida(Partida::Parcelas);
    Coteja(esperadas, halladas, partida);
    return partida;
}

CClaveRegistro Parcela(int polig, int parcela)
{
    return CClaveRegistro::DeParcela(polig, parcela);
}

} // namespace

TEST(Balance, TellsWhatIsMissingAndWhatIsTooMuch)
{
    const CPartida partida = Cotejada({Parcela(1, 2), Parcela(1, 1), Parcela(1, 1), Parcela(0, 7)},
                                      {Parcela(1, 1), Parcela(1, 2), Parcela(9, 9)});
    EXPECT_EQ(partida.faltan, 2);
    EXPECT_EQ(partida.sobran, 1);
    EXPECT_THAT(partida.ejemplos, ElementsAre("falta 0-7", "falta 1-1", "sobra 9-9"));
}

TEST(Balance, LeavesNothingUnsaidWhenTheSumsAgreeByChance)
{
    CPartida partida = Cotejada({Parcela(1, 1)}, {Parcela(2, 2)});
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
    CClaves muchas;
    for (int i = 1; i <= 1000; ++i)
        muchas.push_back(Parcela(1, i));
    const CPartida partida = Cotejada(muchas, {});
    EXPECT_EQ(partida.faltan, 1000);
    EXPECT_EQ(partida.ejemplos.size(), 8U);
}

TEST(Balance, CallsEachRecordWhatAPersonCallsIt)
{
    const struct {
        const char* motivo;
        CClaveRegistro clave;
        const char* nombre;
    } casos[] = {
        {"a parcel", Parcela(3, 12), "3-12"},
        {"a subparcel, as wide as its column", CClaveRegistro::DeSubparcela(3, 12, "   a"),
         "3-12 a"},
        {"a subparcel without a letter", CClaveRegistro::DeSubparcela(3, 12, "    "), "3-12"},
        {"a line too short for numbers", CClaveRegistro::DeSubparcela(0, 0, "a"), "a"},
        {"a holder", CClaveRegistro::DeTitular("ANA  ", "11111111 "), "ANA, 11111111"},
        {"a holder without DNI", CClaveRegistro::DeTitular("ANA", "        "), "ANA"},
        {"a place", CClaveRegistro::DeParaje("PEÑA \n"_ansi), "PEÑA"},
        {"a module", CClaveRegistro::DeModulo("VIÑA  "_ansi, "V ", 3), "VIÑA, V 3"},
        {"a module by class and intensity", CClaveRegistro::DeModulo({}, "C-", 3), "C- 3"},
    };
    for (const auto& caso : casos)
        EXPECT_THAT(Cotejada({caso.clave}, {}).ejemplos,
                    ElementsAre(std::string("falta ") + caso.nombre))
            << caso.motivo;
}
