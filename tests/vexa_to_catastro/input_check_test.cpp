#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/ansi.h"
#include "tests/vexa_to_catastro/run_fixture.h"

namespace {

const std::string kLista = "TREN 045127\r\nP1\r\n";

std::string EnUtf16(const std::string& texto)
{
    std::string salida = "\xFF\xFE";
    for (const char c : texto)
        salida += {c, '\0'};
    return salida;
}

/// What stands in a row that is like any other one: a co-holder isn't the parcel's holder, number
/// 1, already, the shares leave nothing out, and a DNI has its figures.
std::string Valor(const std::string& tabla, int campo)
{
    if (tabla == "Cotitulares" && campo == 5)
        return "2";
    if (tabla == "Titulares" && campo == 5)
        return "11111111";
    return tabla == "Parcelas" && campo == 10 ? "100" : "1";
}

} // namespace

TEST_F(Cruce, ObservesInputsThatAreNotWhatTheyWereReadAsAndKeepsWhatItReplaces)
{
    const Textos titulares = tablas["Titulares"];
    Parcela("7", "3");
    Subparcela("7", "   a", "3");
    const Textos parcelas = tablas["Parcelas"];
    const Textos subparcelas = tablas["Subparcelas"];
    const char* vacia = "El archivo lista.txt está vacío";
    const char* retornos = "Las líneas de lista.txt acaban en retorno de carro sin salto de línea, "
                           "y se han leído como una sola";
    const char* sinPoligonos = "La lista lista.txt no nombra ningún polígono";
    const char* marca = "El archivo lista.txt empieza por una marca de Unicode y se ha leído mal: "
                        "guárdelo como ANSI";
    const char* sinParcelas = "De Parcelas.txt no ha valido ninguna fila como parcela";
    const char* sinSubparcelas = "De Subparcelas.txt no ha valido ninguna fila como subparcela";
    const auto otro = [](const std::string& codigos) {
        return "Ninguna fila de Parcelas.txt es del municipio " + codigos +
               ", el de la primera línea de lista.txt";
    };
    const struct {
        const char* motivo;
        std::string lista;
        Textos observaciones;
        Textos parcelas;
        Textos subparcelas;
    } casos[] = {
        {"all is well", kLista, {}, parcelas, subparcelas},
        {"a list without its last line end", "TREN 045127\r\nP1", {}, parcelas, subparcelas},
        {"tables that hold nothing yet", kLista, {}, {}, {}},
        {"parcels without subparcels", kLista, {}, parcelas, {}},
        {"an empty list", "", {vacia}, parcelas, subparcelas},
        {"blank lines", "\r\n \r\n", {vacia}, parcelas, subparcelas},
        {"carriage returns alone", "TREN 045127\rP1\r", {retornos}, parcelas, subparcelas},
        {"no polygons", "TREN 045127\r\n \r\n", {sinPoligonos}, parcelas, subparcelas},
        {"a byte order mark", "\xEF\xBB\xBF" + kLista, {marca}, parcelas, subparcelas},
        {"UTF-16", EnUtf16(kLista), {marca}, parcelas, subparcelas},
        {"another municipality", "TREN 045128\r\nP1\r\n", {otro("045 128")}, parcelas, subparcelas},
        {"another office", "TREN 046127\r\nP1\r\n", {otro("046 127")}, parcelas, subparcelas},
        {"no head", "P1\r\nP1\r\n", {otro("000 000")}, parcelas, subparcelas},
        {"holders for parcels", kLista, {sinParcelas, sinSubparcelas}, titulares, subparcelas},
        {"holders for subparcels", kLista, {sinSubparcelas}, parcelas, titulares},
    };
    for (const auto& caso : casos) {
        for (const int modificar : {0, 1}) {
            SCOPED_TRACE(std::string(caso.motivo) + (modificar != 0 ? ", written anew" : ""));
            lista = caso.lista;
            tablas["Parcelas"] = caso.parcelas;
            tablas["Subparcelas"] = caso.subparcelas;
            Ejecuta(modificar, 0, 1);
            EXPECT_EQ(aplicacion.guion.cajas.back().titulo, "Fin del proceso");
            Textos esperadas = caso.observaciones;
            for (const auto& [tabla, filas] : {std::pair("Parcelas.txt", caso.parcelas),
                                               std::pair("Subparcelas.txt", caso.subparcelas)}) {
                const std::string anterior = std::string(tabla) + ".anterior";
                std::string antes = "(no file)";
                if (modificar != 0 && !caso.observaciones.empty()) {
                    esperadas.push_back(std::string("Lo que había en ") + tabla + " queda en " +
                                        anterior);
                    antes = Tabla(filas);
                }
                EXPECT_EQ(carpeta.Lee(anterior), antes);
                std::filesystem::remove(carpeta.Ruta() / anterior);
            }
            Textos dicho;
            for (const std::string& observacion : Observaciones())
                if (observacion.find(".R ") == std::string::npos &&
                    observacion.find(".M ") == std::string::npos) // kept of an earlier run as well
                    dicho.push_back(carpeta.SinRuta(observacion));
            EXPECT_EQ(dicho, esperadas);
        }
    }
}

