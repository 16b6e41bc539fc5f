#include "cadastre/subparcel.h"

#include "cadastre/exchange_format.h"
#include "platform/ansi.h"
#include "tests/cadastre/record_tools.h"

namespace {

CSubparcela DeFila(std::string_view conBarras)
{
    CSubparcela sub;
    EXPECT_TRUE(sub.Lee(Fila(conBarras), kModoTabla));
    return sub;
}

CSubparcela DeLinea(std::string_view linea, int modo)
{
    CSubparcela sub;
    EXPECT_TRUE(sub.Lee(linea, modo));
    return sub;
}

std::string Graba(const CSubparcela& sub, bool fijo, short zona = 1, short polig = 12,
                  int parcela = 345)
{
    return Grabado([&](CStdioFile& f) { sub.Graba(f, 28, 79, 0, zona, polig, parcela, fijo); });
}

// Every value differs from the lines' below.
CSubparcela Anterior()
{
    CSubparcela sub = DeFila("|||||ZZ|t|FI|77|EE|71|72|AA|73|REF1|REF2|81|ANTES|82|83|84|85|5|1|2|"
                             "3|86|s|87|88|i|j|k|l|89");
    sub.descCultivo = "CULTIVO";
    return sub;
}

const std::string kLineaSP = "SP028079   1234567890 AB ASX1994123456789E137LR12REFER-1REFER-2";

// Columns 61 to 65 feed nothing.
const std::string kLineaSC =
    "SC028079   1234567890AB  123NAVE CON PATIO123456346000001950aXXXXX1987b9c755";

const std::string kLineaLista = "28079xxxxxxxxxxxxxx1234567890AB  LR12"
                                "VIÑA DE SECANO                          1234567890A"_ansi;

void LeeCatastro(CSubparcela& sub, std::string_view linea)
{
    sub.Lee(linea, kModoCatastro);
}

} // namespace

TEST(Subparcela, ReadsEachFieldOfLandFromItsGuardOn)
{
    using S = CSubparcela;
    CompruebaGuardas<S>(kLineaSP,
                        {
                            {"letra", &S::letra, 23, "", "A", ""}, // no guard: as far as it goes
                            {"tipo", &S::tipo, 27, "t", "A", "A"},
                            {"cFiscal", &S::cFiscal, 28, "FI", "SX", "S"},
                            {"ejer", &S::ejer, 30, "72", "19", "1"},
                            {"hectares", &S::superfic, 34, "0", "120000", "10000"},
                            {"ares", &S::superfic, 39, "123450000", "123456700", "123450600"},
                            {"centiares", &S::superfic, 41, "123456700", "123456789", "123456708"},
                            {"cE", &S::cE, 43, "EE", "E1", "E"},
                            {"iE", &S::iE, 45, "71", "37", "3"},
                            {"cA", &S::cA, 47, "AA", "LR", "L"},
                            {"iA", &S::iA, 49, "73", "12", "1"},
                            {"ref1", &S::ref1, 51, "REF1", "RE", "R"},
                            {"ref2", &S::ref2, 58, "REF2", "RE", "R"},
                        },
                        Anterior(), LeeCatastro);
}

TEST(Subparcela, ReadsEachFieldOfAConstructionFromItsGuardOn)
{
    using S = CSubparcela;
    CompruebaGuardas<S>(kLineaSC,
                        {
                            {"letra", &S::letra, 22, "", "A", ""},
                            {"compCons", &S::compCons, 27, "81", "12", "1"},
                            {"descComponente", &S::descComponente, 28, "ANTES", "", ""},
                            {"largo", &S::largo, 44, "82", "12", "1"},
                            {"ancho", &S::ancho, 47, "83", "45", "4"},
                            {"alto", &S::alto, 50, "84", "34", "3"},
                            {"volumen", &S::volumen, 52, "85", "60", "6"},
                            {"añoC", &S::añoC, 58, "87", "19", "1"},
                            {"iC", &S::iC, 62, "i", "a", "a"},
                            {"añoR", &S::añoR, 68, "88", "19", "1"},
                            {"iR", &S::iR, 72, "j", "b", "b"},
                            {"usoP", &S::usoP, 73, "86", "9", "9"},
                            {"estC", &S::estC, 74, "k", "c", "c"},
                            {"cSing", &S::cSing, 75, "s", "K", "\a"}, // characters 75 and 7
                        },
                        Anterior(), LeeCatastro);
}

