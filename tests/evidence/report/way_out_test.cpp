#include <chrono>
#include <filesystem>
#include <vector>

#include "evidence/municipality_files.h"
#include "generator/synthetic_municipality.h"
#include "platform/files/system_files.h"
#include "platform/plain_texts.h"
#include "tests/catastro_to_vexa/run_fixture.h"
#include "tests/evidence/report/report_fixture.h"

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace fs = std::filesystem;

namespace {

std::string DosParcelas()
{
    return Paraje("00001", "LA ERA") + Titular("0000001", "00100", "ANA", "11111111") +
           Parcela("00001", "0000001", "00001") + Suelo("00001", "   a", "00100") +
           Parcela("00002", "0000001", "00001") + Suelo("00002", "   a", "00100");
}

} // namespace

class InformeDeIda : public Traduccion {
protected:
    CInformePrueba Informa(const informe::COpciones& opciones = {}) const
    {
        return CInformePrueba(carpeta, "entrada.ERR", opciones);
    }
};

TEST_F(InformeDeIda, AccountsForEveryLineOfAnyInput)
{
    for (const bool lista : {false, true})
        for (const bool faltas : {false, true})
            for (const int semilla : {1, 2, 3}) {
                SCOPED_TRACE(testing::Message() << lista << faltas << semilla);
                const auto municipio =
                    sintetico::Genera({300, 0, 0}, static_cast<std::uint64_t>(semilla));
                std::string texto;
                for (const auto& linea : sintetico::LineasDeEntrada(municipio, lista, faltas))
                    texto += linea + "\r\n";
                Ejecuta(texto, lista ? 1 : 0);
                const CInformePrueba informe = Informa();
                EXPECT_THAT(informe.Cuenta(), EndsWith(", 0 sin explicar"));
                EXPECT_THAT(informe.resultado.quejas, IsEmpty());
                // Of a list there are subparcels behind no parcel, which no message tells.
                EXPECT_EQ(informe.resultado.hayPerdidas, lista && faltas);
                EXPECT_FALSE(informe.Dice("✕"));
            }
}

TEST_F(InformeDeIda, CountsEachLineOfNoEffect)
{
    for (const bool deTodo : {false, true}) {
        std::string texto = DosParcelas();
        for (char tipo = 'A'; tipo <= 'M'; ++tipo) // one more than are named
            texto += std::string("X") + tipo + "045127\r\n";
        if (!deTodo)
            texto.resize(texto.size() - std::string_view("XM045127\r\n").size());
        else
            texto += "\r\nPJ045127   00002LA VEGA" + std::string(200, ' ') + "\r\n";
        Ejecuta(texto);
        const std::string lineas = Informa().Partida("Líneas de la entrada");
        for (const char* dice : {"|de otros tipos, sin efecto|1|", "|vacías|1|",
                                 "|final de una línea demasiado larga, sin efecto|1|"})
            EXPECT_EQ(Veces(lineas, dice), deTodo ? 1 : 0) << lineas;
        EXPECT_THAT(lineas, HasSubstr("|de tipo «XL», sin efecto|1|"));
    }
}

