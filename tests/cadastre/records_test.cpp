// What all records have in common: each reads lines of several layouts and writes two forms. What
// one record alone does stands in its own file.

#include <variant>

#include "cadastre/exchange_format.h"
#include "cadastre/module_place.h"
#include "cadastre/parcel.h"
#include "tests/cadastre/record_lines.h"
#include "tests/cadastre/record_tools.h"

namespace {

using CRegistro = std::variant<CParcela, CSubparcela, CTitular, CModulo, CParaje>;

const CParcela kNueva(0, 0, 0, "");

bool Lee(CRegistro& registro, std::string_view linea, int modo)
{
    return std::visit([&](auto& r) { return r.Lee(linea, modo); }, registro);
}

/// What it writes into a file of the municipality 28 079, a subparcel as one of parcel 12 345.
std::string Escrito(const CRegistro& registro, bool fijo)
{
    return Grabado([&](CStdioFile& f) {
        std::visit(
            [&]<class R>(const R& r) {
                if constexpr (std::is_same_v<R, CParcela>)
                    r.Graba(f, 28, 79, 0, {}, {}, fijo);
                else if constexpr (std::is_same_v<R, CSubparcela>)
                    r.Graba(f, 28, 79, 0, 1, 12, 345, fijo);
                else
                    r.Graba(f, 28, 79, 0, fijo);
            },
            registro);
    });
}

} // namespace