TEST(Subparcela, ReadsEachFieldOfTheListFromItsGuardOn)
{
    using S = CSubparcela;
    CompruebaGuardas<S>(kLineaLista,
                        {
                            {"letra", &S::letra, 30, "ZZ", "A", ""},
                            {"cA", &S::cA, 34, "AA", "L", ""},
                            {"iA", &S::iA, 36, "73", "1", "0"},
                            {"descCultivo", &S::descCultivo, 38, "CULTIVO", "V", ""},
                            {"superfic", &S::superfic, 78, "0", "1", "0"},
                            {"tipo", &S::tipo, 88, "t", "A", "t"},
                        },
                        Anterior(),
                        [](S& sub, std::string_view linea) { sub.Lee(linea, kModoLista); });
}

TEST(Subparcela, ALineFillsItsOwnSideAndLeavesTheOtherAtItsDefaults)
{
    EXPECT_EQ(Graba(DeLinea(kLineaSP + "\n", kModoCatastro), false),
              Fila("028|079|   1|  12|   345|  AB|A|SX| 123456789|E1| 37| 1994|LR| 12|REFER-1|"
                   "REFER-2|   0|              |   0|   0|  0|       0|  0| 0| 0| 0| 0| |    0|"
                   "    0| | | | |    0\r\n"));
    // 600000 of volume keep their low 16 bits, 755 its low 8.
    EXPECT_EQ(Graba(DeLinea(kLineaSC + "\n", kModoCatastro), false),
              Fila("028|079|   1|  12|   345|  AB| |S |         0|  |  0|    0|  |  0|       |"
                   "       | 123|NAVE CON PATIO| 123| 456| 34|   10176|  0| 0| 0| 0| 9|ó| 1950|"
                   " 1987|a|b|c| |    0\r\n"_ansi));
    const CSubparcela lista = DeLinea(kLineaLista + "\n", kModoLista);
    EXPECT_EQ(lista.descCultivo, "VIÑA DE SECANO                          "_ansi);
    EXPECT_EQ(Graba(lista, false),
              Fila("028|079|   1|  12|   345|  AB|A|S | 1234567890|  |  0|    0|LR| 12|       |"
                   "       |   0|              |   0|   0|  0|       0|  0| 0| 0| 0| 0| |    0|"
                   "    0| | | | |    0\r\n"));
}

TEST(Subparcela, TakesCSingAsTheLowByteOfANumber)
{
    constexpr struct {
        const char* motivo;
        const char* campo;
        char cSing;
    } kCasos[] = {
        {"a letter", "075", 'K'},
        {"a number past a byte", "331", 'K'},
        {"0 stays blank: a line can't carry it", "000", ' '},
        {"so does a low byte of 0", "256", ' '},
        {"no number", "   ", ' '},
        {"only the line end", "", ' '},
        {"two characters before the line end", "75", 'K'},
        {"negative", "-1 ", '\xFF'},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(DeLinea(kLineaSC.substr(0, 73) + caso.campo + "\n", kModoCatastro).cSing,
                  caso.cSing);
    }
}

TEST(Subparcela, CutsBlanksFromBothEndsOfItsLetterInEachLayout)
{
    EXPECT_EQ(DeLinea("SP                    A B\n", kModoCatastro).letra, "A B");
    EXPECT_EQ(DeLinea("SC                   A   \n", kModoCatastro).letra, "A");
    EXPECT_EQ(DeLinea("SP                       \n", kModoCatastro).letra, "");
    EXPECT_EQ(DeLinea(std::string(29, ' ') + "  A \n", kModoLista).letra, "A");
    EXPECT_EQ(DeFila("|||||   A").letra, "A");
    EXPECT_EQ(DeFila("|||||    ").letra, ""); // blanks aren't an empty field
}

TEST(Subparcela, RefusesARowWithoutItsLetterAndKeepsDefaultsForEmptyFields)
{
    CSubparcela sub("Z");
    EXPECT_FALSE(sub.Lee(Fila("028|079|1|12|345||A|SX|99"), kModoTabla));
    EXPECT_EQ(sub.letra, "Z");
    EXPECT_EQ(sub.superfic, 0);
    EXPECT_FALSE(sub.Lee(Fila("028|079|1|12|345"), kModoTabla));

    EXPECT_EQ(Graba(DeFila("028|079|1|12|345|A||||||||||||||||||||||||||||"), false),
              Fila("028|079|   1|  12|   345|   A| |S |         0|  |  0|    0|  |  0|       |"
                   "       |   0|              |   0|   0|  0|       0|  0| 0| 0| 0| 0| |    0|"
                   "    0| | | | |    0\r\n"));
}