TEST_F(InformeDeIda, TellsOfEachKindWhereItWent)
{
    const std::string muyLarga = "PJ045127   00002LA VEGA" + std::string(400, ' ') + "\r\n";
    Ejecuta(DosParcelas() + Paraje("00007", "LA ERA") + Parcela("00003", "0000001", "00099") +
            Suelo("00003", "   a", "00100") + Parcela("00001", "0000001", "00001") +
            Titular("0000005", "00100", "ANA", "11111111") + "CT045127\r\n\r\nXX\r\n" + muyLarga +
            Titular("0000001", "00050", "LUIS", "22222222"));
    const CInformePrueba informe = Informa();
    EXPECT_THAT(informe.Partida("Líneas de la entrada"), HasSubstr("|de tipo «CT», sin efecto|1|"));
    EXPECT_THAT(informe.Partida("Líneas de la entrada"),
                HasSubstr("|final de una línea demasiado larga, sin efecto|2|"));
    EXPECT_THAT(informe.Partida("Líneas de la entrada"), HasSubstr("|vacías|1|"));
    EXPECT_THAT(informe.Partida("Titulares"),
                HasSubstr("|líneas TL|3|Sale|filas de Titulares.txt|2|unidas a otra de igual "
                          "nombre y DNI|1|suma|3|"));
    EXPECT_THAT(informe.Partida("Parcelas"),
                HasSubstr("|líneas PR|4|Sale|filas de Parcelas.txt|2|sin su paraje (E102)|1|ya "
                          "estaban (E206)|1|suma|4|✓ Cuadra"));
    EXPECT_THAT(informe.Partida("Subparcelas"), HasSubstr("|sin su parcela (E103)|1|"));
    EXPECT_THAT(informe.Partida("Parajes"), HasSubstr("sin mensaje|1|"));
    EXPECT_THAT(informe.Partida("Titularidades"),
                HasSubstr("|8|Sale|titulares principales, en Parcelas.txt|2|filas de "
                          "Cotitulares.txt|2|ya era titular (E212)|2|de parcelas "
                          "descartadas|2|suma|8|✓"));
}

TEST_F(InformeDeIda, ShowsWhatWasTakenOutOfAnOutput)
{
    const struct {
        const char* fichero;
        const char* partida;
        const char* dice;
    } casos[] = {
        {"Parcelas.txt", "Parcelas", "✕ sin explicar: 1: falta 1-2"},
        {"Parcelas.txt", "Titularidades", "✕ sin explicar: 1: falta 1-2"},
        {"Subparcelas.txt", "Subparcelas", "✕ sin explicar: 1: falta 1-2 a"},
        {"Titulares.txt", "Titulares", "✕ sin explicar: 1: falta LUIS, 22222222"},
        {"Parajes.txt", "Parajes", "✕ sin explicar: 1: falta LA ERA"},
        {"Modulos.txt", "Módulos", "✕ sin explicar: 1: falta SECANO, C- 3"},
        {"Cotitulares.txt", "Titularidades", "✕ sin explicar: 1: falta 1-2"},
    };
    const std::string modulo = Linea("MD045127", {{11, "C-03"}, {16, "SECANO"}, {62, "00000100"}});
    for (const auto& caso : casos) {
        Ejecuta(modulo + DosParcelas() + Titular("0000001", "00050", "LUIS", "22222222"));
        QuitaFila(carpeta, caso.fichero);
        const CInformePrueba informe = Informa();
        EXPECT_THAT(informe.Partida(caso.partida), HasSubstr(caso.dice));
        EXPECT_THAT(informe.Cuenta(), Not(HasSubstr(" 0 sin explicar")));
    }
    Ejecuta(DosParcelas() + Suelo("00003", "   a", "00100"));
    carpeta.Pon("entrada.ERR", "");
    EXPECT_THAT(Informa().Partida("Subparcelas"), HasSubstr("✕ sin explicar: 1"))
        << "a message taken out of the log";
}

TEST_F(InformeDeIda, TellsAnInputThatWasReadAsTheOtherKind)
{
    Ejecuta(DosParcelas(), 1);
    const CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.Dice("¿Se leyó la entrada como si fuera de la otra clase"));
    EXPECT_THAT(informe.Partida("Parcelas"), HasSubstr("✕ sin explicar: 2"));
}

