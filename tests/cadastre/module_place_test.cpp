#include "cadastre/module_place.h"

#include "cadastre/exchange_format.h"
#include "tests/cadastre/record_tools.h"

TEST(Modulo, CutsTheHundredthsOfAJornadaThatTheProductGives)
{
    constexpr struct {
        const char* motivo;
        const char* campo;
        int Jornadas;
    } kCasos[] = {
        {"whole hundredths", "      12.50", 1250},
        {"the product falls short: 28.999...", "0.29", 28},
        {"and so here: 114.999...", "1.15", 114},
        {"more decimals are cut", "2.999", 299},
        {"towards zero", "-0.299", -29},
        {"no decimals", "3", 300},
        {"a comma ends the number", "12,50", 1200},
        {"no number", "x", 0},
        {"empty", "", 0},
        {"wraps at 32 bits", "42949672.98", 2},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(DeFila(CModulo(), std::string("||LR||X||") + caso.campo).Jornadas, caso.Jornadas);
    }
}

TEST(Modulo, KeepsWhatAnEmptyFieldOfTheRowWouldSet)
{
    CModulo modulo =
        DeFila(CModulo(), "||LR|3|Prado||0.29"); // a product that the cut takes a hundredth from
    ASSERT_TRUE(modulo.Lee(Fila("||LR||Prado"), kModoTabla));
    EXPECT_EQ(modulo.Inten, 3);
    EXPECT_EQ(modulo.Jornadas, 28);
}

TEST(Paraje, CutsTheEndOfItsNameAndWrapsItsNumber)
{
    constexpr struct {
        const char* motivo;
        const char* linea;
        short NumOrden;
        const char* Nombre;
    } kCasos[] = {
        {"padded name", "PJ028079   00042Las Eras                      \n", 42, "Las Eras"},
        {"name ends with the line", "PJ028079   00042Las Eras\n", 42, "Las Eras"},
        {"one character of it", "PJ028079   00042L", 42, "L"},
        {"no name", "PJ028079   00042\n", 42, ""},
        {"too short for a name", "PJ028079   00042", 42, "ANTES"},
        {"inner and leading blanks stay", "PJ028079   00042 Las  Eras \n", 42, " Las  Eras"},
        {"past the width", "PJ028079   00042123456789012345678901234567890X\n", 42,
         "123456789012345678901234567890"},
        {"16 bits", "PJ028079   70000X\n", 4464, "X"},
        {"one figure of the number", "PJ028079   7", 7, "ANTES"},
        {"none", "PJ028079   \n", 0, "ANTES"},
        {"too short for a number", "PJ028079  \n", 5, "ANTES"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CParaje paraje("ANTES");
        paraje.NumOrden = 5;
        paraje.Lee(caso.linea);
        EXPECT_EQ(paraje.NumOrden, caso.NumOrden);
        EXPECT_EQ(paraje.Nombre, caso.Nombre);
    }
    EXPECT_EQ(CParaje().NumOrden, 0); // what a line without one leaves
}

TEST(Paraje, WritesALongNameUncutInBothForms)
{
    CParaje paraje("PPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPP");
    paraje.NumOrden = -1;
    EXPECT_EQ(Grabado([&](CStdioFile& f) { paraje.Graba(f, 28, 79, 2, true); }),
              "028079002PJ-0001PPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPP" + Veces(104, " ") + "\r\n");
    EXPECT_EQ(Grabado([&](CStdioFile& f) { paraje.Graba(f, 28, 79, 2, false); }),
              Fila("028|079|   2|    -1|PPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPP\r\n"));
}
