#include "evidence/report/report.h"

#include <filesystem>

#include "batch/job_table.h"
#include "evidence/report/reading/batch_jobs.h"
#include "evidence/report/writing/run_json.h"
#include "generator/drawing_files.h"
#include "generator/synthetic_municipality.h"
#include "platform/files/side_names.h"
#include "platform/files/system_files.h"
#include "platform/files/target_lock.h"
#include "tests/catastro_to_vexa/run_fixture.h"
#include "tests/evidence/report/report_fixture.h"

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace fs = std::filesystem;

namespace {

constexpr const char* kResultados = "t.resultados";

/// The results of a batch over the folders below that of a translation.
class ResumenDeLote : public Traduccion {
protected:
    ResumenDeLote()
    {
        for (const char* lugar : {"uno", "a #1 ñ", "medio", "t.resultados/salidas"})
            fs::create_directories(carpeta.Ruta() / sistema::Ruta(lugar));
        carpeta.Pon("uno/entrada.txt", "");
        carpeta.Pon("uno/entrada.ERR", "W302: Parcela    1      1 no tiene titular\r\n");
        carpeta.Pon("a #1 ñ/entrada.txt", "");
        carpeta.Pon("a #1 ñ/entrada.ERR", "E206: La parcela    1      2 ya existe\r\n"
                                          "E206: La parcela    1      3 ya existe\r\n");
        carpeta.Pon("t.resultados/estado.tsv", "");
    }

    /// A job a line: what is written of it, and its line; nothing of one that wasn't done.
    void Lote(const std::vector<std::pair<const char*, const char*>>& trabajos) const
    {
        std::string tabla = std::string(lote::kDesdeCarpeta) + carpeta.Ruta().string() + "\n";
        std::string diario;
        for (const auto& [hecho, linea] : trabajos) {
            tabla += std::string(linea) + "\n";
            if (*hecho != 0)
                diario += std::string(hecho) + "\t" + linea + "\n";
        }
        carpeta.Pon("t.resultados/trabajos.tsv", tabla);
        carpeta.Pon("t.resultados/trabajos.log", diario);
    }
    informe::CResultado Resume(informe::COpciones opciones = {}) const
    {
        opciones.resumen = carpeta.En(kResultados);
        informe::CResultado resultado = informe::HazResumen(opciones, {"1", 0});
        EXPECT_EQ(ReparosDePagina(carpeta.Lee("t.resultados/resumen.html")), "");
        return resultado;
    }
    std::vector<std::string> Hoja() const { return carpeta.Lineas("t.resultados/resumen.csv"); }
};

} // namespace

