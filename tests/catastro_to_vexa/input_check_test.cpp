#include <string>

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "shell/frame/box_texts.h"
#include "tests/catastro_to_vexa/run_fixture.h"

namespace {

std::string Veces(int veces, const std::string& linea)
{
    std::string lineas;
    for (int i = 0; i < veces; ++i)
        lineas += linea + "\r\n";
    return lineas;
}

const std::string kBuena = "PJ045127   00001LA ERA" + std::string(30, ' ');

const std::string kOtra = "PJ045127   00002EL ALTO" + std::string(30, ' ');

/// The line with something else at a column.
std::string Con(std::string linea, std::size_t columna, std::string_view texto)
{
    return linea.replace(columna, texto.size(), texto) + "\r\n";
}

const std::string kParcela = "PR045127" + std::string(100, ' ');
const std::string kConstruccion = "SC045127" + std::string(100, ' ');

/// A line of a type with 100 more blanks.
std::string De(std::string_view tipo)
{
    return std::string(tipo) + kParcela.substr(tipo.size());
}

/// A holder of a list.
std::string Titular(std::string_view numero, std::string_view nombre,
                    std::string_view municipio = "127")
{
    const std::string linea = "31045" + std::string(municipio) + std::string(80, ' ');
    return Con(Con(linea, 8, numero).substr(0, linea.size()), 49, nombre);
}

/// A parcel of an exchange file, and its holder with a share.
std::string Participa(std::string_view parcela, std::string_view titular, std::string_view partici)
{
    return Linea(kParcela, {{13, "001"}, {16, parcela}, {46, titular}, {53, "PR"}, {71, "00001"}}) +
           Linea(De("TL"), {{11, titular}, {18, partici}, {23, titular}}); // a name of its own
}

} // namespace