TEST(Subparcela, WritesAllColumnsOfBothSides)
{
    const CSubparcela sub =
        DeFila("|||||A|A|S|123456|E1|3|1994|LR|12|REF-1|REF-2|7|NAVE AÑOSA|10|20|3|600|5|1|2|3|9|"
               "K|1950|1987|a|b|c|d|2001"_ansi);
    EXPECT_EQ(Graba(sub, true),
              "028079000SP0101200345   AAS 000123456E1031994LR12                     REF-1  REF-2  "
              "007NAVE AÑOSA    010020030000600051239K19501987abcd2001           \r\n"_ansi);
    EXPECT_EQ(Graba(sub, false),
              Fila("028|079|   1|  12|   345|   A|A|S |    123456|E1|  3| 1994|LR| 12|REF-1  |"
                   "REF-2  |   7|NAVE AÑOSA    |  10|  20|  3|     600|  5| 1| 2| 3| 9|K| 1950|"
                   " 1987|a|b|c|d| 2001\r\n"_ansi));
}

TEST(Subparcela, WritesTheDefaultsOfASubparcelThatOnlyHasALetter)
{
    CSubparcela sub("B");
    sub.superfic = 1;
    EXPECT_EQ(Graba(sub, true),
              "028079000SP0101200345   B S 000000001  000000  00                                   "
              "000              000000000000000000000 00000000    0000           \r\n");
}

TEST(Subparcela, WidensForWideValuesAndCutsOnlyTheMarkedTexts)
{
    const CSubparcela sub =
        DeFila("|||||ABCDE||SXY|-1|E12|100|-1|LRX|-5|REFERENCIA|12345678|1000|DESCRIPCION LARGA|"
               "1000|-10|100|32767|100|10|-1||10||10000||||||-1");
    EXPECT_EQ(Graba(sub, true, 123, 1234, 123456),
              "028079000SP1231234123456ABCD SXY0000000-1E12100-001LRX-5                     "
              "REFERENCIA123456781000DESCRIPCION LARGA1000-10100003276710010-1010 100000000    "
              "-001           \r\n");
    EXPECT_EQ(Graba(sub, false, 123, 1234, 123456),
              Fila("028|079| 123| 1234| 123456|ABCD| |SXY|        -1|E12| 100|   -1|LRX| -5|"
                   "REFEREN|1234567| 1000|DESCRIPCION LARGA| 1000| -10| 100|   32767| 100| 10|-1|"
                   " 0| 10| | 10000|    0| | | | |   -1\r\n"));
}

TEST(Subparcela, WithoutItsSaveMarkHasARowAndNoRecord)
{
    CSubparcela sub("A");
    sub.salvar = false;
    EXPECT_EQ(Graba(sub, true), "");
    EXPECT_NE(Graba(sub, false), "");
}

TEST(Subparcela, ARowReadAndWrittenIsTheSameRow)
{
    const std::string fila =
        Fila("028|079|   1|  12|   345|  AB| |SX|        -7|  | -1| 1994|LR| 12|       |REF 2  |"
             " 999|              |   0|   1|  2|  -32768| 11| 4| 5| 6| 7|ñ| 1950|    0|a| |c|d|"
             " 2001"_ansi);
    CSubparcela sub;
    ASSERT_TRUE(sub.Lee(fila, kModoTabla));
    EXPECT_EQ(Graba(sub, false), fila + "\r\n");
}

TEST(Subparcela, ReadsTheLinesThatItComposes)
{
    for (const std::string& original : {kLineaSP, kLineaSC}) {
        const CSubparcela sub = DeLinea(original, kModoCatastro);
        std::string linea = original.substr(0, 2);
        sub.Compon(linea, kModoCatastro);
        EXPECT_EQ(Graba(DeLinea(linea + "\n", kModoCatastro), false), Graba(sub, false));
    }
    const CSubparcela sub = DeLinea(kLineaLista, kModoLista);
    std::string linea;
    sub.Compon(linea, kModoLista);
    EXPECT_EQ(Graba(DeLinea(linea + "\n", kModoLista), false), Graba(sub, false));
}