TEST_F(ResumenDeLote, PutsTheWorstFirstAndSumsAllUp)
{
    Ejecuta(Paraje("00001", "LA ERA") + Titular("0000001", "00100", "ANA", "11111111") +
            Parcela("00001", "0000001", "00001") + Suelo("00001", "   a", "00100"));
    QuitaFila(carpeta, "Parajes.txt");
    carpeta.Pon(
        "t.resultados/salidas/3.err",
        "[Error]\nEl archivo P\nno se puede crear\n\n[Fin del proceso]\nHecho.\n\nErrores: 2"
        "\n\nEl archivo e está vacío\nLo que había en P queda en P.anterior\n");
    Lote({{"0\t0\t1\t0.25", "ida\tuno"},
          {"0\t2\t0\t1.50", "ida\ta #1 ñ"},
          {"1\t2\t0\t0.10", "ida\ta #1 ñ\tmodulos=otros.txt"},
          {"", "ida\tuno\tmodulos=otros.txt"},
          {"0\t0\t0\t0.01", "ida\tno_hay"},
          {"137\t0\t1\t0.01", "ida\tuno\tmodulos=mas.txt"},
          {"0\t0\t0\t0.02", "ida\t."}});
    const informe::CResultado resultado = Resume({.json = carpeta.En("t.json")});
    const std::string sinTablas = "No se halló ninguna tabla: el proceso se detuvo antes de "
                                  "escribirlas, o están en otra carpeta, que --tablas nombra.";
    const std::string dicho = "El archivo P no se puede crear. El archivo e está vacío. ";
    std::vector<std::string> hoja = Hoja();
    ASSERT_EQ(hoja.size(), 9U);
    EXPECT_THAT(hoja[3], HasSubstr("entrada.ERR."));
    hoja.erase(hoja.begin() + 3);
    EXPECT_THAT(
        hoja, ElementsAre(
                  "\xEF\xBB\xBFtrabajo;carpeta;traducción;estado;estado de salida;sin explicar;"
                  "hectáreas perdidas;parcelas que pierden;sin padre;errores;warnings;segundos;"
                  "informe;nota",
                  "3;a #1 ñ;ida;falló (1);1;0;;;;2;0;0,10;informes/3.html;" + dicho + sinTablas,
                  "6;uno;ida;cortado (137);137;0;;;;0;1;0,01;informes/6.html;El proceso se "
                  "detuvo, o no llegó a su fin: el registro está, y lo que debía escribir falta "
                  "o es más viejo que él.",
                  "4;uno;ida;sin hacer;;;;;;;;;;", "7;.;ida;hecho;0;1;;;;0;0;0,02;informes/7.html;",
                  "2;a #1 ñ;ida;hecho;0;0;;;;2;0;1,50;informes/2.html;" + sinTablas,
                  "1;uno;ida;hecho;0;0;;;;0;1;0,25;informes/1.html;" + sinTablas,
                  "suma;;;;;1;;;;4;2;1,89;;"));
    EXPECT_THAT(resultado.resumen,
                HasSubstr(": 7 trabajos, 2 fallaron, 1 sin hacer, 1 sin leer, 4 errores, 2 "
                          "warnings, 1 sin explicar\n  Resumen en "));
    EXPECT_TRUE(resultado.hayPerdidas);
    EXPECT_THAT(resultado.quejas, ElementsAre(HasSubstr("De 1 trabajo hecho no se pudo")));
    const std::string pagina = carpeta.Lee("t.resultados/resumen.html");
    for (const char* dice :
         {"<td class=\"nombre\"><a href=\"informes/3.html\">a #1 ñ</a><small>El archivo P no ",
          "<td>ida</td><td class=\"estado mal\"><a href=\"salidas/3.err\">falló (1)</a></td>",
          "<td class=\"n\" data-t=\"trabajos\">7</td><td class=\"nombre\">Suma</td>",
          "<td class=\"n\" data-t=\"errores\">4</td>", "<td class=\"nombre\">no_hay<small>"})
        EXPECT_THAT(pagina, HasSubstr(dice));
    EXPECT_THAT(pagina, Not(HasSubstr("Hectáreas"))) << "a column of which no job has a value";
    EXPECT_THAT(carpeta.Lee("t.resultados/informes/7.html"), HasSubstr("sin explicar"));
    if (informe::kHayJson) {
        const std::string json = carpeta.Lee("t.json");
        for (const char* dice : {"\"fallaron\": 2,\n  \"sinLeer\": 1,", "\"perdida\": null",
                                 "\"informe\": \"informes/7.html\""})
            EXPECT_THAT(json, HasSubstr(dice));
    }
}

TEST_F(ResumenDeLote, CallsALossWhatCannotBeChecked)
{
    Ejecuta(Paraje("00001", "LA ERA"));
    Lote({{"0\t0\t0\t0.02", "ida\t."}});
    EXPECT_FALSE(Resume().hayPerdidas);
    Lote({{"0\t-\t-\t0.02", "ida\t."}});
    EXPECT_TRUE(Resume().hayPerdidas) << "of an older log";
    Lote({{"0\t0\t0\t0.02", "ida\t."}});
    fs::remove(carpeta.Ruta() / "Parajes.txt");
    EXPECT_TRUE(Resume().hayPerdidas);
    EXPECT_THAT(Hoja().at(1), EndsWith(";Sin comprobar: Parajes (no está Parajes.txt)."));
}

/// What the report of a job calls a loss is one of its batch, too.
TEST_F(ResumenDeLote, IsAsStrictAsTheReportsOfItsJobs)
{
    const auto municipio = sintetico::Genera({.parcelas = 20, .poligonos = 1}, 3);
    ASSERT_TRUE(sintetico::GrabaDibujos(carpeta.En("medio/"), municipio));
    EjecutaAInfograf(carpeta, "medio/");
    const std::string ventana = "Campiva\n  Tipo\n    1009  (*) de Catastro\nVexa a Infograf\n"
                                "   2  <Salir>\n";
    const std::string dicho = "El archivo e está vacío";
    carpeta.Pon("t.resultados/salidas/1.err", ventana);
    Lote({{"0\t0\t0\t0.02", "infograf\tmedio"}});
    EXPECT_FALSE(Resume().hayPerdidas);
    EXPECT_THAT(Hoja().at(1), EndsWith(";informes/1.html;"));
    const std::string entero = carpeta.Lee("medio/001.SUB");
    carpeta.Pon("medio/001.SUB", entero.substr(0, entero.size() - 10));
    carpeta.Pon("t.resultados/salidas/1.err",
                ventana + "[Error]\nEl archivo X\nno existe\n\n" + dicho + "\n");
    EXPECT_TRUE(Resume().hayPerdidas);
    EXPECT_THAT(Hoja().at(1),
                HasSubstr(";El archivo X no existe. " + dicho +
                          ". Dibujos que no están enteros: "
                          "001, su .SUB está dañado o fuera de fecha, y no sale todo de él."));
}

