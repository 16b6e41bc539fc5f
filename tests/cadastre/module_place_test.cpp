#include "cadastre/module_place.h"

#include "cadastre/exchange_format.h"
#include "platform/ansi.h"
#include "tests/cadastre/record_tools.h"

namespace {

CModulo DeLinea(std::string_view linea, int modo)
{
    CModulo modulo;
    EXPECT_TRUE(modulo.Lee(linea, modo)) << linea;
    return modulo;
}

CModulo DeFila(std::string_view conBarras)
{
    return DeLinea(Fila(conBarras), kModoTabla);
}

std::string FilaDe(const CModulo& modulo)
{
    return Grabado([&](CStdioFile& f) { modulo.Graba(f, 28, 79, 0, false); });
}

CParaje Paraje(short numero, const char* nombre)
{
    CParaje paraje(nombre);
    paraje.NumOrden = numero;
    return paraje;
}

std::string GrabaParaje(const CParaje& paraje, short emenor, bool fijo)
{
    return Grabado([&](CStdioFile& f) { paraje.Graba(f, 28, 79, emenor, fijo); });
}

// One column more than is read, for the last guard.
const std::string kLineaMD = "MD028079xxxLR37xLabradío regadío                        "
                             "12000012500000110021000031004100005100610000xyz."_ansi;

} // namespace

TEST(Modulo, ReadsEachFieldOfTheReadLayoutFromItsGuardOn)
{
    using M = CModulo;
    const std::vector<CGuarda<M>> guardas = {
        {"Cal", &M::Cal, 13, "PD", "LR", "L"},
        {"Inten", &M::Inten, 15, "9", "37", "3"},
        {"Denominacion", &M::Denominacion, 18, "Prado", "La", "L"},
        {"TipoEvalua", &M::TipoEvalua, 58, "8", "12", "1"},
        {"Jornadas", &M::Jornadas, 64, "75", "12", "1"},
        {"EConce1", &M::EConce1, 72, "91", "11", "1"},
        {"VConce1", &M::VConce1, 76, "92", "21", "2"},
        {"EConce2", &M::EConce2, 82, "93", "31", "3"},
        {"VConce2", &M::VConce2, 86, "94", "41", "4"},
        {"EConce3", &M::EConce3, 92, "95", "51", "5"},
        {"VConce3", &M::VConce3, 96, "96", "61", "6"},
        {"Exen", &M::Exen, 102, "a", "x", "x"},
        {"ConIBI", &M::ConIBI, 103, "b", "y", "y"},
        {"ConJornadas", &M::ConJornadas, 104, "c", "z", "z"},
    };
    CompruebaGuardas(kLineaMD, guardas, DeFila("||PD|9|Prado|8|0.75|91|92|93|94|95|96|a|b|c"),
                     [](M& m, std::string_view linea) { m.Lee(linea, kModoCatastro); });
}

TEST(Modulo, ReadsAWholeLineWithJornadasInHundredths)
{
    EXPECT_EQ(FilaDe(DeLinea(kLineaMD + "\n", kModoCatastro)),
              Fila("028|079|LR| 37|Labradío regadío                        | 120000|  125000.00|"
                   " 1100| 210000| 3100| 410000| 5100| 610000|x|y|z\r\n"_ansi));
}

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
        EXPECT_EQ(DeFila(std::string("||LR||X||") + caso.campo).Jornadas, caso.Jornadas);
    }
}

TEST(Modulo, RefusesARowWithoutARequiredFieldAndLeavesTheRecordAlone)
{
    for (const char* fila : {"028|079||3|Prado|1", "028|079|LR|3||1", "028|079|LR|3", ""}) {
        CModulo modulo;
        EXPECT_FALSE(modulo.Lee(Fila(fila), kModoTabla)) << fila;
        EXPECT_EQ(FilaDe(modulo), FilaDe(CModulo())) << fila;
    }
    DeFila("||LR||Prado"); // all that it needs
    DeFila("||  ||    ");  // blanks aren't empty
}