TEST_F(InformeDeIda, GathersWhatHasOneCause)
{
    Ejecuta(DosParcelas() + Parcela("00003", "0000001", "00099") + Suelo("00003", "   a", "00100") +
            Suelo("00003", "   b", "00100") + Titular("0000001", "00050", "LUIS", "11111111") +
            Parcela("00004", "0000009", "00001") + Parcela("00001", "0000001", "00001"));
    const CInformePrueba informe = Informa();
    EXPECT_THAT(informe.Cuenta(), HasSubstr("4 asuntos"));
    EXPECT_TRUE(informe.Dice("<b>Parcela 1-1: está más de una vez</b>"))
        << "who is linked to it twice is its matter, not the holder's";
    EXPECT_TRUE(informe.Dice("<b>El paraje 99 no existe</b><br><span class=\"coste\">3 "
                             "registros</span> · 3 mensajes: "));
    EXPECT_TRUE(informe.Dice("<b>Titular 11111111</b><br>2 mensajes: "))
        << "E205 tells the DNI, E214 the name";
    EXPECT_THAT(informe.Cuenta(), testing::StartsWith("ida, 10 errores, "));
    EXPECT_THAT(aplicacion.guion.cajas.back().texto, HasSubstr("errores producidos :     10"_ansi))
        << "the run counts E214 as well";
    EXPECT_TRUE(informe.Dice("<b>Parcela 1-4: sin subparcelas</b>"));
}

TEST_F(InformeDeIda, ShowsNamesAsNames)
{
    Ejecuta(DosParcelas() + Titular("0000002", "00100", "<script>alert(1)</script>", "22222222") +
            Titular("0000003", "00100", "<script>alert(1)</script>", "33333333"));
    const CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.Dice("para &lt;script&gt;alert(1)&lt;/script&gt;"));
    EXPECT_FALSE(informe.Dice("<script>alert"));
}

TEST_F(InformeDeIda, SaysThatTheRunWasStopped)
{
    Ejecuta(DosParcelas());
    for (const auto& fichero : fs::directory_iterator(carpeta.Ruta()))
        if (fichero.path().extension() == ".txt")
            Envejece(fichero);
    const CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.Dice("El proceso se detuvo"));
    EXPECT_TRUE(informe.Dice("más viejo que el registro"));
    EXPECT_THAT(informe.Partida("Parcelas"), HasSubstr("No se puede comprobar"));
    EXPECT_THAT(informe.resultado.resumen, HasSubstr("se detuvo"));
    EXPECT_TRUE(informe.resultado.hayPerdidas);
}

TEST_F(InformeDeIda, SaysWhichOutputIsOlderThanTheOthers)
{
    Ejecuta(DosParcelas());
    Envejece(carpeta.Ruta() / "Parajes.txt");
    const CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.resultado.hayPerdidas);
    EXPECT_THAT(informe.resultado.resumen,
                HasSubstr("\n  Sin comprobar: Parajes.txt (más viejo que el registro y "));
}

/// An input may be called as its municipality, whose list stands beside it.
TEST_F(InformeDeIda, TellsTheWayOutFromTheWayBackOfALogThatMayBeEithers)
{
    Ejecuta(DosParcelas());
    const auto ahora = fs::last_write_time(carpeta.Ruta() / "entrada.ERR");
    fs::rename(carpeta.Ruta() / "entrada.txt", carpeta.Ruta() / "045127.txt");
    fs::rename(carpeta.Ruta() / "entrada.ERR", carpeta.Ruta() / "045127.ERR");
    carpeta.Pon("poligonos.txt", "TREN 045127\r\n");
    const auto sentido = [&](const informe::COpciones& opciones = {}) {
        return Resultado(carpeta, "045127.ERR", opciones).resumen;
    };
    EXPECT_THAT(sentido(), HasSubstr(": ida, "));
    fs::create_directory(carpeta.Ruta() / "tablas");
    for (const char* tabla : {"Titulares.txt", "Parcelas.txt"})
        fs::rename(carpeta.Ruta() / tabla, carpeta.Ruta() / "tablas" / tabla);
    EXPECT_THAT(sentido(), Not(HasSubstr(": ida, "))) << "of which the tables aren't there";
    EXPECT_THAT(sentido({.tablas = carpeta.En("tablas")}), HasSubstr(": ida, "));
    EXPECT_THAT(sentido({.con = {carpeta.En("tablas/Titulares.txt")}}), HasSubstr(": ida, "));
    for (const char* tabla : {"Titulares.txt", "Parcelas.txt"})
        fs::rename(carpeta.Ruta() / "tablas" / tabla, carpeta.Ruta() / tabla);
    for (const char* salida : {"045127.R", "045127.CSP"}) {
        carpeta.Pon(salida, "");
        Envejece(carpeta.Ruta() / salida);
        EXPECT_THAT(sentido(), HasSubstr(": ida, ")) << salida;
        fs::last_write_time(carpeta.Ruta() / salida, ahora);
        EXPECT_THAT(sentido(), Not(HasSubstr(": ida, "))) << salida;
        fs::remove(carpeta.Ruta() / salida);
    }
    Envejece(carpeta.Ruta() / "Titulares.txt");
    EXPECT_THAT(sentido(), Not(HasSubstr(": ida, "))) << "of a way back that wrote parcels anew";
}