TEST_F(Cruce, TellsTablesThatStandInEachOthersFields)
{
    const char* deParcelas = "La cabecera de Parcelas.txt es la de otra tabla, no la de parcelas";
    const char* deSubparcelas =
        "La cabecera de Subparcelas.txt es la de otra tabla, no la de subparcelas";
    const struct {
        const char* motivo;
        std::string cabeceraParcelas;
        std::string cabeceraSubparcelas;
        Textos observaciones;
    } casos[] = {
        {"their own", kCabeceraParcelas, kCabeceraSubparcelas, {}},
        {"somebody's", "Ger Mun and so on\r\n", "Ger\r\n", {}},
        {"none", "", "", {}},
        {"exchanged", kCabeceraSubparcelas, kCabeceraParcelas, {deParcelas, deSubparcelas}},
        {"the holders'", kCabeceraTitulares, kCabeceraSubparcelas, {deParcelas}},
        {"the co-holders'", kCabeceraParcelas, kCabeceraCotitulares, {deSubparcelas}},
    };
    Parcela("7", "3");
    Subparcela("7", "   a", "3");
    lista = kLista;
    Ejecuta();
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        carpeta.Pon("Parcelas.txt", caso.cabeceraParcelas + tablas["Parcelas"][0]);
        carpeta.Pon("Subparcelas.txt", caso.cabeceraSubparcelas + tablas["Subparcelas"][0]);
        EjecutaLote(0, 0, 0);
        Textos dicho = Observaciones();
        std::erase_if(dicho, [](const std::string& d) { return d.starts_with("Lo que "); });
        EXPECT_EQ(dicho, caso.observaciones);
    }
}

