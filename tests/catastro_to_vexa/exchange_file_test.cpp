#include "tests/catastro_to_vexa/run_fixture.h"

namespace {

const std::string kParaje = Paraje("00001", "LA ERA");
const std::string kAna = Titular("0000001", "00060", "ANA", "11111111");
const std::string kLuis = Titular("0000002", "00040", "LUIS", "22222222");
const std::string kDeAna = Parcela("00001", "0000001", "00001");
const std::string kDeNadie = Parcela("00001", "0000007", "00001"); // nobody has the number
const std::string kSuelo = Suelo("00001", "   a", "00100");

} // namespace

TEST_F(Traduccion, TellsEachFaultOfAnExchangeFile)
{
    const struct {
        const char* motivo;
        std::string entrada;
        Textos mensajes;
    } casos[] = {
        {"a clean file", kParaje + kAna + kDeAna + kSuelo, {}},
        {"places and holders may stand behind the parcels", kSuelo + kDeAna + kAna + kParaje, {}},
        {"no such place: the parcel goes, its subparcel is told, its link isn't",
         kParaje + kAna + Parcela("00001", "0000001", "00009") + kSuelo,
         {"E102: Paraje    9 no encontrado en parcela    1      1",
          "E103: Parcela    1      1 inexistente en subparcela a"}},
        {"a repeated parcel is linked a second time",
         kParaje + kAna + kDeAna + kDeAna + kSuelo,
         {"E206: La parcela    1      1 ya existe",
          "E212: El cotitular ANA ya era titular en la parcela    1      1"}},
        {"parcel number 0",
         kParaje + kAna + Parcela("00000", "0000001", "00001"),
         {"E207: Referencia de parcela    1      0 no válida"}},
        {"no such holder",
         kParaje + kAna + kDeNadie + kSuelo,
         {"E202: Parcela    1      1 sin propietarios"}},
        {"neither subparcels nor holders gives the first alone",
         kParaje + kDeNadie,
         {"E201: Parcela    1      1 sin subparcelas",
          "E112: La parcela    1      1 difiere en superficie      100 de sus subparcelas        "
          "0"}},
        {"a repeated letter counts once in the sum",
         kParaje + kAna + kDeAna + kSuelo + Suelo("00001", "   a", "00900"),
         {"W301: La subparcela    1      1    a está duplicada"}},
        {"two holders of one number: the second gets a new one",
         kParaje + kAna + Titular("0000001", "00040", "EVA", "33333333") + kLuis + kDeAna + kSuelo,
         {"E214: El cotitular EVA no tiene asignado número imputación. Se le asigna el número 3."}},
        {"same name, other DNI; same DNI, other name",
         kAna + Titular("0000003", "00000", "ANA", "99999999") +
             Titular("0000004", "00000", "PEPA", "11111111"),
         {"E204: Ya existe otro titular con el mismo nombre y distinto DNI para ANA",
          "E205: Ya existe otro titular con el mismo DNI y distinto nombre que 11111111"}},
        {"a module twice",
         Linea("MD045127", {{11, "C-02-"}, {16, "LABOR"}, {56, "000100"}}) +
             Linea("MD045127", {{11, "C-02-"}, {16, "LABOR"}}),
         {"E203: El módulo LABOR con calificación C- e intensidad 2 ya insertado."}},
        {"types that nobody knows, and an empty line", "CT045127\r\n\r\nXX\r\npr045127\r\n", {}},
        {"a parcel line of 71 characters names neither place nor holder",
         kParaje + kAna + kDeAna.substr(0, 70) + "\r\n",
         {"E102: Paraje    0 no encontrado en parcela    1      1"}},
        {"a subparcel line of 16 characters names no parcel",
         std::string("SP0451270000010\r\n"),
         {"E103: Parcela    0      0 inexistente en subparcela "}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        Ejecuta(caso.entrada);
        EXPECT_EQ(Mensajes(), caso.mensajes);
    }
}

TEST_F(Traduccion, MakesNoLinkForALineTooShortToNameAHolder)
{
    // Number 0 exists both as a place and as a holder, and still the short line links nobody.
    Ejecuta(Paraje("00000", "LA ERA") + Titular("0000000", "00100", "CERO", "11111111") +
            Parcela("00001", "0000000", "00000").substr(0, 70) + "\r\n" + kSuelo);
    EXPECT_EQ(Mensajes(), Textos{"E202: Parcela    1      1 sin propietarios"});
    EXPECT_EQ(Filas("Parcelas.txt"), 1);
}

TEST_F(Traduccion, LinksEveryHolderOfANumberAndChoosesTheGreatestShare)
{
    Ejecuta(kParaje + kAna + kLuis + Titular("0000002", "00070", "ANA", "11111111") +
            Parcela("00001", "0000002", "00001") + kSuelo);
    EXPECT_EQ(Mensajes(), Textos{});
    // Ana's 70 beat the 40 of Luis, though the number is his.
    EXPECT_EQ(
        Lineas("Parcelas.txt").at(1),
        "045\t127\t   1\t   1\t     1\t       100\t            0\t    0\t       1\tPR\t    70\t"
        "          \t   0\t   0\t     1\t ");
    EXPECT_EQ(Lineas("Cotitulares.txt").at(1),
              "045\t127\t   1\t   1\t     1\t       2\tPR\t    40");
}

TEST_F(Traduccion, FindsAHolderAmongNumbersThatLeaveOutMany)
{
    const struct {
        const char* motivo;
        const char* segundo; ///< number of Luis; Ana has 5
        const char* nombrado;
        const char* parcela; ///< the number that its row has in the end, -1 for no holder
    } casos[] = {
        {"side by side", "0000006", "0000006", "6"},
        {"side by side, one below", "0000006", "0000004", "-1"},
        {"side by side, one above", "0000006", "0000007", "-1"},
        {"far away", "9000000", "9000000", "9000000"},
        {"far away, the first", "9000000", "0000005", "5"},
        {"far away, one that is left out", "9000000", "0000006", "-1"},
        {"far away, one below", "9000000", "0000004", "-1"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        Ejecuta(kParaje + Titular(caso.segundo, "00100", "LUIS", "22222222") +
                Titular("0000005", "00100", "ANA", "11111111") +
                Parcela("00001", caso.nombrado, "00001") + kSuelo);
        EXPECT_EQ(Campo("Parcelas.txt", 0, 8), caso.parcela);
    }
}

TEST_F(Traduccion, KeepsHoldersOfAnotherMunicipalityOutOfThePhaseOfTheLast)
{
    Ejecuta("TL045099  " + kAna.substr(10) + "PJ045099   00001OTRO\r\n" + kParaje + kLuis + kDeAna +
            Parcela("00002", "0000002", "00001") + kSuelo + Suelo("00002", "   a", "00100"));
    EXPECT_EQ(Mensajes(), Textos{"E202: Parcela    1      1 sin propietarios"});
    EXPECT_THAT(aplicacion.guion.cajas.back().texto,
                testing::HasSubstr("municipios leidos  :      2"));
    EXPECT_EQ(Lineas("Titulares.txt").at(1).substr(0, 16), "045\t099\t       1");
}

TEST_F(Traduccion, ReadsALongLineInPiecesThatAreLinesOfTheirOwn)
{
    std::string larga = Linea("XX045127", {{189, "."}});
    larga.replace(larga.size() - 2, 2, Paraje("00001", "DETRAS"));
    Ejecuta(larga);
    EXPECT_EQ(Lineas("Parajes.txt").at(1),
              "045\t127\t   0\t     1\tDETRAS                        ");
}

TEST_F(Traduccion, StopsInEachPhaseWithWhatWasReadUntilThen)
{
    // EVA has the number of ANA, and more of the first parcel than she.
    const std::string eva = Titular("0000001", "00070", "EVA", "33333333");
    const std::string entrada = kParaje + kAna + kLuis + eva + kDeAna +
                                Parcela("00002", "0000002", "00001") + kSuelo +
                                Suelo("00002", "   a", "00100");
    // One pump for each phase and each tick: 1 + 8 lines, 1 + 2 parcels, 1 + 2 subparcels, 1 + 2
    // links.
    const struct {
        const char* motivo;
        int vez;
        int parcelas, subparcelas, errores;
        const char* numImputa; ///< of the first parcel, if there is one
        Textos numeros;        ///< of the holders
    } casos[] = {
        {"the first line", 2, 0, 0, 0, "", {}},
        {"the last line", 9, 0, 0, 0, "", {"-1", "1", "2"}},
        {"the first parcel", 11, 0, 0, 0, "", {"-1", "1", "2"}},
        {"the second parcel", 12, 1, 0, 2, "-1", {"-1", "1", "2"}},
        {"the first subparcel", 14, 2, 0, 4, "-1", {"-1", "1", "2"}},
        {"the second subparcel", 15, 2, 1, 3, "-1", {"-1", "1", "2"}},
        {"the first link: all have numbers", 17, 2, 2, 3, "-1", {"1", "2", "3"}},
        {"the second link: the first holder is still the main one",
         18,
         2,
         2,
         2,
         "1",
         {"1", "2", "3"}},
        {"never: the main holder is chosen", 0, 2, 2, 1, "3", {"1", "2", "3"}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        aplicacion.guion.alAtender = [&](CDialog& dialogo, int vez) {
            if (vez == caso.vez)
                dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
        };
        aplicacion.guion.atendidos = 0;
        Ejecuta(entrada);
        EXPECT_EQ(Filas("Parcelas.txt"), caso.parcelas);
        EXPECT_EQ(Filas("Subparcelas.txt"), caso.subparcelas);
        EXPECT_EQ(static_cast<int>(Mensajes().size()), caso.errores);
        EXPECT_EQ(caso.parcelas > 0 ? Campo("Parcelas.txt", 0, 8) : "", caso.numImputa);
        Textos numeros;
        for (int i = 0; i < Filas("Titulares.txt"); ++i)
            numeros.push_back(Campo("Titulares.txt", static_cast<std::size_t>(i), 2));
        EXPECT_EQ(numeros, caso.numeros);
        EXPECT_EQ(aplicacion.guion.cajas.back().titulo, "Fin del proceso");
    }
}

TEST_F(Traduccion, CarriesASyntheticMunicipalityWithoutAMessage)
{
    const auto municipio = sintetico::Genera({.parcelas = 500}, 3);
    ASSERT_TRUE(sintetico::GrabaLineas(carpeta.En("entrada.txt"),
                                       sintetico::LineasCatastro(municipio).Todas()));
    EjecutaLote("entrada.txt");
    EXPECT_EQ(Mensajes(), Textos{});
    EXPECT_EQ(Filas("Parcelas.txt"), static_cast<int>(municipio.parcelas.size()));
    EXPECT_EQ(Filas("Titulares.txt"), 250);
    EXPECT_EQ(Filas("Modulos.txt"), static_cast<int>(municipio.modulos.size()));
}

TEST_F(Traduccion, TakesAnyBytesForAnInput)
{
    sintetico::CSorteo sorteo(11);
    for (int tipo = 0; tipo < 2; ++tipo) {
        for (int vez = 0; vez < 60; ++vez) {
            std::string bytes;
            constexpr std::string_view kTrozos[] = {"PR045127", "SP045127", "TL045127", "31045127",
                                                    "32045127", "33045127", "\r\n",     "\n",
                                                    "\t",       "-1"};
            while (bytes.size() < 3000)
                if (sorteo.UnoDeCada(2))
                    bytes += kTrozos[static_cast<std::size_t>(sorteo.Hasta(10))];
                else
                    bytes.append(static_cast<std::size_t>(sorteo.Hasta(40)),
                                 static_cast<char>(sorteo.Hasta(256)));
            Ejecuta(bytes, tipo);
            ASSERT_EQ(aplicacion.guion.cajas.back().titulo, "Fin del proceso");
        }
    }
}
