#include "cadastre/holder.h"

#include "cadastre/exchange_format.h"
#include "tests/cadastre/record_tools.h"

TEST(Titular, ReadsTheDNIWithItsLetterOrBehindAnAsterisk)
{
    constexpr struct {
        const char* motivo;
        const char* desdeDNI;
        const char* DNI;
        char letra;
    } kCasos[] = {
        {"DNI and letter", "12345678Z\n", "12345678", 'Z'},
        {"letter cut off by the line end", "12345678\n", "12345678", ' '},
        {"cut short", "1234\n", "1234", ' '},
        {"only the line end", "\n", "", ' '},
        {"nothing at all", "", "", ' '},
        {"blanks are a value", "        Z\n", "        ", 'Z'},
        {"asterisk and eight, no letter", "*12345678\n", "12345678", ' '},
        {"what follows the eight is no letter", "*12345678Z\n", "12345678", ' '},
        {"asterisk and fewer than eight", "*123\n", "123", ' '},
        {"asterisk before the line end", "*\n", "", ' '},
        {"asterisk as the last character", "*", "", ' '},
        {"second asterisk is data", "**1234567\n", "*1234567", ' '},
        {"asterisk further on is data", "1*345678Z\n", "1*345678", 'Z'},
    };
    for (const auto& caso : kCasos) {
        for (const auto& [columna, modo] : {std::pair{84U, kModoCatastro}, {40U, kModoLista}}) {
            SCOPED_TRACE(caso.motivo);
            CTitular titular;
            titular.Lee(std::string(columna, ' ') + caso.desdeDNI, modo);
            EXPECT_EQ(titular.DNI, caso.DNI);
            EXPECT_EQ(titular.letra, caso.letra);
        }
    }
    EXPECT_EQ(DeFila(CTitular(), "1|2|3|ANA||*1234567|Z").DNI,
              "*1234567"); // a table row knows no asterisk
}

TEST(Titular, WrapsNumbersAndCutsTrailingBlanksOfNameAndStreetOnly)
{
    const CTitular titular =
        DeFila(CTitular(), "||4294967297| ANA  ||123     |||65539|-32769|C |  VIA  | 70000"
                           "|B |E |P |U  |-2147483649");
    EXPECT_EQ(titular.NumOrden, 1);
    EXPECT_EQ(titular.Del, 3);
    EXPECT_EQ(titular.MunDom, 32767);
    EXPECT_EQ(titular.numPol, 4464);
    EXPECT_EQ(titular.CP, 2147483647);
    EXPECT_EQ(titular.Nombre, " ANA");
    EXPECT_EQ(titular.nombreVia, "  VIA");
    EXPECT_EQ(titular.DNI, "123     ");
    EXPECT_EQ(titular.sig + titular.bloq + titular.puert, "C B U  ");
}

TEST(Titular, TakesTheStreetKindFromTheFirstWord)
{
    // clang-format off
    constexpr struct { const char* direccion; const char* sig; const char* nombreVia; } kCasos[] = {
        {"C/ MAYOR", "CL", "MAYOR"},  {"CL MAYOR 3", "CL", "MAYOR 3"}, {"AVDA SUR", "AV", "SUR"},
        {"AVDA. SUR", "AV", "SUR"},   {"AVD SUR", "AV", "SUR"},        {"PASEO SUR", "PS", "SUR"},
        {"PS SUR", "PS", "SUR"},      {"PLZA ALTA", "PZ", "ALTA"},     {"PZA ALTA", "PZ", "ALTA"},
        {"PZ ALTA", "PZ", "ALTA"},    {"CMNO REAL", "CM", "REAL"},     {"CM REAL", "CM", "REAL"},
        {"URB PINAR", "UR", "PINAR"}, {"UR PINAR", "UR", "PINAR"},     {"CRTA JACA", "CR", "JACA"},
        {"CR JACA", "CR", "JACA"},
        {"AV SUR", "", "SUR"},         // not in the table, and dropped all the same
        {"c/ MAYOR", "", "MAYOR"},     // capitals only
        {"C/  MAYOR", "CL", " MAYOR"}, // one separator goes
        {"MAYOR", "", "MAYOR"},        // one word: the whole line
        {"PZA", "PZ", "PZA"},
        {"C/ ", "CL", "C/ "},          // nothing behind the separator: the whole line
        {"", "", ""},
    };
    // clang-format on
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.direccion);
        const CTitular titular(caso.direccion);
        EXPECT_EQ(titular.sig, caso.sig);
        EXPECT_EQ(titular.nombreVia, caso.nombreVia);
    }
}

TEST(Titular, KeepsOneBackLinkForAParcelHoweverManyItHoldsAndRenumbersThem)
{
    for (const int cuantas : {3, 30}) {
        SCOPED_TRACE(cuantas);
        CTitular titular;
        std::vector<int> nuevos;
        for (int i = 0; i < cuantas; ++i) {
            EXPECT_EQ(titular.InsertaPropiedad(i, i, "PR"), 1);
            EXPECT_EQ(titular.InsertaPropiedad(i, 100, "US"), -11);
            EXPECT_EQ(titular.InsertaPropiedad(0, 100, "US"), -11);
            nuevos.push_back(100 + i);
        }
        EXPECT_EQ(titular.Propiedades().back().partici, cuantas - 1);
        titular.RenumeraParcelas(nuevos);
        EXPECT_EQ(titular.InsertaPropiedad(100, 0, ""), -11);
        EXPECT_EQ(titular.InsertaPropiedad(0, 0, ""), 1);
    }
}