TEST(Registros, WriteBothFormsOfWhatTheyReadAndReadItBack)
{
    const std::string larga(62, 'N');
    const struct {
        const char* motivo;
        CRegistro registro;
        int modo;
        std::string linea;
        std::string fijo; ///< empty: not looked at
        std::string fila; ///< empty: the same as the line
    } casos[] = {
        {"parcel", kNueva, kModoCatastro, kLineaPR, "",
         "028|079|  12| 345| 67890| 123456789|        98765| 1994|      -1|  |     0|0559-12-SU|"
         " 107| 145|     0|C"},
        {"parcel of the list", kNueva, kModoLista, kListaPR, "",
         "028|079|  12| 345| 67890| 1234567890|            0|    0|      -1|  |     0|          |"
         "   0|   0|     0| "},
        {"parcel, same row", kNueva, kModoTabla,
         "028|079|   1| -12|   345|   -123456|        98765| 1994|      -1|  |     0|Ñ-12      |"
         "   7| 1000|     0|ñ"_ansi,
         "", ""},
        {"parcel, empty fields keep what was there but the surface",
         DeFila(kNueva, "||5|6|7|99||1994||||0559"), kModoTabla, "028|079|1|12|345||||||||||||", "",
         "028|079|   1|  12|   345|         0|            0| 1994|      -1|  |     0|0559      |"
         "   0|   0|     0| "},
        {"parcel, wide numbers widen it, with the sign inside the width", kNueva, kModoTabla,
         "||123|1234|123456|-123456|-1|||||  |-3|1000|| ",
         "028079000PR1231234123456-0012-34-56-000001  0000000000                   -031000      "
         "              00000         R00                                       ",
         "028|079| 123| 1234| 123456|   -123456|           -1|    0|      -1|  |     0|          |"
         "  -3| 1000|     0| "},
        {"land", CSubparcela(), kModoCatastro, kLineaSP, "",
         "028|079|   1|  12|   345|  AB|A|SX| 123456789|E1| 37| 1994|LR| 12|REFER-1|REFER-2|   0|"
         "              |   0|   0|  0|       0|  0| 0| 0| 0| 0| |    0|    0| | | | |    0"},
        // 600000 of volume keep their low 16 bits, 755 its low 8.
        {"construction", CSubparcela(), kModoCatastro, kLineaSC, "",
         "028|079|   1|  12|   345|  AB| |S |         0|  |  0|    0|  |  0|       |       | 123|"
         "NAVE CON PATIO| 123| 456| 34|   10176|  0| 0| 0| 0| 9|ó| 1950| 1987|a|b|c| |    0"_ansi},
        {"subparcel of the list", CSubparcela(), kModoLista, kListaSP, "",
         "028|079|   1|  12|   345|  AB|A|S | 1234567890|  |  0|    0|LR| 12|       |       |   0|"
         "              |   0|   0|  0|       0|  0| 0| 0| 0| 0| |    0|    0| | | | |    0"},
        {"subparcel, same row", CSubparcela(), kModoTabla,
         "028|079|   1|  12|   345|  AB| |SX|        -7|  | -1| 1994|LR| 12|       |REF 2  | 999|"
         "              |   0|   1|  2|  -32768| 11| 4| 5| 6| 7|ñ| 1950|    0|a| |c|d| 2001"_ansi,
         "", ""},
        {"subparcel, defaults", CSubparcela(), kModoTabla,
         "028|079|1|12|345|A||||||||||||||||||||||||||||",
         "028079000SP0101200345   A S 000000000  000000  00                                   "
         "000              000000000000000000000 00000000    0000           ",
         "028|079|   1|  12|   345|   A| |S |         0|  |  0|    0|  |  0|       |       |   0|"
         "              |   0|   0|  0|       0|  0| 0| 0| 0| 0| |    0|    0| | | | |    0"},
        {"subparcel, all columns of both sides", CSubparcela(), kModoTabla,
         "|||||A|A|S|123456|E1|3|1994|LR|12|REF-1|REF-2|7|NAVE AÑOSA|10|20|3|600|5|1|2|3|9|K|1950|"
         "1987|a|b|c|d|2001"_ansi,
         "028079000SP0101200345   AAS 000123456E1031994LR12                     REF-1  REF-2  "
         "007NAVE AÑOSA    010020030000600051239K19501987abcd2001           "_ansi,
         "028|079|   1|  12|   345|   A|A|S |    123456|E1|  3| 1994|LR| 12|REF-1  |REF-2  |   7|"
         "NAVE AÑOSA    |  10|  20|  3|     600|  5| 1| 2| 3| 9|K| 1950| 1987|a|b|c|d| 2001"_ansi},
        {"subparcel, wide values widen it, and only the marked texts are cut", CSubparcela(),
         kModoTabla,
         "|||||ABCDE||SXY|-1|E12|100|-1|LRX|-5|REFERENCIA|12345678|1000|DESCRIPCION LARGA|1000|"
         "-10|100|32767|100|10|-1||10||10000||||||-1",
         "028079000SP0101200345ABCD SXY0000000-1E12100-001LRX-5                     "
         "REFERENCIA123456781000DESCRIPCION LARGA1000-10100003276710010-1010 100000000    "
         "-001           ",
         "028|079|   1|  12|   345|ABCD| |SXY|        -1|E12| 100|   -1|LRX| -5|REFEREN|1234567|"
         " 1000|DESCRIPCION LARGA| 1000| -10| 100|   32767| 100| 10|-1| 0| 10| | 10000|    0| | | |"
         " |   -1"},
        {"holder", CTitular(), kModoCatastro, kLineaTL, "",
         "028|079| 7001234|PEÑA RUIZ, JOSÉ                                             |F|01234567|"
         "L|E|034|179|CA|AVENIDA DEL GENERAL MOSCA| 9012|B1X |2 |BAJ|DCH|45001"_ansi},
        {"holder of the list, which has neither Exen nor bloq", CTitular(), kModoLista, kListaTL,
         "",
         "028|079| 7001234|PEÑA RUIZ, JOSÉ                                             |F|01234567|"
         "L| |034|179|CA|AVENIDA DEL GENERAL MOSCA| 9012|  |2 |BAJ|DCH|45001"_ansi},
        {"holder, same row", CTitular(), kModoTabla,
         "028|079|      -1|MUÑOZ IBÁÑEZ, BEGOÑA                                        | |        |"
         " |E|003|079|C |LA ALMUNIA DE DOÑA GODINA|    0|B |2 |BA|DC |05001"_ansi,
         "", ""},
        {"holder, empty fields keep what was there", CTitular("C/ MAYOR"), kModoTabla,
         "028|079|7|ANA  ||12345678||||||", "",
         "028|079|       7|ANA                                                         | |12345678|"
         " | |000|000|CL|MAYOR                    |    0|  |  |  |   |00000"},
        {"holder, the record's cuts, and most texts whole in the row", CTitular(), kModoTabla,
         "||1234|PEÑA RUIZ, JOSÉ|F|01234567|L|E|3|79|CALLE|AVENIDA DEL GENERAL MOSCARDÓ|12|B1X|2|"
         "BAJO|DCHA|5001"_ansi,
         "028079000TL0001234 PEÑA RUIZ, JOSÉ                                             "
         "F01234567L00000 CAAVENIDA DEL GEN     0012 B12 BADC0307905001 E        "_ansi,
         "028|079|    1234|PEÑA RUIZ, JOSÉ                                             |F|01234567|"
         "L|E|003|079|CA|AVENIDA DEL GENERAL MOSCARDÓ|   12|B1X|2 |BAJO|DCHA|05001"_ansi},
        {"holder, wide numbers, and a long name cut in the record alone", CTitular(), kModoTabla,
         "||-1|" + larga + "||123456789|||123|1234|||-5|||||123456",
         "028079000TL-000001 " + std::string(60, 'N') +
             " 12345678 00000                       -005         1231234123456          ",
         "028|079|      -1|" + larga +
             "| |123456789| | |123|1234|  |                         |   -5|  |  |  |   |123456"},
        {"module, days in hundredths", CModulo(), kModoCatastro, kLineaMD, "",
         "028|079|LR| 37|Labradío regadío                        | 120000|  125000.00| 1100|"
         " 210000| 3100| 410000| 5100| 610000|x|y|z"_ansi},
        {"module, same row", CModulo(), kModoTabla,
         "028|079|PD| 12|Prado de siega                          |      7|       8.00|    1|     "
         "-2|    3|      4| 9999|      6| |S|N",
         "", ""},
        {"module, a record of 80 columns", CModulo(), kModoTabla,
         "||LR|3|Labradío regadío  |12|12.50|1|200|3|400|5|600|x|y|z"_ansi,
         "028079000MDLR03-00001200                                    00001250            ",
         "028|079|LR|  3|Labradío regadío                        |     12|      12.50|    1|    "
         "200|"
         "    3|    400|    5|    600|x|y|z"_ansi},
        {"module, wide numbers and texts widen it", CModulo(), kModoTabla,
         "||LRX|-1|" + larga + "|1234567|-0.05|12345|-1|||| 1234567",
         "028079000MDLRX-1-123456700                                    -0000005            ",
         "028|079|LRX| -1|" + larga +
             "| 1234567|      -0.05| 12345|     -1|    0|      0|    0| 1234567| | | "},
        {"place", CParaje(), kModoCatastro, "PJ028079   00042El Peñón"_ansi,
         "028079000PJ00042El Peñón"_ansi + Veces(126, " "),
         "028|079|   0|    42|El Peñón                      "_ansi},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const bool tabla = caso.modo == kModoTabla;
        const std::string fila = Fila(caso.fila.empty() ? caso.linea : caso.fila);
        CRegistro registro = caso.registro;
        EXPECT_TRUE(Lee(registro, Fila(caso.linea) + (tabla ? "" : "\n"), caso.modo));
        EXPECT_EQ(Escrito(registro, false), fila + "\r\n");
        if (!caso.fijo.empty()) {
            EXPECT_EQ(Escrito(registro, true), caso.fijo + "\r\n");
        }
        CRegistro otro = caso.registro;
        EXPECT_TRUE(Lee(otro, fila, kModoTabla));
        EXPECT_EQ(Escrito(otro, false), fila + "\r\n");
    }
}

