#include "tests/catastro_to_vexa/run_fixture.h"

namespace {

constexpr int kLista = 1;
const std::string kCabecera = "30045127 RELACION\r\n";

std::string TitularLista(std::string_view numero, std::string_view dni, std::string_view nombre)
{
    return Linea("31045127", {{8, numero}, {40, dni}, {48, "Z"}, {49, nombre}, {111, " "}});
}
std::string ParcelaLista(std::string_view parcela, std::string_view paraje,
                         std::string_view superficie)
{
    return Linea(
        "32045127",
        {{19, "01"}, {21, "003"}, {24, parcela}, {35, paraje}, {65, "PR"}, {67, superficie}});
}
std::string SubparcelaLista(std::string_view letra, std::string_view superficie)
{
    return Linea("33045127", {{29, letra}, {33, "C-02LABOR"}, {77, superficie}, {87, " "}});
}

const std::string kAnaEnLista = TitularLista("0000001", "11111111", "ANA");
const std::string kLuisEnLista = TitularLista("0000002", "22222222", "LUIS");
const std::string kTreinta = ParcelaLista("00030", "LA ERA", "0000000100");
const std::string kEntera = SubparcelaLista("a   ", "0000000100");

} // namespace

TEST_F(Traduccion, SharesAParcelOutByTheSurfacesListedUnderEachHolder)
{
    Ejecuta(kCabecera + kAnaEnLista + kTreinta + SubparcelaLista("a   ", "0000000030") +
                kLuisEnLista + kTreinta + SubparcelaLista("b   ", "0000000060") +
                SubparcelaLista("c   ", "0000000010"),
            kLista);
    EXPECT_EQ(Mensajes(), Textos{});
    // Luis has more, so he is the main holder; Ana's row stands among the co-holders.
    EXPECT_EQ(Campo("Parcelas.txt", 0, 8), "2");
    EXPECT_EQ(Campo("Parcelas.txt", 0, 10), "70");
    EXPECT_EQ(Lineas("Cotitulares.txt").at(1),
              "045\t127\t   1\t   3\t    30\t       1\tPR\t    30");
}

TEST_F(Traduccion, TellsEachFaultOfAList)
{
    const struct {
        const char* motivo;
        std::string entrada;
        Textos mensajes;
        int subparcelas;
    } casos[] = {
        {"a letter twice, both stored, the sum counts it once",
         kAnaEnLista + kTreinta + kEntera + SubparcelaLista("a   ", "0000000005"),
         {"W301: La subparcela    3     30    a está duplicada"},
         2},
        {"no surface",
         kAnaEnLista + kTreinta + kEntera + SubparcelaLista("b   ", "         0"),
         {"E209: Subparcela    3     30 b con superficie 0"},
         2},
        {"a parcel numbered 0 takes its subparcels with it, without a word",
         kAnaEnLista + ParcelaLista("00000", "LA ERA", "0000000100") + kEntera,
         {},
         0},
        {"a subparcel in front of every holder is stored and links nobody",
         kTreinta + kEntera + kAnaEnLista,
         {"E202: Parcela    3     30 sin propietarios"},
         1},
        {"lines of type 34 and of no type pass",
         kAnaEnLista + kTreinta + "34\r\n99045127\r\n\r\n" + kEntera,
         {},
         1},
        {"holders in conflict",
         kAnaEnLista + TitularLista("0000003", "99999999", "ANA") +
             TitularLista("0000004", "11111111", "EVA"),
         {"E204: Ya existe otro titular con el mismo nombre y distinto DNI para ANA",
          "E205: Ya existe otro titular con el mismo DNI y distinto nombre que 11111111"},
         0},
        {"a holder of another municipality than the parcel's is not linked",
         "31045099" + kAnaEnLista.substr(8) + kTreinta + kEntera,
         {"E202: Parcela    3     30 sin propietarios"},
         1},
        {"a subparcel line of another municipality belongs to the current parcel",
         kAnaEnLista + kTreinta + "33045099" + kEntera.substr(8),
         {},
         1},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        Ejecuta(kCabecera + caso.entrada, kLista);
        EXPECT_EQ(Mensajes(), caso.mensajes);
        EXPECT_EQ(Filas("Subparcelas.txt"), caso.subparcelas);
    }
}

TEST_F(Traduccion, TakesTheHeadingFromTheFirstLineWithAnything)
{
    const struct {
        const char* motivo;
        std::string entrada;
        const char* fila; ///< start of the place's row
    } casos[] = {
        {"behind empty lines", "\r\n\n" + kCabecera + kTreinta, "045\t127\t   0\t     0\tLA ERA"},
        {"too short", "3\r\n" + kTreinta, "000\t127\t   0\t     0\tLA ERA"},
        {"a parcel line as heading is none of the parcels",
         kTreinta + ParcelaLista("00031", "EL POZO", ""), "045\t127\t   0\t     0\tEL POZO"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        Ejecuta(caso.entrada, kLista);
        ASSERT_EQ(Filas("Parajes.txt"), 1);
        EXPECT_EQ(Lineas("Parajes.txt").at(1).substr(0, std::string_view(caso.fila).size()),
                  caso.fila);
    }
}

TEST_F(Traduccion, NumbersPlacesByTheirOrderAndFindsTheOneOfTheSameName)
{
    Ejecuta(
        kCabecera + kAnaEnLista + kTreinta + kEntera +
            ParcelaLista("00031", "EL POZO", "0000000005") + SubparcelaLista("a   ", "0000000005") +
            ParcelaLista("00032", "LA ERA", "0000000005") + SubparcelaLista("a   ", "0000000005"),
        kLista);
    ASSERT_EQ(Filas("Parajes.txt"), 2);
    const char* const parajes[] = {"0", "1", "0"};
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(Campo("Parcelas.txt", i, 14), parajes[i]);
}

TEST_F(Traduccion, KeepsTheTitleOfTheLastParcelLineLongEnoughToTellIt)
{
    std::string sinTitulo = ParcelaLista("00031", "EL POZO", "0000000000");
    Ejecuta(kCabecera + kAnaEnLista + kTreinta + kEntera + sinTitulo.substr(0, 60) + "\r\n" +
                SubparcelaLista("a   ", "0000000000"),
            kLista);
    EXPECT_EQ(Campo("Parcelas.txt", 1, 9), "PR");
}

TEST_F(Traduccion, AStopLeavesSharesInSquareMetres)
{
    aplicacion.guion.alAtender = [](CDialog& dialogo, int vez) {
        if (vez == 6) // the phase, four lines, then the fifth
            dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
    };
    Ejecuta(kCabecera + kAnaEnLista + kTreinta + SubparcelaLista("a   ", "0000000030") +
                SubparcelaLista("b   ", "0000000060") + SubparcelaLista("c   ", "0000000010"),
            kLista);
    EXPECT_EQ(Filas("Subparcelas.txt"), 2);
    EXPECT_EQ(Campo("Parcelas.txt", 0, 10), "90");
}