TEST_F(Cruce, TellsEachTableOfWhichNothingIsRead)
{
    const struct {
        std::string tabla;
        const char* cabecera;
        std::string registro;
        int campos;
    } tablasSuyas[] = {{"Parajes", kCabeceraParajes, "paraje", 5},
                       {"Modulos", kCabeceraModulos, "módulo", 16},
                       {"Titulares", kCabeceraTitulares, "titular", 18},
                       {"Parcelas", kCabeceraParcelas, "parcela", 16},
                       {"Subparcelas", kCabeceraSubparcelas, "subparcela", 35},
                       {"Cotitulares", kCabeceraCotitulares, "cotitular", 8}};
    Parcela("1", "3");
    lista = kLista;
    Ejecuta();
    for (const auto& [tabla, cabecera, registro, campos] : tablasSuyas) {
        const std::string fichero = tabla + ".txt";
        std::string fila = "045\t127";
        for (int i = 2; i < campos; ++i)
            fila += "\t" + Valor(tabla, i);
        std::string conPuntos = fila;
        std::replace(conPuntos.begin(), conPuntos.end(), '\t', ';');
        const std::string suya(cabecera, std::strlen(cabecera) - 1);
        const char* ajena = tabla == "Modulos" ? kCabeceraParajes : kCabeceraModulos;
        const std::string ninguna =
            tabla == "Parcelas" ? "Ninguna fila de Parcelas.txt es del municipio 045 127, el de la "
                                  "primera línea de lista.txt"
                                : "De " + fichero + " no ha valido ninguna fila como " + registro;
        const struct {
            const char* motivo;
            std::string bytes;
            std::string observacion;
        } casos[] = {
            {"all is well", suya + "\r\n" + fila + "\r\n", ""},
            {"the header alone", suya + "\r\n", ""},
            {"ends like those of some transfers", suya + "\r\r\n" + fila + "\r\r\n", ""},
            {"nothing", "", "El archivo " + fichero + " está vacío"},
            {"semicolons", suya + "\r\n" + conPuntos + "\r\n", ninguna},
            {"another one's rows", suya + "\r\n045\t128" + fila.substr(7) + "\r\n", ninguna},
            {"carriage returns", suya + "\r" + fila + "\r",
             "Las líneas de " + fichero +
                 " acaban en retorno de carro sin salto de línea, y se han leído como una sola"},
            {"in another one's field", ajena + fila + "\r\n",
             "La cabecera de " + fichero + " es la de otra tabla, no la de " + registro +
                 (registro == "titular" || registro == "cotitular" ? "es" : "s")},
        };
        for (const auto& caso : casos) {
            SCOPED_TRACE(tabla + ", " + caso.motivo);
            const std::string antes = carpeta.Lee(fichero);
            carpeta.Pon(fichero, caso.bytes);
            std::filesystem::remove(carpeta.Ruta() / "045127.R.anterior");
            EjecutaLote(0, 0, 0);
            carpeta.Pon(fichero, antes);
            EXPECT_EQ(carpeta.SinRuta(Observacion()), caso.observacion);
            EXPECT_EQ(std::filesystem::exists(carpeta.Ruta() / "045127.R.anterior"),
                      !caso.observacion.empty());
        }
    }
}

TEST_F(Cruce, LetsAMunicipalityHaveNoRowsInATableThatItShares)
{
    Parcela("1", "3");
    Parcela("2", "3");
    tablas["Parcelas"][1].replace(4, 3, "128");
    lista = kLista;
    for (const auto& [tabla, campos] :
         {std::pair("Parajes", 5), std::pair("Modulos", 16), std::pair("Titulares", 18),
          std::pair("Subparcelas", 35), std::pair("Cotitulares", 8)}) {
        SCOPED_TRACE(tabla);
        std::string fila = "045\t128";
        for (int i = 2; i < campos; ++i)
            fila += "\t1";
        const Textos antes = std::exchange(tablas[tabla], {fila + "\r\n"});
        Ejecuta();
        tablas[tabla] = antes;
        EXPECT_EQ(Observacion(),
                  std::string_view(tabla) == "Subparcelas"
                      ? "De Subparcelas.txt no ha valido ninguna fila como subparcela"
                      : "");
    }
}