TEST(EntradaSospechosa, IsToldBehindTheSummaryAndKeepsWhatItsTablesReplace)
{
    const std::string relacion =
        "32045127" + std::string(13, ' ') + "00100001" + std::string(59, ' ');
    const struct {
        const char* motivo;
        std::string entrada;
        int tipo;
        const char* observacion; ///< what it begins or ends with; empty for none
    } casos[] = {
        {"a good one", Veces(12, kBuena), 0, ""},
        {"nothing in it", "", 0, "está vacío"},
        {"carriage returns alone", kBuena + "\r" + kBuena + "\r", 0, "se han leído como una sola"},
        {"ends like those of some transfers", Veces(12, kBuena + "\r"), 0, ""},
        {"blank lines alone", "\r\n\r\n", 0, "está vacío"},
        {"a list read as an exchange file", Veces(3, relacion), 0, "(TipoEntrada=1)?"},
        {"an exchange file read as a list", Veces(3, kBuena), 1, "(TipoEntrada=0)?"},
        {"UTF-8", Paraje("00001", "LA PEÑA"), 0, "se han leído mal"},
        {"UTF-8 behind lines of the code page",
         Paraje("00001", "LA PEÑA"_ansi) +
             Veces(2, "PJ045127   00002LA CAÑADA" + std::string(30, ' ')),
         0, "líneas en UTF-8, 2, entre otras que no lo están: sus acentos y eñes se han leído mal"},
        {"a code page of DOS, and a sign of 1252 that is no letter",
         Paraje("00001", "LA PE\xA5"
                         "A") +
             Paraje("00002", "\xA5UBLO") +
             Paraje("00003", "N\xE9\xA5"
                             "EZ") +
             Paraje("00004", "A 30 \xA3 "),
         0,
         "líneas con letras de la página de códigos de DOS, 3: sus acentos y eñes se han leído "
         "mal"},
        {"a mark of UTF-8", "\xEF\xBB\xBF" + Veces(3, kBuena), 0,
         "empieza por una marca de Unicode y se ha leído mal: guárdelo como ANSI"},
        {"a mark in front of a list", "\xEF\xBB\xBF" + Veces(3, relacion), 1,
         "empieza por una marca de Unicode y se ha leído mal: guárdelo como ANSI"},
        {"UTF-16", std::string("P\0J\0\r\0\n\0", 8), 0,
         "está en UTF-16 y se ha leído mal: guárdelo como ANSI"},
        {"small letters", Veces(1, kBuena) + Veces(2, "pj" + kBuena.substr(2)), 0,
         "líneas que no empiezan como un registro, 2. No se han leído"},
        {"line ends turned round", kBuena + "\n\r" + kBuena + "\n\r" + kBuena, 0,
         "líneas que no empiezan como un registro, 2. No se han leído"},
        {"an end of file between two", Veces(1, kBuena) + "\x1A" + Veces(1, kBuena), 0,
         "líneas que no empiezan como un registro, 1. No se han leído"},
        {"an end of file at the end", Veces(2, kBuena) + "\x1A", 0, ""},
        {"what goes on behind the longest line",
         Veces(1, kParcela + std::string(100, '0')) + Veces(1, kBuena), 0,
         "líneas que no empiezan como un registro, 1. No se han leído"},
        {"numbers that no list has", Veces(1, relacion) + Veces(2, relacion) + Veces(1, kBuena), 1,
         "líneas que no empiezan como un registro, 1. No se han leído"},
        {"a piece with carriage returns", Veces(1, kBuena) + Veces(1, kBuena + "\r" + kBuena), 0,
         "líneas con retornos de carro o fines de fichero dentro, 1. Lo que va detrás no se ha "
         "leído"},
        {"two in a line", Veces(1, kBuena) + Veces(1, kBuena + kParcela), 0,
         "líneas con más de un registro, 1. Sólo se ha leído el primero"},
        {"columns for other readers", Veces(2, kBuena + "2045127"), 0, ""},
        {"a type that nobody reads here", Veces(1, kBuena) + Veces(1, "CT045127"), 0, ""},
        {"cut in its last line", Veces(2, kBuena) + kOtra.substr(0, 20), 0,
         "acaba a mitad de una línea"},
        {"a last line that loses its last field without its end",
         Veces(1, kBuena) + kParcela.substr(0, 76) + "C", 0, "acaba a mitad de una línea"},
        {"one that loses a blank", Veces(1, kBuena) + kParcela.substr(0, 77), 0, ""},
        {"without its last line end", Veces(2, kBuena) + kBuena, 0, ""},
        {"as short as one before",
         Veces(1, kOtra.substr(0, 20)) + Veces(1, kBuena) + kOtra.substr(0, 20), 0, ""},
        {"blanks alone", Veces(1, kBuena) + Veces(1, "   ") + Veces(1, kBuena), 0, ""},
        {"the code page", Paraje("00001", "LA PEÑA"_ansi), 0, ""},
        {"lines longer than any", Veces(12, kBuena + std::string(200, 'x')), 0,
         "más largas que las de su forma"},
        {"lines shorter than any", Veces(12, "PJ045127   00001"), 0,
         "más cortas que las de su forma"},
        {"a tab in a text", Veces(2, kBuena) + Paraje("00002", "LA\tERA"), 0,
         "1. El texto que lleva uno queda partido en su tabla, y lo que va detrás se lee en otra "
         "columna"},
        {"a tab in a list", Veces(1, relacion) + Veces(2, "2204512\t" + std::string(80, ' ')), 1,
         "2. El texto que lleva uno queda partido en su tabla, y lo que va detrás se lee en otra "
         "columna"},
        {"a few short ones may be so", Veces(9, "PJ045127   00001"), 0, ""},
        {"holders without a parcel",
         Veces(1, "TL045127   0000001" + std::string(100, ' ')) + Veces(1, kBuena), 0,
         "hay titulares, y ninguna parcela que se haya podido leer"},
        {"values that have room in 32 bits, and one that hasn't",
         Veces(1, kBuena) + Con(kParcela, 30, "002147483647") + Con(kParcela, 30, "002147483648"),
         0,
         "un número demasiado grande, 1, que se ha leído mal: un valor o una superficie llega a "
         "2147483647; un volumen, a 32767"},
        {"surfaces of a list",
         Veces(1, relacion) + Con(relacion, 67, "2147483647") +
             Con(Con(relacion, 24, "00002").substr(0, 88), 67, "4294967297") +
             Con("33" + relacion.substr(2), 77, "9999999999"),
         1,
         "un número demasiado grande, 2, que se ha leído mal: un valor o una superficie llega a "
         "2147483647; un volumen, a 32767"},
        {"a volume that has room in 16 bits, and one that hasn't",
         Veces(1, kBuena) + Con(kConstruccion, 50, "032767") + Con(kConstruccion, 50, "040000"), 0,
         "un número demasiado grande, 1, que se ha leído mal: un valor o una superficie llega a "
         "2147483647; un volumen, a 32767"},
        {"numbers with a letter, one of each record",
         Veces(1, kBuena) + Con(Con(kParcela, 71, "00001").substr(0, 108), 13, "00100001  1O1") +
             Con(kConstruccion, 50, "03O767") + Con(De("TL"), 18, "100 O") +
             Con(De("MD"), 56, "1x") + Con(De("PJ"), 11, "2O"),
         0, "números que llevan algo más que cifras, 5. Se han leído sin lo que va detrás"},
        {"a list's surface with a comma, and a holder's number with a letter",
         Veces(1, relacion) + Con(relacion, 67, "    1234,5") +
             Con("31" + relacion.substr(2), 8, "12O"),
         1, "números que llevan algo más que cifras, 2. Se han leído sin lo que va detrás"},
        {"characters that part a row, and one that doesn't",
         Veces(1, kBuena) + Con(kConstruccion, 73, "009") + Con(kConstruccion, 73, "010") +
             Con(kConstruccion, 73, "269") + Con(kConstruccion, 73, "065"),
         0,
         "construcciones cuyo carácter singular es un tabulador o un fin de línea, 3, que parte su "
         "fila"},
        {"another office in the first line, and none in another one",
         Con(kBuena, 2, "046") + Veces(2, kBuena) + Con(kBuena, 2, "   "), 0,
         "líneas de otra gerencia que la primera, 2. Las tablas llevan la de ella"},
        {"a list whose heading names no office", Con(relacion, 2, "   ") + Veces(1, relacion), 1,
         "líneas de otra gerencia que la primera, 1. Las tablas llevan la de ella"},
        {"two places of one number, and one that comes twice",
         Veces(2, kBuena) + Con(kBuena, 16, "EL ALTO"), 0,
         "parajes con el número de otro, 1. Sus parcelas van al primero"},
        {"holders of a list with one number",
         Veces(2, relacion) + Titular("0000001", "ANA") + Titular("0000005", "ANA") +
             Titular("0000001", "LUIS"),
         1,
         "líneas de titulares con el número de otro, 1. Quedan sin número, y sus parcelas sin "
         "titular"},
        {"parcels of a list without a number or a polygon",
         Veces(1, relacion) + Con(relacion, 21, "00100000") + Con(relacion, 21, "   00001"), 1,
         "parcelas sin número o sin polígono, 2. No se han leído, ni sus subparcelas"},
        {"a parcel of a list under each of its holders, once with another surface",
         Veces(3, relacion) + Con(relacion, 67, "         7"), 1,
         "parcelas que vienen otra vez con otra superficie, zona o paraje, 1. Vale la primera"},
        {"a subparcel of a list whose holder is in another municipality",
         Veces(2, relacion) + Titular("0000001", "ANA", "128") +
             Con("33" + relacion.substr(2), 29, "   a"),
         1, "subparcelas de un titular de otro municipio, 1. Quedan sin él"},
        {"a share that leaves something out, and one that is rounded",
         Veces(1, kBuena) + Participa("00001", "0000001", "00050") +
             Participa("00002", "0000002", "00099"),
         0, "parcelas cuyas participaciones suman menos de 100, 1. ¿Falta algún titular?"},
        {"parcels of one municipality", kBuena + "\r\n" + Veces(2, kParcela), 0, ""},
        {"a last line that is none", kBuena + "\r\n" + Veces(2, kParcela) + "FIN", 0,
         "hay parcelas, 2, de otro municipio que el de su última línea, 000, que es donde se han "
         "buscado los datos de todas. ¿Sobra esa línea?"},
        {"two municipalities",
         Veces(1, kParcela) + "PJ045128   00001LA ERA" + std::string(30, ' ') + "\r\n", 0,
         "hay parcelas, 1, de otro municipio que el de su última línea, 128, que es donde se han "
         "buscado los datos de todas. ¿Sobra esa línea?"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CBancoDeIda banco;
        const CCarpetaPrueba& carpeta = banco.carpeta;
        banco.aplicacion.WriteProfileInt("CampivaAVexa", "TipoEntrada", caso.tipo);
        carpeta.Pon("entrada.txt", caso.entrada);
        carpeta.Pon("Parajes.txt", "antes");
        CCampivaAVexaDlg dialogo;
        banco.EjecutaLote(dialogo, "entrada.txt");
        EXPECT_EQ(banco.aplicacion.guion.cajas.size(), 1U) << "the summary alone";
        const auto& dicho = banco.aplicacion.guion.escritos.observaciones;
        if (*caso.observacion == '\0') {
            EXPECT_TRUE(dicho.empty());
            EXPECT_EQ(carpeta.Lee("Parajes.txt.anterior"), "(no file)");
            continue;
        }
        ASSERT_EQ(dicho.size(), 2U);
        EXPECT_TRUE(ansi::AUtf8(dicho[0]).ends_with(caso.observacion)) << ansi::AUtf8(dicho[0]);
        EXPECT_EQ(carpeta.Lee("Parajes.txt.anterior"), "antes");
        EXPECT_NE(ansi::AUtf8(dicho[1]).find("Parajes.txt.anterior"), std::string::npos);

        dialogo.SendMessage(WM_COMMAND, IDOK, 0); // wrong once more
        EXPECT_EQ(carpeta.Lee("Parajes.txt.anterior"), "antes");
        EXPECT_NE(carpeta.Lee("Parajes.txt.anterior.2"), "(no file)");
    }
}

TEST_F(Traduccion, TellsTabsAndUtf8BesideLinesOfAnotherLength)
{
    const CString entrada = carpeta.En("entrada.txt");
    Ejecuta(Veces(12, "PJ045127   00001LA\tPEÑA" + std::string(30, ' ') + std::string(200, 'x')));
    EXPECT_EQ(aplicacion.guion.escritos.observaciones,
              (std::vector<CString>{Formatea(observaciones::kTabuladores, entrada, 12).c_str(),
                                    Formatea(observaciones::kLineasLargas, entrada).c_str(),
                                    Formatea(observaciones::kParecenUtf8, entrada).c_str()}));
}

TEST_F(Traduccion, TellsWhichTableCouldNotBeKept)
{
    carpeta.Pon("Parajes.txt", "antes");
    carpeta.Pon("Parajes.txt.anterior", "");
    for (int i = 2; i <= 1000; ++i) // all names that it could have
        carpeta.Pon(Formatea("Parajes.txt.anterior.%d", i).c_str(), "");
    Ejecuta("");
    const auto& dicho = aplicacion.guion.escritos.observaciones;
    ASSERT_EQ(dicho.size(), 2U);
    EXPECT_EQ(ansi::AUtf8(dicho[1]), "Lo que había en " + ansi::AUtf8(carpeta.En("Parajes.txt")) +
                                         " no se ha podido conservar a su lado");
}