TEST_F(InformeDeIda, KnowsTablesByTheNamesThatTheyHaveOnTheDisk)
{
    Ejecuta(DosParcelas());
    const CNombresTablas antes = TablasEn(carpeta.En(""));
    std::vector<fs::path> tablas;
    for (const CString& tabla : antes) {
        const fs::path nombre = sistema::Ruta(tabla);
        tablas.push_back(carpeta.Ruta() / EnMayusculas(nombre.filename().string()));
        fs::rename(nombre, tablas.back());
    }
    const bool sonOtrosNombres = !fs::exists(carpeta.Ruta() / "Parcelas.txt");
    informe::COpciones opciones = {.tablas = carpeta.En("")};
    const CInformePrueba entero = Informa(opciones);
    EXPECT_THAT(entero.resultado.quejas, IsEmpty());
    EXPECT_THAT(entero.Partida("Parcelas"), HasSubstr("|2|Sale|filas de Parcelas.txt|2|"));
    EXPECT_TRUE(entero.Dice(sonOtrosNombres ? "PARCELAS.TXT" : "Parcelas.txt"));
    const std::string parcelas = carpeta.Lee("PARCELAS.TXT");
    opciones.csv = carpeta.En("PARCELAS.TXT");
    EXPECT_THAT(Informa(opciones).resultado.quejas,
                testing::ElementsAre(HasSubstr("no se escribe")));
    opciones = {.csv = carpeta.En("PARCELAS.TXT"), .contra = carpeta.En("")};
    EXPECT_THAT(Resultado(carpeta, "entrada.txt", opciones).quejas,
                testing::ElementsAre(HasSubstr("no se escribe")));
    EXPECT_EQ(carpeta.Lee("PARCELAS.TXT"), parcelas);
    for (const fs::path& tabla : tablas)
        Envejece(tabla);
    EXPECT_TRUE(Informa().Dice("más viejo que el registro"));
}

TEST_F(InformeDeIda, DoesWithoutWhatIsMissing)
{
    Ejecuta(DosParcelas());
    fs::remove(carpeta.Ruta() / "Parajes.txt");
    const CInformePrueba sinTabla = Informa();
    EXPECT_THAT(sinTabla.Partida("Parajes"),
                HasSubstr("No se puede comprobar: no está Parajes.txt"));
    EXPECT_THAT(sinTabla.Partida("Parcelas"), HasSubstr("✓"));
    EXPECT_TRUE(sinTabla.resultado.hayPerdidas);
    EXPECT_THAT(sinTabla.Cuenta(), EndsWith(", 0 sin explicar, 1 partida sin comprobar"));
    EXPECT_THAT(sinTabla.resultado.resumen,
                HasSubstr("\n  Sin comprobar: Parajes (no está Parajes.txt).\n"));
    for (const char* tabla :
         {"Modulos.txt", "Titulares.txt", "Parcelas.txt", "Subparcelas.txt", "Cotitulares.txt"})
        fs::remove(carpeta.Ruta() / tabla);
    const CInformePrueba sinTablas = Informa();
    EXPECT_TRUE(sinTablas.Dice("el proceso se detuvo antes de escribirlas, o están en otra "
                               "carpeta"));
    EXPECT_TRUE(sinTablas.resultado.hayPerdidas);
    // The folder is named; or the windows say of a run that they saw end how it ended.
    for (const auto& opciones :
         {informe::COpciones{.tablas = carpeta.En("")}, informe::COpciones{.detenido = true}}) {
        const CInformePrueba informe = Informa(opciones);
        EXPECT_TRUE(informe.Dice("El proceso se detuvo, o no llegó a su fin"));
        EXPECT_THAT(informe.resultado.resumen, HasSubstr("El proceso se detuvo, o no llegó a su"));
    }
    fs::remove(carpeta.Ruta() / "entrada.txt");
    const CInformePrueba sinEntrada = Informa();
    EXPECT_TRUE(sinEntrada.Dice("no se halló ni su entrada ni su lista"));
    EXPECT_TRUE(sinEntrada.resultado.hayPerdidas);
    EXPECT_THAT(sinEntrada.resultado.resumen, HasSubstr("\n  No se halló la entrada ni la lista"));
    EXPECT_THAT(sinEntrada.resultado.quejas, IsEmpty());
}