TEST_F(ResumenDeLote, ReadsOfAJobWhatItsLineNames)
{
    for (const char* hay : {"Parcelas.txt", "s.txt", "Parajes.txt", "ortos.TOP"})
        carpeta.Pon(hay, "");
    const std::string alli = "\t" + carpeta.Ruta().string();
    const std::string comun = alli + "\tsubparcelas=s.txt";
    const struct {
        std::string linea;
        int estado;
        std::size_t con, escritos; ///< tables
        bool ortos, infograf, detenido;
    } casos[] = {
        {"ida" + comun, 0, 3, 0, false, false, false},
        {"vuelta" + comun, 0, 3, 0, true, false, false},
        {"vuelta" + comun + "\tmodificar=1", 0, 1, 2, true, false, false},
        {"vuelta" + comun + "\tmodificar=1", 1, 3, 0, true, false, false},
        {"vuelta" + comun + "\tortos=no.TOP", 137, 3, 0, false, false, true},
        {"infograf" + alli, 0, 0, 0, true, true, false},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.linea);
        const auto trabajos = lote::LeeTabla(std::string(carpeta.Pon("t.tsv", caso.linea + "\n")));
        const informe::COpciones suyas =
            informe::OpcionesDe(trabajos.at(0), lote::CHecho{.estado = caso.estado});
        EXPECT_EQ(suyas.con.size(), caso.con);
        EXPECT_EQ(suyas.escritos.size(), caso.escritos);
        EXPECT_EQ(!suyas.ortos.IsEmpty(), caso.ortos);
        EXPECT_EQ(suyas.infograf, caso.infograf);
        EXPECT_EQ(suyas.detenido, caso.detenido);
        EXPECT_EQ(suyas.entrada.IsEmpty(), !suyas.lista.IsEmpty());
    }
}

TEST_F(ResumenDeLote, LosesNoJobByWhatIsDamaged)
{
    const struct {
        const char* motivo;
        const char* fichero; ///< gets one more line, or goes where that is empty
        const char* linea;
        const char* dice; ///< the page or, where there is none, the complaint
        bool hayPagina;
    } casos[] = {
        {"nothing", "otra", "x", "<b>1</b> hecho, sin leer", true},
        {"a line is cut", "trabajos.log", "0\t0\t0", "1 línea de trabajos.log está a medias", true},
        {"a line is cut behind a tab", "trabajos.log", "0\t0\t\n",
         "1 línea de trabajos.log está a medias", true},
        {"seconds that are none", "trabajos.log", "0\t0\t0\tx\tida\tuno\n",
         "1 línea de trabajos.log está a medias", true},
        {"a line of a job of before", "trabajos.log", "0\t0\t0\t0.1\tida\tantes\n",
         "1 trabajo de trabajos.log no está", true},
        {"no state of all", "estado.tsv", "", "El lote no ha llegado a su fin", true},
        {"a line is no job", "trabajos.tsv", "id", "trabajos.tsv, línea 4: ", false},
        {"no table", "trabajos.tsv", "", "trabajos.tsv", false},
        {"no states", "trabajos.log", "", "trabajos.log", false},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        carpeta.Pon("t.resultados/estado.tsv", "");
        Lote({{"0\t0\t1\t0.25", "ida\tuno"}, {"0\t0\t0\t0.25", "vuelta\tuno"}});
        const std::string fichero = std::string("t.resultados/") + caso.fichero;
        if (*caso.linea == 0)
            fs::remove(carpeta.Ruta() / fichero);
        else
            carpeta.Pon(fichero, carpeta.Lee(fichero) + caso.linea);
        fs::remove(carpeta.Ruta() / "t.resultados/resumen.html");
        const informe::CResultado resultado = Resume();
        const std::string pagina = carpeta.Lee("t.resultados/resumen.html");
        EXPECT_THAT(caso.hayPagina ? pagina : resultado.quejas.at(0), HasSubstr(caso.dice));
        EXPECT_EQ(Veces(pagina, "data-t=\"trabajo\""), caso.hayPagina ? 2 : 0);
    }
}