TEST_F(Cruce, TellsTheRowsOfOtherMunicipalitiesThatItDoesNotWriteAnew)
{
    Parcela("7", "3");
    Subparcela("7", "   a", "3");
    const std::string suyas = Tabla(tablas["Subparcelas"]);
    for (const char* numero : {"8", "9"})
        Parcela(numero, "3");
    for (const std::size_t otra : {1U, 2U})
        tablas["Parcelas"][otra].replace(4, 3, "128");
    tablas["Parcelas"].emplace_back(" \r\n"); // of none
    const std::string antes = Tabla(tablas["Parcelas"]);
    lista = kLista;
    CVexaACampiva2Dlg dialogo; // what one run has seen is nothing to the next
    Ejecuta(dialogo, 0, 0, 0);
    EXPECT_EQ(aplicacion.guion.escritos.observaciones.size(), 0U) << "nothing is lost";
    std::filesystem::remove(carpeta.Ruta() / "045127.R");
    std::filesystem::remove(carpeta.Ruta() / "045127.M");
    Ejecuta(dialogo, 1, 0, 0);
    const Textos dicho = Observaciones();
    ASSERT_EQ(dicho.size(), 3U) << "what is lost, and two tables that are kept";
    EXPECT_EQ(dicho[0], "En Parcelas.txt hay filas de otros municipios, 2, que no se reescriben");
    EXPECT_EQ(carpeta.Lee("Parcelas.txt.anterior"), antes);
    EXPECT_EQ(carpeta.Lee("Subparcelas.txt.anterior"), suyas);
    Ejecuta(dialogo, 1, 0, 0); // of the whole tables once more
    EXPECT_EQ(carpeta.Lee("Parcelas.txt.anterior.2"), "(no file)") << "what is there already";
    EXPECT_EQ(Lineas("Parcelas.txt").size(), 2U) << "the header and its own";
    EjecutaLote(dialogo, 1, 0, 0);
    EXPECT_TRUE(aplicacion.guion.escritos.observaciones.empty()) << "nothing is left to lose";
}

TEST_F(Cruce, KeepsWhatAnotherProgramWritesIntoATableMeanwhile)
{
    Parcela("7", "3");
    lista = kLista;
    const std::string suyas = "Ger Mun\r\n" + tablas["Parcelas"][0] + " \r\n";
    aplicacion.guion.alAtender = [&](CDialog&, int) { carpeta.Pon("Parcelas.txt", suyas); };
    CVexaACampiva2Dlg dialogo;
    Ejecuta(dialogo, 1, 0, 0);
    const Textos dicho = Observaciones();
    ASSERT_EQ(dicho.size(), 2U);
    EXPECT_EQ(dicho[0],
              "Otro programa ha escrito en Parcelas.txt durante el proceso; lo suyo queda en " +
                  ansi::AUtf8(carpeta.En("Parcelas.txt.anterior")));
    EXPECT_EQ(carpeta.Lee("Parcelas.txt.anterior"), suyas);
    EXPECT_EQ(carpeta.Lee("Subparcelas.txt.anterior"), "Ger Mun\r\n")
        << "whose parcels may have been there by half";
}

TEST_F(Cruce, TellsAnInputThatAnotherProgramWritesMeanwhile)
{
    for (const char* suya : {"Titulares.txt", "lista.txt", "001.PAR"}) {
        SCOPED_TRACE(suya);
        tablas["Parcelas"].clear();
        Parcela("7", "3");
        lista = "TREN 045127\r\nP001\r\nP002\r\n";
        ASSERT_TRUE(sintetico::GrabaDibujos(
            carpeta.Ruta().string(), sintetico::Genera({.parcelas = 30, .poligonos = 2}, 9)));
        aplicacion.guion.alAtender = [&](CDialog&, int vez) {
            const auto ruta = carpeta.Ruta() / suya;
            std::filesystem::last_write_time(ruta, std::filesystem::file_time_type::clock::now() +
                                                       std::chrono::seconds(vez));
        };
        CVexaACampiva2Dlg dialogo;
        Ejecuta(dialogo, 1, 0, 0);
        const Textos dicho = Observaciones();
        ASSERT_FALSE(dicho.empty());
        EXPECT_EQ(dicho[0], std::string("Otro programa ha escrito en ") + suya +
                                " mientras se leía: puede haberse leído a medias");
        EXPECT_TRUE(std::filesystem::remove(carpeta.Ruta() / "Parcelas.txt.anterior"));
    }
}