TEST_F(InformeDeIda, SeesWhatTheFilesOfTheRunAre)
{
    Ejecuta(DosParcelas());
    informe::COpciones opciones;
    fs::create_directory(carpeta.Ruta() / "otra");
    for (const char* tabla :
         {"Modulos", "Titulares", "Parcelas", "Subparcelas", "Parajes", "Cotitulares", "entrada"}) {
        const std::string antes = std::string(tabla) + ".txt";
        const std::string ahora =
            std::string("otra/") + (antes == "entrada.txt" ? "entrada.cat" : antes + "2");
        fs::rename(carpeta.Ruta() / antes, carpeta.Ruta() / ahora);
        (antes == "entrada.txt" ? opciones.con : opciones.escritos).push_back(carpeta.En(ahora));
    }
    opciones.con.push_back(carpeta.En("entrada.ERR"));
    opciones.con.push_back(carpeta.Pon("otra/raro.txt", "hola\r\n"));
    const CInformePrueba informe = Informa(opciones);
    EXPECT_THAT(informe.resultado.quejas,
                testing::ElementsAre(HasSubstr("otra/raro.txt no se sabe qué es")));
    EXPECT_THAT(informe.Cuenta(), testing::StartsWith("ida, "));
    EXPECT_THAT(informe.Partida("Parcelas"), HasSubstr("|2|Sale|filas de Parcelas.txt|2|"));
    EXPECT_FALSE(informe.Dice("No se puede comprobar"));
    EXPECT_FALSE(informe.Dice("reescrita")) << "the way out only writes tables";
}

TEST_F(InformeDeIda, ComplainsOfWhatTheLineNamesInVain)
{
    Ejecuta(DosParcelas());
    EXPECT_THAT(Informa({.entrada = carpeta.En("no_hay.txt")}).resultado.quejas,
                testing::ElementsAre(HasSubstr("no_hay.txt no existe")));
    EXPECT_THAT(CInformePrueba(carpeta, "no_hay.ERR").resultado.quejas,
                testing::ElementsAre(HasSubstr("no_hay.ERR")));
    for (auto opcion :
         {&informe::COpciones::csv, &informe::COpciones::geojson, &informe::COpciones::html}) {
        const std::string antes = carpeta.Lee("entrada.txt");
        informe::COpciones opciones;
        opciones.*opcion = carpeta.En("entrada.txt");
        EXPECT_THAT(Informa(opciones).resultado.quejas,
                    testing::ElementsAre(HasSubstr("no se escribe")));
        EXPECT_EQ(carpeta.Lee("entrada.txt"), antes);
        opciones.*opcion = carpeta.En("no_hay/f");
        EXPECT_THAT(Informa(opciones).resultado.quejas, testing::ElementsAre(HasSubstr("no_hay")));
    }
}