TEST_F(ResumenDeLote, TellsThatTheBatchIsAtWork)
{
    Lote({{"0\t0\t1\t0.25", "ida\tuno"}});
    const auto dice = [&] {
        Resume();
        return carpeta.Lee("t.resultados/resumen.html");
    };
    CCandado candado;
    sistema::Error error;
    candado.Toma(lado::De(carpeta.Ruta() / "t.resultados/trabajos.log", lado::kCandado), error);
    EXPECT_THAT(dice(), Not(HasSubstr("en marcha"))) << "the batch's own summary, at its end";
    fs::remove(carpeta.Ruta() / "t.resultados/estado.tsv");
    EXPECT_THAT(dice(), HasSubstr("El lote está en marcha todavía."));
    candado.Suelta();
    EXPECT_THAT(dice(), HasSubstr("El lote no ha llegado a su fin."));
}

TEST_F(ResumenDeLote, TellsWhatCannotBeWrittenAndKeepsTheNumbers)
{
    fs::create_directories(carpeta.Ruta() / "t.resultados/informes/1.html/en medio");
    Lote({{"0\t-\t-\t0.25", "ida\tuno"}, {"0\t0\t0\t0.25", "ida\ta #1 ñ"}});
    const informe::CResultado resultado = Resume();
    EXPECT_THAT(resultado.quejas, ElementsAre(HasSubstr("De 1 trabajo hecho no se pudo")));
    EXPECT_THAT(Hoja()[2], testing::StartsWith("1;uno;ida;hecho;0;0;;;;0;1;0,25;;"));
    EXPECT_THAT(Hoja()[1], HasSubstr("El registro es otro: el lote contó 0 errores y 0 warnings."));
    EXPECT_THAT(Hoja()[2], HasSubstr("El registro es otro: el trabajo no dejó ninguno."));

    const std::string antes = carpeta.Lee("t.resultados/resumen.html");
    carpeta.Pon("t.resultados/parallel.txt", "dicho");
    for (const char* hoja : {"no_hay/t.csv", "t.resultados/trabajos.log", "uno",
                             "t.resultados/parallel.txt", "t.resultados/salidas/1.err"}) {
        EXPECT_THAT(Resume({.csv = carpeta.En(hoja)}).quejas, ElementsAre(HasSubstr(hoja)));
        EXPECT_EQ(carpeta.Lee("t.resultados/resumen.html"), antes);
    }
}

TEST_F(ResumenDeLote, FallsOnNoFileOfTheBatchOrItsJobs)
{
    fs::create_directories(carpeta.Ruta() / "t.resultados/informes");
    carpeta.Pon("medio/poligonos.txt", "   1 salida\r\n");
    carpeta.Pon("t", "the table");
    fs::create_hard_link(carpeta.Ruta() / "uno/entrada.txt", carpeta.Ruta() / "uno/otro nombre");
    Lote({{"0\t0\t1\t0.25", "ida\tuno\ttitulares=mis.txt\tmodulos=mis.txt"},
          {"", "vuelta\tmedio"},
          {"0\t0\t0\t0.25", "infograf\tmedio\tortos=o.TOP"}});
    const std::string diario = carpeta.Lee("t.resultados/trabajos.log");
    for (const char* suyo :
         {"t", "t.resultados/trabajos.log", "t.resultados/estado.tsv", "uno/entrada.txt",
          "uno/otro nombre", "uno/entrada.ERR", "uno/mis.txt", "uno/Cotitulares.txt",
          "medio/poligonos.txt", "medio/Parcelas.txt", "medio/ortos.TOP", "medio/o.TOP",
          "t.resultados/informes/2.html", "t.resultados/salidas/3.err", "medio/001.BIN",
          "medio/001.par", "medio/045127.R", "medio/045127.M", "medio/045127.CSP"}) {
        const std::string antes = carpeta.Lee(suyo);
        for (CString informe::COpciones::*cual :
             {&informe::COpciones::html, &informe::COpciones::csv, &informe::COpciones::json}) {
            SCOPED_TRACE(suyo);
            if (cual == &informe::COpciones::json && !informe::kHayJson)
                continue;
            informe::COpciones opciones;
            opciones.*cual = carpeta.En(suyo);
            EXPECT_THAT(Resume(opciones).quejas,
                        ElementsAre(HasSubstr("no se escribe, porque se lee o se escribe ya")));
            EXPECT_EQ(carpeta.Lee(suyo), antes);
            EXPECT_EQ(carpeta.Lee("t.resultados/resumen.html"), "(no file)");
        }
    }
    EXPECT_EQ(carpeta.Lee("t.resultados/trabajos.log"), diario);
    EXPECT_THAT(Resume({.csv = carpeta.En("uno/resumen.csv")}).quejas,
                Not(testing::Contains(HasSubstr("no se escribe"))));
    EXPECT_NE(carpeta.Lee("uno/resumen.csv"), "(no file)");
}