TEST_F(Cruce, TellsTablesThatAnEditorHasStoredInAnotherCodePage)
{
    Parcela("7", "3");
    const std::string dePagina = "N\xDA\xD1"
                                 "EZ";
    const std::string todas =
        "El archivo Titulares.txt parece estar en UTF-8: sus acentos y eñes se han leído mal";
    const std::string algunas = "En Titulares.txt hay líneas en UTF-8, 1, entre otras que no lo "
                                "están: sus acentos y eñes se han leído mal";
    const std::string deDos = "N\xE9\xA5"
                              "EZ";
    const std::string dos =
        "En Titulares.txt hay líneas con letras de la página de códigos de DOS, "
        "1: sus acentos y eñes se han leído mal";
    const struct {
        const char* motivo;
        std::string uno;
        std::string otro;
        std::string observacion;
    } casos[] = {{"letters of ASCII", "ANA", "NUNEZ", ""},
                 {"the code page", "ANA", dePagina, ""},
                 {"UTF-8", "ANA", "NÚÑEZ", todas},
                 {"UTF-8 and the code page in a row", "ANA", "NÚÑEZ\xD1", ""},
                 {"UTF-8 in front of the code page", "NÚÑEZ", dePagina, algunas},
                 {"UTF-8 behind the code page", dePagina, "NÚÑEZ", algunas},
                 {"a page of DOS behind the code page", dePagina, deDos, dos}};
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        tablas["Titulares"] = {Fila({"045", "127", "1", caso.uno, " ", "11111111"}),
                               Fila({"045", "127", "2", caso.otro, " ", "22222222"})};
        Ejecuta(1);
        EXPECT_EQ(Observacion(), caso.observacion);
        EXPECT_EQ(std::filesystem::remove(carpeta.Ruta() / "Parcelas.txt.anterior"),
                  !caso.observacion.empty());
    }
}

TEST_F(Cruce, TellsRowsThatATabTooManyHasSplitAndThoseThatLackAField)
{
    Parcela("1", "3");
    const struct {
        std::string tabla;
        int campos;
        int obligado; ///< number of a field that each row must have
    } casos[] = {{"Titulares", 18, 3}, {"Parcelas", 16, 2}, {"Parcelas", 16, 9},
                 {"Modulos", 16, 4},   {"Parajes", 5, 3},   {"Subparcelas", 35, 5},
                 {"Cotitulares", 8, 6}};
    const auto dice = [&](const std::string& tabla, const Textos& filas) {
        const Textos antes = std::exchange(tablas[tabla], filas);
        Ejecuta();
        tablas[tabla] = antes;
        return Observacion();
    };
    for (const auto& [tabla, campos, obligado] : casos) {
        SCOPED_TRACE(tabla + " " + std::to_string(obligado));
        const auto fila = [n = campos, de = tabla](int vacio, int mas = 0) {
            std::string suya = "045\t127";
            for (int i = 2; i < n + mas; ++i)
                suya += "\t" + (i == vacio ? "" : Valor(de, i));
            return suya + "\r\n";
        };
        const std::string entera = fila(-1);
        const std::string partida = fila(-1, 1);
        const std::string incompleta = fila(obligado);
        const auto ajena = [](const std::string& suya) { return "045\t128" + suya.substr(7); };
        const std::string hay = "En " + tabla + ".txt hay filas ";
        EXPECT_EQ(dice(tabla, {entera, partida, partida}),
                  hay + "con un tabulador de más, 2. El texto que lo lleva queda partido, y lo "
                        "que va detrás se lee en otra columna");
        EXPECT_EQ(dice(tabla, {entera, incompleta, incompleta}),
                  hay + "sin algún campo que deben tener, 2. No se han leído");
        const bool esDeParcelas = tabla == "Parcelas" || tabla == "Subparcelas";
        EXPECT_EQ(dice(tabla, {entera, ajena(partida), ajena(incompleta)}),
                  esDeParcelas
                      ? ""
                      : hay + "de un municipio del que no hay parcelas, 2. No se han leído");
        EXPECT_EQ(dice(tabla, {partida}), "") << "columns of somebody's own";
    }
}

