#include "cadastre/holder.h"

#include "cadastre/exchange_format.h"
#include "platform/ansi.h"
#include "tests/cadastre/record_tools.h"

namespace {

CTitular DeLinea(std::string_view linea, int modo)
{
    CTitular titular;
    EXPECT_TRUE(titular.Lee(linea, modo)) << linea;
    return titular;
}

CTitular DeFila(std::string_view conBarras)
{
    return DeLinea(Fila(conBarras), kModoTabla);
}

std::string Registro(const CTitular& titular)
{
    return Grabado([&](CStdioFile& f) { titular.Graba(f, 28, 79, 0, true); });
}

std::string FilaDe(const CTitular& titular)
{
    return Grabado([&](CStdioFile& f) { titular.Graba(f, 28, 79, 0, false); });
}

// Every value differs from the lines' below.
CTitular Anterior()
{
    return DeFila("||55|ANTES|a|DNIANTES|b|c|11|22|SG|VIA|33|BL|ES|PL|PU|44");
}

// Columns that aren't read hold an x.
const std::string kLineaTL = "TL028079xxx7001234xxxxx"
                             "PEÑA RUIZ, JOSÉ                                             "
                             "F01234567LE34179CALLEAVENIDA DEL GENERAL MOSCA9012xxxxxxxxxxx"
                             "B1X xxxxxxxxxxxxxxxxxxxxxxxxx2 BAJDCH45001"_ansi;

const std::string kLineaLista = "280790007001234xxxxxxxxxxxxxxxxxxxxxxxxx01234567L"
                                "PEÑA RUIZ, JOSÉ                                               "
                                "F34xxxxxxxxxxxxxxx179xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"
                                "CALLEAVENIDA DEL GENERAL MOSCA9012x2 BAJDCH45001"_ansi;

} // namespace

TEST(Titular, ReadsEachFieldOfTheReadLayoutFromItsGuardOn)
{
    using T = CTitular;
    const std::vector<CGuarda<T>> guardas = {
        {"NumOrden", &T::NumOrden, 12, "55", "7", "0"},
        {"Nombre", &T::Nombre, 24, "ANTES", "P", ""},
        {"CJurid", &T::CJurid, 84, "a", "F", "a"},
        {"DNI", &T::DNI, 85, "DNIANTES", "0", ""},
        {"letra", &T::letra, 93, "b", "L", "b"},
        {"Exen", &T::Exen, 94, "c", "E", "c"},
        {"Del", &T::Del, 95, "11", "3", "0"},
        {"MunDom", &T::MunDom, 97, "22", "1", "0"},
        {"sig", &T::sig, 100, "SG", "C", ""},
        {"nombreVia", &T::nombreVia, 105, "VIA", "A", ""},
        {"numPol", &T::numPol, 130, "33", "9", "0"},
        {"bloq", &T::bloq, 145, "BL", "B", ""},
        {"esc", &T::esc, 174, "ES", "2", ""},
        {"plant", &T::plant, 176, "PL", "B", ""},
        {"puert", &T::puert, 179, "PU", "D", ""},
        {"CP", &T::CP, 182, "44", "4", "0"},
    };
    CompruebaGuardas(kLineaTL, guardas, Anterior(),
                     [](T& t, std::string_view linea) { t.Lee(linea, kModoCatastro); });
}

TEST(Titular, ReadsEachFieldOfTheListFromItsGuardOn)
{
    using T = CTitular;
    const std::vector<CGuarda<T>> guardas = {
        {"NumOrden", &T::NumOrden, 9, "55", "7", "0"},
        {"DNI", &T::DNI, 41, "DNIANTES", "0", ""},
        {"letra", &T::letra, 49, "b", "L", "b"},
        {"Nombre", &T::Nombre, 50, "ANTES", "P", ""},
        {"CJurid", &T::CJurid, 112, "a", "F", "a"},
        {"Del", &T::Del, 113, "11", "3", "0"},
        {"MunDom", &T::MunDom, 130, "22", "1", "0"},
        {"sig", &T::sig, 168, "SG", "C", ""},
        {"nombreVia", &T::nombreVia, 173, "VIA", "A", ""},
        {"numPol", &T::numPol, 198, "33", "9", "0"},
        {"esc", &T::esc, 203, "ES", "2", ""},
        {"plant", &T::plant, 205, "PL", "B", ""},
        {"puert", &T::puert, 208, "PU", "D", ""},
        {"CP", &T::CP, 211, "44", "4", "0"},
    };
    CompruebaGuardas(kLineaLista, guardas, Anterior(),
                     [](T& t, std::string_view linea) { t.Lee(linea, kModoLista); });
}

