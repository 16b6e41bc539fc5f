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

/// The line with something else at a column.
std::string Con(std::string linea, std::size_t columna, std::string_view texto)
{
    return linea.replace(columna, texto.size(), texto) + "\r\n";
}

const std::string kParcela = "PR045127" + std::string(100, ' ');

} // namespace

TEST(EntradaSospechosa, IsToldBehindTheSummaryAndKeepsWhatItsTablesReplace)
{
    const std::string relacion = "32045127" + std::string(80, ' ');
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
        {"UTF-8", Veces(1, "PJ045127   00001LA PEÑA" + std::string(30, ' ')), 0,
         "se han leído mal"},
        {"UTF-8 behind lines of the code page",
         Veces(1, std::string("PJ045127   00001LA PEÑA"_ansi) + std::string(30, ' ')) +
             Veces(2, "PJ045127   00002LA CAÑADA" + std::string(30, ' ')),
         0, "líneas en UTF-8, 2, entre otras que no lo están: sus acentos y eñes se han leído mal"},
        {"a code page of DOS, and a sign of 1252 that is no letter",
         Veces(1, "PJ045127   00001LA PE\xA5"
                  "A" +
                      std::string(30, ' ')) +
             Veces(1, "PJ045127   00002\xA5UBLO" + std::string(30, ' ')) +
             Veces(1, "PJ045127   00003N\xE9\xA5"
                      "EZ" +
                          std::string(30, ' ')) +
             Veces(1, "PJ045127   00004A 30 \xA3 " + std::string(30, ' ')),
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
        {"cut in its last line", Veces(2, kBuena) + kBuena.substr(0, 20), 0,
         "acaba a mitad de una línea"},
        {"without its last line end", Veces(2, kBuena) + kBuena, 0, ""},
        {"as short as one before",
         Veces(1, kBuena.substr(0, 20)) + Veces(1, kBuena) + kBuena.substr(0, 20), 0, ""},
        {"blanks alone", Veces(1, kBuena) + Veces(1, "   ") + Veces(1, kBuena), 0, ""},
        {"the code page",
         Veces(1, std::string("PJ045127   00001LA PEÑA"_ansi) + std::string(30, ' ')), 0, ""},
        {"lines longer than any", Veces(12, kBuena + std::string(200, 'x')), 0,
         "más largas que las de su forma"},
        {"lines shorter than any", Veces(12, "PJ045127   00001"), 0,
         "más cortas que las de su forma"},
        {"a tab in a text",
         Veces(2, kBuena) + Veces(1, "PJ045127   00002LA\tERA" + std::string(30, ' ')), 0,
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
         0, "un valor o una superficie de más de 2147483647, 1, que se han leído mal"},
        {"surfaces of a list",
         Veces(1, relacion) + Con(relacion, 67, "2147483647") + Con(relacion, 67, "4294967297") +
             Con(relacion, 21, "00100001") + Con("33" + relacion.substr(2), 77, "9999999999"),
         1, "un valor o una superficie de más de 2147483647, 2, que se han leído mal"},
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
        const CCarpetaPrueba carpeta;
        CAplicacionPrueba aplicacion;
        aplicacion.WriteProfileInt("CampivaAVexa", "TipoEntrada", caso.tipo);
        carpeta.Pon("entrada.txt", caso.entrada);
        carpeta.Pon("Parajes.txt", "antes");
        CCampivaAVexaDlg dialogo;
        dialogo.EjecutaLote(carpeta.En("entrada.txt"), carpeta.En("Modulos.txt"),
                            carpeta.En("Titulares.txt"), carpeta.En("Parcelas.txt"),
                            carpeta.En("Subparcelas.txt"), carpeta.En("Parajes.txt"),
                            carpeta.En("Cotitulares.txt"), nullptr);
        EXPECT_EQ(aplicacion.guion.cajas.size(), 1U) << "the summary alone";
        const auto& dicho = aplicacion.guion.escritos.observaciones;
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

TEST(EntradaSospechosa, TellsTabsAndUtf8BesideLinesOfAnotherLength)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    const CString entrada = carpeta.En("entrada.txt");
    carpeta.Pon("entrada.txt", Veces(12, "PJ045127   00001LA\tPEÑA" + std::string(30, ' ') +
                                             std::string(200, 'x')));
    CCampivaAVexaDlg dialogo;
    dialogo.EjecutaLote(entrada, carpeta.En("Modulos.txt"), carpeta.En("Titulares.txt"),
                        carpeta.En("Parcelas.txt"), carpeta.En("Subparcelas.txt"),
                        carpeta.En("Parajes.txt"), carpeta.En("Cotitulares.txt"), nullptr);
    EXPECT_EQ(aplicacion.guion.escritos.observaciones,
              (std::vector<CString>{Formatea(observaciones::kTabuladores, entrada, 12).c_str(),
                                    Formatea(observaciones::kLineasLargas, entrada).c_str(),
                                    Formatea(observaciones::kParecenUtf8, entrada).c_str()}));
}

TEST(EntradaSospechosa, TellsWhichTableCouldNotBeKept)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    carpeta.Pon("entrada.txt", "");
    carpeta.Pon("Parajes.txt", "antes");
    carpeta.Pon("Parajes.txt.anterior", "");
    for (int i = 2; i <= 1000; ++i) // all names that it could have
        carpeta.Pon(Formatea("Parajes.txt.anterior.%d", i).c_str(), "");
    CCampivaAVexaDlg dialogo;
    dialogo.EjecutaLote(carpeta.En("entrada.txt"), carpeta.En("Modulos.txt"),
                        carpeta.En("Titulares.txt"), carpeta.En("Parcelas.txt"),
                        carpeta.En("Subparcelas.txt"), carpeta.En("Parajes.txt"),
                        carpeta.En("Cotitulares.txt"), nullptr);
    const auto& dicho = aplicacion.guion.escritos.observaciones;
    ASSERT_EQ(dicho.size(), 2U);
    EXPECT_EQ(ansi::AUtf8(dicho[1]), "Lo que había en " + ansi::AUtf8(carpeta.En("Parajes.txt")) +
                                         " no se ha podido conservar a su lado");
}