TEST_F(Cruce, TellsRowsThatAreReadOtherwiseThanTheySeemOrNotAtAll)
{
    const std::string una = FilaParcela({.numero = "1"});
    const std::string otra = FilaParcela({.numero = "2"});
    const std::string sinFin = una.substr(0, una.size() - 2);
    const std::string sinTitular = FilaParcela({.numero = "3", .titular = "7"});
    const std::string sinParaje = FilaParcela({.numero = "4", .paraje = "9"});
    const auto modulo = [](const std::string& jornadas, const std::string& intensidad = "1") {
        return Fila({"045", "127", "LR", intensidad, "LABOR", "0", jornadas});
    };
    const auto vinculo = [](const std::string& parte, const std::string& titular = "2") {
        return "045\t127\t0\t1\t1\t" + titular + "\tPR\t" + parte;
    };
    const auto titular = [](const std::string& numero, const std::string& nombre,
                            const std::string& dni, const std::string& casa) {
        return Fila({"045", "127", numero, nombre, " ", dni, "", "", "", "", "CL", "SOL", casa});
    };
    const std::string hay = "En Parcelas.txt hay filas ";
    const auto conResto = [](const std::string& tabla, int cuantos) {
        return "En " + tabla + ".txt hay registros con números que llevan algo más que cifras, " +
               std::to_string(cuantos) + ". Se han leído sin lo que va detrás";
    };
    const auto demasiadoGrandes = [](const std::string& tabla, int cuantos) {
        return "En " + tabla + ".txt hay registros con un número demasiado grande, " +
               std::to_string(cuantos) +
               ", que se ha leído mal: un valor o una superficie llega a 2147483647; un volumen, a "
               "32767";
    };
    const struct {
        const char* motivo;
        std::string tabla;
        std::string filas;
        int modificar;
        std::string observacion;
    } casos[] = {
        {"all is well", "Parcelas", una + otra, 1, ""},
        {"blank rows", "Parcelas", una + " \r\n" + "\t\t\r\n" + otra, 1, ""},
        {"no number of a municipality", "Parcelas", una + "045\t\t0\t1\t2\r\n", 0,
         hay + "sin número de municipio, 1. No se han leído"},
        {"numbers in quotes", "Parcelas", una + "\"045\"\t\"127\"\t0\t1\t2\r\n", 0,
         hay + "sin número de municipio, 1. No se han leído"},
        {"another province", "Parcelas", una + "046" + otra.substr(3), 0,
         hay + "de otra provincia que la de la lista, 1. Se han leído como del municipio"},
        {"a parcel twice", "Parcelas", una + otra + una + una, 0,
         hay + "de lo que ya tiene otra, 2. Vale la primera"},
        {"the end of the last row is missing", "Parcelas", una + otra.substr(0, 20), 0,
         "El archivo Parcelas.txt acaba a mitad de una fila"},
        {"the last row's last field is cut", "Cotitulares",
         vinculo("    33") + "\r\n" + vinculo("    3"), 0,
         "El archivo Cotitulares.txt acaba a mitad de una fila"},
        {"a last field as short as another", "Cotitulares",
         vinculo("3") + "\r\n" + vinculo("33", "8") + "\r\n" + vinculo("3", "9"), 0, ""},
        {"the last line end alone is missing", "Parcelas", otra + sinFin, 0, ""},
        {"a short row that is whole", "Parcelas", una + otra.substr(0, 20) + "\r\n", 0,
         hay + "sin algún campo que deben tener, 1. No se han leído"},
        {"columns of somebody's own", "Parcelas", sinFin + "\tnota\r\n", 0, ""},
        {"columns of somebody's own, which are not written", "Parcelas", sinFin + "\tnota\r\n", 1,
         "Las filas de Parcelas.txt tienen más columnas que las de su tabla, que no se reescriben"},
        {"texts in quotes, as spreadsheets save those with a comma", "Parajes",
         "045\t127\t0\t1\t\"ERA, LA\"\r\n"
         "045\t127\t0\t2\tEL ALTO\r\n",
         0,
         "En Parajes.txt hay filas con textos entre comillas, 1, que se han leído como parte de "
         "ellos"},
        {"quotes that are the text's own", "Parajes",
         "045\t127\t0\t1\tEL \"ALTO\"\r\n"
         "045\t127\t0\t2\t\"ERA\" VIEJA\r\n"
         "045\t127\t0\t3\t\"\r\n",
         0, ""},
        {"values with points between thousands", "Parcelas",
         una + FilaParcela({.numero = "2", .valor = "338.800"}), 1, conResto("Parcelas", 1)},
        {"values and surfaces that have room in 32 bits, and one that hasn't", "Parcelas",
         una + FilaParcela({.numero = "2", .superficie = "2147483647", .valor = "-2147483648"}) +
             FilaParcela({.numero = "3", .superficie = "   3", .valor = "   2147483648"}),
         1, demasiadoGrandes("Parcelas", 1)},
        {"a surface that hasn't room in 64 bits", "Subparcelas",
         Fila({"045", "127", "0", "1", "1", "a", "", "S", "99999999999999999999"}), 0,
         demasiadoGrandes("Subparcelas", 1)},
        {"a polygon and a holder that have no room in 16 and 32 bits", "Parcelas",
         una + FilaParcela({.numero = "2", .polig = "65537"}) +
             FilaParcela({.numero = "3", .titular = "4294967297"}),
         1, demasiadoGrandes("Parcelas", 2)},
        {"a share with decimals", "Cotitulares", vinculo("33,33") + "\r\n", 0,
         conResto("Cotitulares", 1)},
        {"a surface with decimals", "Subparcelas",
         Fila({"045", "127", "0", "1", "1", "a", "", "S", "1234,5"}), 0,
         conResto("Subparcelas", 1)},
        {"a holder's number with a letter for a digit", "Parcelas",
         una + FilaParcela({.numero = "2", .titular = "1O"}), 1, conResto("Parcelas", 1)},
        {"a share with a blank between thousands", "Cotitulares",
         vinculo("10\xA0"
                 "000") +
             "\r\n" + vinculo("    50  ") + "\r\n",
         0, conResto("Cotitulares", 1)},
        {"a house without a number, and one with more than that", "Titulares",
         titular("1", "ANA", "11111111", "   78") + titular("2", "LUIS", "22222222", "S/N") +
             titular("3", "EVA", "33333333", "12BIS"),
         0, conResto("Titulares", 2)},
        {"a co-holder's row twice, and one of the parcel's holder", "Cotitulares",
         vinculo("25") + "\r\n" + vinculo("25") + "\r\n" + vinculo("25", "1") + "\r\n", 0,
         "En Cotitulares.txt hay filas de quien ya es titular de su parcela, 2. Sus "
         "participaciones se han sumado"},
        {"a DNI as a spreadsheet leaves it, and what is none", "Titulares",
         titular("1", "ANA", " 1000192", "1") + titular("2", "LUIS", "01000193", "2") +
             titular("3", "EVA", "A1234567", "3") + titular("4", "OLMO S.A.", "B12", "3") +
             titular("5", "PAZ", "        ", "3"),
         0,
         "En Titulares.txt hay titulares con un DNI de menos de ocho cifras, 1. ¿Le quitó los "
         "ceros una hoja de cálculo?"},
        {"a module twice, and one of another intensity", "Modulos",
         modulo("34.75") + modulo("2") + modulo("2", "4"), 0,
         "En Modulos.txt hay filas de lo que ya tiene otra, 1. Vale la primera"},
        {"two places of one number", "Parajes",
         "045\t127\t0\t1\tLA ERA\r\n"
         "045\t127\t0\t2\tEL ALTO\r\n"
         "045\t127\t0\t1\tEL CERRO\r\n",
         0, "En Parajes.txt hay filas de lo que ya tiene otra, 1. Vale la primera"},
        {"a holder twice", "Titulares",
         titular("1", "ANA", "11111111", "1") + titular("1", "ANA", "11111111", "2"), 0,
         "En Titulares.txt hay filas de lo que ya tiene otra, 1. Vale la primera"},
        {"more than a letter where one has room, and one with blanks", "Parcelas",
         una + FilaParcela({.numero = "2", .concentrada = "NO"}) +
             FilaParcela({.numero = "3", .concentrada = "N  "}),
         1,
         "En Parcelas.txt hay filas con más de una letra donde cabe una, 1. Se ha leído la "
         "primera"},
        {"a co-holder of another municipality, which no parcel is of", "Cotitulares",
         vinculo("50") + "\r\n" + "045\t128\t0\t1\t1\t2\tPR\t50\r\n", 0,
         "En Cotitulares.txt hay filas de un municipio del que no hay parcelas, 1. No se han "
         "leído"},
        {"a share of which the rest is missing", "Parcelas",
         FilaParcela({.numero = "1", .partici = "50"}) +
             FilaParcela({.numero = "2", .partici = "99"}),
         1,
         "En Cotitulares.txt hay parcelas cuyas participaciones suman menos de 100, 1. ¿Falta "
         "algún titular?"},
        {"two holders of one number", "Titulares",
         titular("1", "ANA", "11111111", "") + titular("1", "LUIS", "22222222", "") +
             titular("3", "EVA", "33333333", ""),
         0,
         "En Titulares.txt hay titulares con el número de otro, 1. Sus parcelas van a nombre del "
         "primero"},
        {"a sheet's name with a point", "Parcelas", FilaParcela({.numero = "1", .hoja = "H. 1,2"}),
         0, ""},
        {"a holder and a place that aren't there", "Parcelas", una + sinTitular + sinParaje, 1,
         "En Parcelas.txt hay parcelas cuyo titular o paraje falta en su tabla, 2. Se reescriben "
         "sin él"},
        {"the same where they stay", "Parcelas", una + sinTitular, 0, ""},
        {"none named", "Parcelas", FilaParcela({.numero = "1", .titular = "-1", .paraje = "0"}), 1,
         ""},
        {"a parcel that can't be stored", "Parcelas", una + FilaParcela({.numero = "0"}), 1,
         hay + "de las que habla el registro de errores, 1, que no se reescriben"},
        {"a subparcel of no parcel", "Subparcelas",
         Fila({"045", "127", "0", "1", "1", "a", "", "S", "3"}) +
             Fila({"045", "127", "0", "1", "9", "a", "", "S", "3"}),
         1,
         "En Subparcelas.txt hay filas de las que habla el registro de errores, 1, que no se "
         "reescriben"},
        {"days with a point", "Modulos", modulo("34.75"), 0, ""},
        {"days with a comma", "Modulos", modulo("34,75"), 0, conResto("Modulos", 1)},
    };
    Parcela("1", "3");
    lista = kLista;
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const Textos antes = std::exchange(tablas[caso.tabla], {caso.filas});
        Ejecuta(caso.modificar);
        tablas[caso.tabla] = antes;
        EXPECT_EQ(Observacion(), caso.observacion);
        EXPECT_EQ(std::filesystem::remove(carpeta.Ruta() / "Parcelas.txt.anterior"),
                  caso.modificar != 0 && !caso.observacion.empty());
    }
}