TEST(Registros, RefuseARowWithoutARequiredFieldAndStayAsTheyWere)
{
    const struct {
        CRegistro registro;
        std::vector<const char*> faltas;
        std::vector<const char*> bastan; ///< all that they need; and blanks aren't empty
    } casos[] = {
        {DeFila(kNueva, "||5|6|7"),
         {"028|079||12|345|1", "028|079|1||345|1", "028|079|1|12||1", "028|079|1|12", ""},
         {"||1|12|345", "|| | | "}},
        {DeFila(CSubparcela(), kAntesSP),
         {"028|079|1|12|345||A|SX|99", "028|079|1|12|345", ""},
         {"|||||A", "|||||    "}},
        {DeFila(CTitular(), kAntesTL),
         {"028|079||ANA|F|12345678|L", "028|079|7||F|12345678|L", "028|079|7|ANA|F||L",
          "028|079|7|ANA|F", ""},
         {"||7|ANA||12345678", "|| | || "}},
        {DeFila(CModulo(), kAntesMD),
         {"028|079||3|Prado|1", "028|079|LR|3||1", "028|079|LR|3", ""},
         {"||LR||Prado", "||  ||    "}},
    };
    for (const auto& caso : casos) {
        const std::string antes = Escrito(caso.registro, false);
        for (const char* fila : caso.faltas) {
            CRegistro registro = caso.registro;
            EXPECT_FALSE(Lee(registro, Fila(fila), kModoTabla)) << fila;
            EXPECT_EQ(Escrito(registro, false), antes) << fila;
        }
        for (const char* fila : caso.bastan) {
            CRegistro registro = caso.registro;
            EXPECT_TRUE(Lee(registro, Fila(fila), kModoTabla)) << fila;
        }
    }
}

TEST(Registros, HaveARowAndNoRecordWithoutTheirSaveMark)
{
    CParcela parcela(12, 345, 1, "");
    parcela.salvar = false;
    CSubparcela sub("A");
    sub.salvar = false;
    for (const CRegistro& registro : {CRegistro(parcela), CRegistro(sub)}) {
        EXPECT_EQ(Escrito(registro, true), "");
        EXPECT_NE(Escrito(registro, false), "");
    }
}