TEST(Titular, ReadsWholeLinesOfBothLayouts)
{
    EXPECT_EQ(FilaDe(DeLinea(kLineaTL + "\n", kModoCatastro)),
              Fila("028|079| 7001234|PEÑA RUIZ, JOSÉ                                             |"
                   "F|01234567|L|E|034|179|CA|AVENIDA DEL GENERAL MOSCA| 9012|B1X |2 |BAJ|DCH|"
                   "45001\r\n"_ansi));
    EXPECT_EQ(FilaDe(DeLinea(kLineaLista + "\n", kModoLista)), // it has neither Exen nor bloq
              Fila("028|079| 7001234|PEÑA RUIZ, JOSÉ                                             |"
                   "F|01234567|L| |034|179|CA|AVENIDA DEL GENERAL MOSCA| 9012|  |2 |BAJ|DCH|"
                   "45001\r\n"_ansi));
}

TEST(Titular, ReadsTheLinesThatItComposes)
{
    const CTitular titular = DeLinea(kLineaTL, kModoCatastro);
    std::string linea;
    titular.Compon(linea, kModoCatastro);
    EXPECT_EQ(FilaDe(DeLinea(linea + "\n", kModoCatastro)), FilaDe(titular));

    const CTitular deLista = DeLinea(kLineaLista, kModoLista);
    linea.clear();
    deLista.Compon(linea, kModoLista);
    EXPECT_EQ(FilaDe(DeLinea(linea + "\n", kModoLista)), FilaDe(deLista));
}

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
            const CTitular titular = DeLinea(std::string(columna, ' ') + caso.desdeDNI, modo);
            EXPECT_EQ(titular.DNI, caso.DNI);
            EXPECT_EQ(titular.letra, caso.letra);
        }
    }
    EXPECT_EQ(DeFila("1|2|3|ANA||*1234567|Z").DNI, "*1234567"); // a table row knows no asterisk
}

TEST(Titular, RefusesARowWithoutARequiredFieldAndLeavesTheRecordAlone)
{
    for (const char* fila : {"028|079||ANA|F|12345678|L", "028|079|7||F|12345678|L",
                             "028|079|7|ANA|F||L", "028|079|7|ANA|F", ""}) {
        CTitular titular = Anterior();
        EXPECT_FALSE(titular.Lee(Fila(fila), kModoTabla)) << fila;
        EXPECT_EQ(FilaDe(titular), FilaDe(Anterior())) << fila;
    }
    DeFila("||7|ANA||12345678"); // all that it needs
    DeFila("|| | || ");          // blanks aren't empty
}

TEST(Titular, KeepsDefaultsForTheEmptyFieldsOfARow)
{
    CTitular titular("C/ MAYOR");
    titular.Lee(Fila("028|079|7|ANA  ||12345678||||||"), kModoTabla);
    EXPECT_EQ(
        FilaDe(titular),
        Fila("028|079|       7|ANA                                                         |"
             " |12345678| | |000|000|CL|MAYOR                    |    0|  |  |  |   |00000\r\n"));
}

TEST(Titular, WrapsNumbersAndCutsTrailingBlanksOfNameAndStreetOnly)
{
    const CTitular titular = DeFila("||4294967297| ANA  ||123     |||65539|-32769|C |  VIA  | 70000"
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

TEST(Titular, WritesTheRecordWithItsCutsAndTheRowWithMostTextsWhole)
{
    const CTitular titular =
        DeFila("||1234|PEÑA RUIZ, JOSÉ|F|01234567|L|E|3|79|CALLE|AVENIDA DEL GENERAL MOSCARDÓ|"
               "12|B1X|2|BAJO|DCHA|5001"_ansi);
    EXPECT_EQ(Registro(titular),
              "028079000TL0001234 PEÑA RUIZ, JOSÉ                                             "
              "F01234567L00000 CAAVENIDA DEL GEN     0012 B12 BADC0307905001 E        \r\n"_ansi);
    EXPECT_EQ(FilaDe(titular),
              Fila("028|079|    1234|PEÑA RUIZ, JOSÉ                                             |"
                   "F|01234567|L|E|003|079|CA|AVENIDA DEL GENERAL MOSCARDÓ|   12|B1X|2 |BAJO|DCHA|"
                   "05001\r\n"_ansi));
}

TEST(Titular, WidensForWideNumbersAndCutsALongNameInTheRecordAlone)
{
    const std::string nombre(62, 'N');
    const CTitular titular = DeFila("||-1|" + nombre + "||123456789|||123|1234|||-5|||||123456");
    EXPECT_EQ(Registro(titular),
              "028079000TL-000001 " + std::string(60, 'N') +
                  " 12345678 00000                       -005         1231234123456          \r\n");
    EXPECT_EQ(FilaDe(titular), Fila("028|079|      -1|" + nombre +
                                    "| |123456789| | |123|1234|  |                         |   -5|"
                                    "  |  |  |   |123456\r\n"));
}

TEST(Titular, ARowReadAndWrittenIsTheSameRow)
{
    const std::string fila =
        Fila("028|079|      -1|MUÑOZ IBÁÑEZ, BEGOÑA                                        |"
             " |        | |E|003|079|C |LA ALMUNIA DE DOÑA GODINA|    0|B |2 |BA|DC |05001"_ansi);
    EXPECT_EQ(FilaDe(DeLinea(fila, kModoTabla)), fila + "\r\n");
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