TEST_F(ResumenDeLote, TakesAwayNoMoreThanReportsOfJobsThatAreGone)
{
    Lote({{"0\t0\t1\t0.25", "ida\tuno"}, {"0\t0\t0\t0.25", "ida\tno_hay"}});
    fs::create_directory(carpeta.Ruta() / "t.resultados/informes");
    const struct {
        const char* nombre;
        bool queda;
    } casos[] = {{"2.html", true},  {"3.html", false}, {"10.html", false},
                 {"3.pdf", true},   {"3", true},       {"03.html", true},
                 {"3a.html", true}, {"0.html", true},  {"99999999999999999999.html", false}};
    const auto hay = [&](const char* nombre) {
        return carpeta.Lee(std::string("t.resultados/informes/") + nombre) == "before";
    };
    for (const auto& caso : casos)
        carpeta.Pon(std::string("t.resultados/informes/") + caso.nombre, "before");
    Resume({.csv = carpeta.En("no_hay/t.csv")}); // of which there is none
    for (const auto& caso : casos)
        EXPECT_TRUE(hay(caso.nombre)) << caso.nombre;
    Resume();
    for (const auto& caso : casos)
        EXPECT_EQ(hay(caso.nombre), caso.queda) << caso.nombre;
    EXPECT_THAT(carpeta.Lee("t.resultados/informes/1.html"), HasSubstr("W302"));

    for (const bool sinInformes : {false, true}) {
        Resume({.sinInformes = sinInformes});
        const std::string pagina = carpeta.Lee("t.resultados/resumen.html");
        EXPECT_THAT(pagina, HasSubstr("informes/1.html"));
        EXPECT_THAT(pagina, Not(HasSubstr("informes/2.html"))) << "its log is gone";
    }
}

TEST_F(ResumenDeLote, LinksFromWhereItsPageStandsToReportsThatAreThere)
{
    Lote({{"0\t0\t1\t0.25", "ida\tuno"}, {"0\t2\t0\t0.25", "ida\ta #1 ñ"}});
    fs::create_directory(carpeta.Ruta() / "t.resultados/informes");
    carpeta.Pon("t.resultados/informes/nota.html", "mine");
    carpeta.Pon("t.resultados/informes/7.html", "of another batch");
    Resume();
    EXPECT_EQ(carpeta.Lee("t.resultados/informes/nota.html"), "mine");
    EXPECT_EQ(carpeta.Lee("t.resultados/informes/7.html"), "(no file)");

    // As they are from now on: one is older than the log of its job by now.
    Envejece(carpeta.Ruta() / "t.resultados/informes/1.html");
    informe::COpciones opciones = {.html = carpeta.En("medio/p.html"), .sinInformes = true};
    const std::string antes = carpeta.Lee("t.resultados/informes/2.html");
    EXPECT_THAT(Resume(opciones).quejas, IsEmpty());
    EXPECT_EQ(carpeta.Lee("t.resultados/informes/2.html"), antes);
    const std::string pagina = carpeta.Lee("medio/p.html");
    EXPECT_THAT(pagina, HasSubstr("<a href=\"../t.resultados/informes/2.html\">a #1 ñ</a>"));
    EXPECT_THAT(pagina, HasSubstr("<td class=\"nombre\">uno<small>"));
    opciones.resumen = carpeta.En("a #1 ñ/r");
    fs::rename(carpeta.Ruta() / kResultados, carpeta.Ruta() / sistema::Ruta("a #1 ñ/r"));
    informe::HazResumen(opciones, {"1", 0});
    EXPECT_THAT(carpeta.Lee("medio/p.html"),
                HasSubstr("<a href=\"../a%20%231%20%C3%B1/r/informes/2.html\">a #1 ñ</a>"));
}