TEST(Modulo, KeepsWhatAnEmptyFieldOfTheRowWouldSet)
{
    CModulo modulo = DeFila("||LR|3|Prado||0.29"); // a product that the cut takes a hundredth from
    ASSERT_TRUE(modulo.Lee(Fila("||LR||Prado"), kModoTabla));
    EXPECT_EQ(modulo.Inten, 3);
    EXPECT_EQ(modulo.Jornadas, 28);
}

TEST(Modulo, WritesARecordOf80ColumnsAndAWholeRow)
{
    const CModulo modulo =
        DeFila("||LR|3|Labradío regadío  |12|12.50|1|200|3|400|5|600|x|y|z"_ansi);
    EXPECT_EQ(Grabado([&](CStdioFile& f) { modulo.Graba(f, 28, 79, 0, true); }),
              "028079000MDLR03-00001200                                    00001250            "
              "\r\n");
    EXPECT_EQ(FilaDe(modulo),
              Fila("028|079|LR|  3|Labradío regadío                        |     12|      12.50|"
                   "    1|    200|    3|    400|    5|    600|x|y|z\r\n"_ansi));
}

TEST(Modulo, WidensForWideNumbersAndTexts)
{
    const std::string nombre(42, 'D');
    const CModulo modulo = DeFila("||LRX|-1|" + nombre + "|1234567|-0.05|12345|-1|||| 1234567");
    EXPECT_EQ(Grabado([&](CStdioFile& f) { modulo.Graba(f, 28, 79, 0, true); }),
              "028079000MDLRX-1-123456700                                    -0000005            "
              "\r\n");
    EXPECT_EQ(FilaDe(modulo), Fila("028|079|LRX| -1|" + nombre +
                                   "| 1234567|      -0.05| 12345|     -1|    0|      0|    0|"
                                   " 1234567| | | \r\n"));
}

TEST(Modulo, ARowReadAndWrittenIsTheSameRowAndALineComposedReadsBack)
{
    const std::string fila =
        Fila("028|079|PD| 12|Prado de siega                          |      7|       8.00|"
             "    1|     -2|    3|      4| 9999|      6| |S|N");
    const CModulo modulo = DeLinea(fila, kModoTabla);
    EXPECT_EQ(modulo.Denominacion, "Prado de siega"); // which its look-up goes by
    EXPECT_EQ(FilaDe(modulo), fila + "\r\n");
    std::string linea;
    modulo.Compon(linea, kModoCatastro);
    const CModulo leido = DeLinea(linea + "\n", kModoCatastro);
    EXPECT_EQ(FilaDe(leido), fila + "\r\n");
    EXPECT_EQ(leido.Denominacion, "Prado de siega");
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
        CParaje paraje = Paraje(5, "ANTES");
        paraje.Lee(caso.linea);
        EXPECT_EQ(paraje.NumOrden, caso.NumOrden);
        EXPECT_EQ(paraje.Nombre, caso.Nombre);
    }
    EXPECT_EQ(CParaje().NumOrden, 0); // what a line without one leaves
}

TEST(Paraje, WritesBothFormsWithTheNameUncutAndReadsTheLineThatItComposes)
{
    const CParaje paraje = Paraje(42, "El Peñón"_ansi);
    EXPECT_EQ(GrabaParaje(paraje, 0, true),
              "028079000PJ00042El Peñón                                                          "
              "                                                                    \r\n"_ansi);
    EXPECT_EQ(GrabaParaje(paraje, 0, false),
              Fila("028|079|   0|    42|El Peñón                      \r\n"_ansi));
    std::string linea;
    paraje.Compon(linea);
    CParaje leido;
    leido.Lee(linea + "\n");
    EXPECT_EQ(GrabaParaje(leido, 0, false), GrabaParaje(paraje, 0, false));

    const CParaje largo = Paraje(-1, "PPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPP");
    EXPECT_EQ(GrabaParaje(largo, 2, true),
              "028079002PJ-0001PPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPP" + std::string(104, ' ') + "\r\n");
    EXPECT_EQ(GrabaParaje(largo, 2, false),
              Fila("028|079|   2|    -1|PPPPPPPPPPPPPPPPPPPPPPPPPPPPPPPP\r\n"));
}
