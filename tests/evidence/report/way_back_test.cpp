#include <chrono>
#include <filesystem>

#include "evidence/report/writing/run_json.h"
#include "generator/synthetic_municipality.h"
#include "platform/files/output_diary.h"
#include "platform/files/system_files.h"
#include "tests/evidence/report/report_fixture.h"
#include "tests/vexa_to_catastro/run_fixture.h"

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace {

/// Parcels 7, in two outlines of 100 and 64 square metres, and 8, with a subparcel outside of it.
void DibujaDos(CDibujoPrueba& dibujo)
{
    const int uno = dibujo.Cuadrado(0, 0, 10);
    const int otro = dibujo.Cuadrado(2000, 0, 8);
    const int tercero = dibujo.Cuadrado(4000, 0, 10);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 500, 500), {uno}},
                  {kParcela, 64, dibujo.Parcela("7", 2400, 400), {otro}},
                  {kParcela, 100, dibujo.Parcela("8", 4500, 500), {tercero}},
                  {kParcela, 25, 0, {dibujo.Cuadrado(6000, 0, 5)}, {6100, 100}}};
    dibujo.sub = {{kParcela, 100, dibujo.Subparcela("7-a", 600, 600), {uno}},
                  {kParcela, 64, dibujo.Subparcela("7-a", 2500, 500), {otro}},
                  {kParcela, 100, dibujo.Subparcela("8-a", 9000, 9000), {tercero}}};
    dibujo.Graba();
}

} // namespace

class InformeDeVuelta : public Cruce {
protected:
    void DosParcelas()
    {
        VaciaParcelas();
        Parcela("7", "164");
        Parcela("8", "100");
        Subparcela("7", "a", "164");
        Subparcela("8", "a", "100");
        CDibujoPrueba dibujo(carpeta);
        DibujaDos(dibujo);
    }
    void VaciaParcelas()
    {
        for (const char* tabla : {"Parcelas", "Subparcelas"})
            tablas[tabla].clear();
    }
    struct CSubparcelaDibujada {
        const char* rotulo;
        double area;
        int sitio; ///< of its label, both ways
    };
    /// Draws parcel 7, of 100 square metres.
    void DibujaUna(std::initializer_list<CSubparcelaDibujada> subparcelas)
    {
        Parcela("7", "100");
        CDibujoPrueba dibujo(carpeta);
        const int marco = dibujo.Cuadrado(0, 0, 10);
        dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 500, 500), {marco}}};
        for (const auto& [rotulo, area, sitio] : subparcelas)
            dibujo.sub.push_back(
                {kParcela, area, dibujo.Subparcela(rotulo, sitio, sitio), {marco}});
        dibujo.Graba();
    }
    /// Rows in each of the six tables.
    void DeTodo()
    {
        DosParcelas();
        tablas["Cotitulares"] = {Fila({"045", "127", "0", "1", "7", "2", "PR", "50"})};
        tablas["Modulos"] = {Fila({"045", "127", "C-", "3", "SECANO", "1", "1.00"})};
    }
    CInformePrueba Informa(const informe::COpciones& opciones = {}) const
    {
        return CInformePrueba(carpeta, "045127.ERR", opciones);
    }
};

TEST_F(InformeDeVuelta, AccountsForEveryRowWhateverTheOptions)
{
    const struct {
        int modificar, noEnGrafico, noEnBD;
    } opciones[] = {{0, 0, 0}, {0, 1, 1}, {0, 1, 0}, {1, 0, 1}, {1, 1, 1}};
    for (const auto& [modificar, noEnGrafico, noEnBD] : opciones) {
        SCOPED_TRACE(testing::Message() << modificar << noEnGrafico << noEnBD);
        DosParcelas();
        Parcela("9", "10"); // isn't drawn
        Parcela("7", "1");  // once more
        tablas["Parcelas"].push_back(Fila({"045", "127", "0", "1", "11", "5"}));
        tablas["Parcelas"].push_back(
            Fila({"045", "127", "0", "0", "1", "5", "", "", "1", "PR", "1"}));
        Subparcela("9", "a", "10");
        Subparcela("7", "z", "10"); // isn't drawn
        Subparcela("77", "a", "1");
        Subparcela("7", "", "1");
        tablas["Cotitulares"] = {Fila({"045", "", "0", "1", "8", "2", "PR", "1"}),
                                 Fila({"045", "127", "0", "1", "7", "2", "PR", "50"}),
                                 Fila({" ", " "}),
                                 Fila({"045", "127", "0", "1", "7", "2", "PR", "20"}),
                                 Fila({"045", "127", "0", "1", "7", "9", "PR", "50"}),
                                 Fila({"045", "127", "0", "1", "99", "2", "PR", "50"}),
                                 Fila({"045", "127", "0", "1", "8", "2", "", ""}),
                                 Fila({"045", "999", "0", "1", "8", "2", "PR", "1"})};
        Ejecuta(modificar, noEnGrafico, noEnBD);
        const CInformePrueba informe = Informa();
        EXPECT_THAT(informe.Cuenta(), EndsWith(", 0 sin explicar"));
        EXPECT_FALSE(informe.Dice("✕ sin explicar")) << informe.Partida("Subparcelas");
        EXPECT_THAT(
            informe.Partida("Cotitulares"),
            HasSubstr("|7|Sale|cotitulares en registros CT|1|de otro municipio|1|sin número "
                      "de municipio, sin mensaje|1|sin Titul o partici, sin mensaje|1|sin "
                      "su parcela (E104)|1|sin su titular (E105)|1|sumadas a la parte del "
                      "mismo titular|1|suma|7|"));
    }
}

TEST_F(InformeDeVuelta, TellsWhatWasDroppedWithoutAWord)
{
    DosParcelas();
    tablas["Parcelas"].push_back(Fila({"045", "127", "0", "1", "11", "5"}));
    tablas["Titulares"].push_back(Fila({"045", "127", "3", "EVA", " ", ""}));
    Ejecuta();
    const CInformePrueba informe = Informa();
    EXPECT_THAT(informe.Partida("Parcelas"),
                HasSubstr("sin zona, polígono, parcela, numImputa, Tit o partici, sin mensaje|1|"));
    EXPECT_THAT(informe.Partida("Titulares"),
                HasSubstr("sin número, nombre o DNI, sin mensaje|1|"));
    EXPECT_TRUE(informe.Dice("<tr class=\"callado\">"));
    EXPECT_TRUE(informe.resultado.hayPerdidas);
    EXPECT_THAT(informe.resultado.resumen,
                HasSubstr("\n  Titulares: 1 sin número, nombre o DNI, sin mensaje\n"));
}

/// A name that completion or a script found is as likely one of somebody's files.
TEST_F(InformeDeVuelta, KeepsWhatItsFilesReplaceUnlessItWroteThat)
{
    DosParcelas();
    Ejecuta();
    constexpr CString informe::COpciones::*kSalidas[] = {
        &informe::COpciones::csv, &informe::COpciones::geojson, &informe::COpciones::cambios,
        &informe::COpciones::json};
    CopiaTablas(carpeta, "antes");
    for (const auto salida : kSalidas) {
        if (salida == &informe::COpciones::json && !informe::kHayJson)
            continue;
        informe::COpciones opciones = {.contra = carpeta.En("antes")};
        opciones.*salida = carpeta.Pon("suyo.txt", "\xEF\xBB\xBF{ de alguien");
        EXPECT_THAT(Informa(opciones).resultado.quejas, Contains(HasSubstr("suyo.txt.anterior")));
        EXPECT_EQ(carpeta.Lee("suyo.txt.anterior"), "\xEF\xBB\xBF{ de alguien");
        fs::remove(carpeta.Ruta() / "suyo.txt.anterior");
        fs::remove(carpeta.Ruta() / "045127.html.anterior");
        EXPECT_THAT(Informa(opciones).resultado.quejas, IsEmpty());
        EXPECT_FALSE(fs::exists(carpeta.Ruta() / "suyo.txt.anterior"));
        for (const char* nombre : {"otro.ERR", "otro.csp", "otro.SUB"}) {
            opciones.*salida = carpeta.Pon(nombre, "de otro");
            EXPECT_THAT(Resultado(carpeta, "045127.ERR", opciones).quejas,
                        testing::ElementsAre(HasSubstr("no se escribe")));
            EXPECT_EQ(carpeta.Lee(nombre), "de otro");
        }
    }
}

TEST_F(InformeDeVuelta, CallsNothingUnexplainedOfRowsWhoseOwnTableIsGone)
{
    DeTodo();
    Ejecuta(0, 1);
    for (const auto& [tabla, dice] :
         {std::pair("Titulares.txt",
                    "Sin comprobar: Titulares, Cotitulares (no está Titulares.txt)"),
          std::pair("Parcelas.txt",
                    "Sin comprobar: Parcelas, Cotitulares, Subparcelas (no está Parcelas.txt)")}) {
        const std::string suya = carpeta.Lee(tabla);
        fs::remove(carpeta.Ruta() / tabla);
        const CInformePrueba informe = Informa();
        EXPECT_THAT(informe.Cuenta(), HasSubstr(", 0 sin explicar"));
        EXPECT_THAT(informe.resultado.resumen, HasSubstr(dice));
        carpeta.Pon(tabla, suya);
    }
}

TEST_F(InformeDeVuelta, ShowsARecordThatWasTakenOutOrPutIn)
{
    const struct {
        const char* fichero;
        const char* tipo;
        const char* partida;
        const char* dice;
    } casos[] = {
        {"045127.R", "PR", "Parcelas", "✕ sin explicar: 1: falta 1-7"},
        {"045127.R", "SP", "Subparcelas", "✕ sin explicar: 1: falta 1-7 a"},
        {"045127.R", "CT", "Cotitulares", "✕ sin explicar: 1: falta 1-7"},
        {"045127.R", "TL", "Titulares", "✕ sin explicar: 1: falta ANA, 11111111"},
        {"045127.R", "PJ", "Parajes", "✕ sin explicar: 1: falta LA ERA"},
        {"045127.M", "MD", "Módulos", "✕ sin explicar: 1: falta C- 3"},
    };
    DeTodo();
    Ejecuta(0, 1);
    for (const auto& caso : casos) {
        const std::string entero = carpeta.Lee(caso.fichero);
        const std::size_t tipo = entero.find("000" + std::string(caso.tipo));
        const std::size_t desde = entero.rfind('\n', tipo) + 1; // 0 for none
        std::string sin = entero;
        const std::string linea = sin.substr(desde, sin.find('\n', desde) + 1 - desde);
        carpeta.Pon(caso.fichero, sin.erase(desde, linea.size()));
        EXPECT_THAT(Informa().Partida(caso.partida), HasSubstr(caso.dice));
        carpeta.Pon(caso.fichero, entero + linea);
        EXPECT_THAT(Informa().Partida(caso.partida), HasSubstr("sobra")) << caso.tipo;
        carpeta.Pon(caso.fichero, entero);
    }
    EXPECT_THAT(Informa().Cuenta(), EndsWith(", 0 sin explicar"));
}

TEST_F(InformeDeVuelta, ShowsARowThatWasTakenOutOfATable)
{
    const struct {
        const char* tabla;
        const char* dice;
    } casos[] = {{"Parcelas", "sobra 1-8"},    {"Subparcelas", "sobra 1-8 a"},
                 {"Cotitulares", "sobra 1-7"}, {"Titulares", "sobra LUIS, 22222222"},
                 {"Parajes", "sobra LA ERA"},  {"Modulos", "sobra C- 3"}};
    DeTodo();
    Ejecuta(0, 1);
    for (const auto& caso : casos) {
        const std::string nombre = std::string(caso.tabla) + ".txt";
        const std::string entera = carpeta.Lee(nombre);
        QuitaFila(carpeta, nombre);
        EXPECT_THAT(
            Informa().Partida(caso.tabla == std::string("Modulos") ? "Módulos" : caso.tabla),
            HasSubstr(std::string("✕ sin explicar: 1: ") + caso.dice));
        carpeta.Pon(nombre, entera);
    }
}

TEST_F(InformeDeVuelta, CountsAllOfTheTableAsLostWhereNothingWasWritten)
{
    DosParcelas();
    lista = "TREN 045127\r\n"; // no polygon
    Ejecuta();
    const CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.resultado.hayPerdidas);
    EXPECT_THAT(informe.Cuenta(), HasSubstr("264 m² no se escriben, de 2 parcelas de la tabla"));
}

TEST_F(InformeDeVuelta, HoldsTheDrawnSurfaceAgainstTheWrittenOne)
{
    DosParcelas();
    Ejecuta();
    CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.Dice("<b>100 m² no cuentan</b>"));
    EXPECT_TRUE(informe.Dice("<th class=\"n\">No cuenta, m²</th>"));
    EXPECT_TRUE(informe.Dice("<td>recinto de parcela sin nombre</td>"));
    std::string r = carpeta.Lee("045127.R");
    r.replace(r.find("000000064", r.find("127000PR")), 9, "000000063");
    carpeta.Pon("045127.R", r);
    informe = Informa();
    EXPECT_TRUE(informe.Dice("<b>✕ sin explicar</b>"));
    EXPECT_THAT(informe.Cuenta(), EndsWith(", 1 sin explicar"));
}

TEST_F(InformeDeVuelta, PutsWhatCostsMostFirst)
{
    DosParcelas();
    Parcela("9", "5000");       // isn't drawn, and isn't kept
    Subparcela("77", "a", "1"); // one record
    Subparcela("77", "b", "1");
    Subparcela("66", "a", "1");
    Ejecuta();
    const CInformePrueba informe = Informa();
    std::vector<std::size_t> sitios;
    for (const char* titulo :
         {"<b>Parcela 1-9: no está en el gráfico</b>",
          "<b>En varios recintos: la vuelta toma el último, y el resto no cuenta</b>",
          "<b>Parcela 1-77: no existe", "<b>Parcela 1-66: no existe"})
        sitios.push_back(informe.pagina.find(titulo));
    EXPECT_NE(sitios.back(), std::string::npos);
    EXPECT_TRUE(std::is_sorted(sitios.begin(), sitios.end())) << testing::PrintToString(sitios);
    EXPECT_TRUE(informe.Dice("<span class=\"coste\">5.000 m² · 1 registro</span>"));
    EXPECT_FALSE(informe.Dice("dibujada, de parcelas que no están en el fichero R"));
    EXPECT_THAT(informe.Cuenta(), HasSubstr("5.000 m² no se escriben, de 1 parcela de la tabla, "));
    EXPECT_TRUE(informe.Dice("<li><a href=\"#p1-7\">1-7</a> 100 m²</li>"));
    EXPECT_LT(informe.pagina.find("id=\"asuntos\""), informe.pagina.find("id=\"balance\""));
    EXPECT_LT(informe.pagina.find("id=\"mensajes\""), informe.pagina.find("id=\"ficheros\""));
}

TEST_F(InformeDeVuelta, IsKnownByAListThatIsNamedAmongOtherFiles)
{
    DosParcelas();
    Ejecuta();
    fs::create_directory(carpeta.Ruta() / "otra");
    fs::copy_file(carpeta.Ruta() / "045127.ERR", carpeta.Ruta() / "otra/045127.ERR");
    const CInformePrueba informe(carpeta, "otra/045127.ERR",
                                 {.con = {carpeta.En("045127.R"), carpeta.En("lista.txt")}});
    EXPECT_THAT(informe.resultado.quejas, IsEmpty());
    EXPECT_THAT(informe.Cuenta(), StartsWith("vuelta, "));
}

TEST_F(InformeDeVuelta, TellsOfEverySquareMetre)
{
    for (const char* superficie : {"0", "1"}) {
        DosParcelas();
        Parcela("9", superficie); // isn't drawn, and isn't kept
        Ejecuta();
        EXPECT_EQ(Veces(Informa().Cuenta(), "1 m² no se escriben, de 1 parcela de la tabla"),
                  *superficie - '0');
    }
}

TEST_F(InformeDeVuelta, RoundsAParcelOnce)
{
    Parcela("7", "100");
    Parcela("8", "100");
    CDibujoPrueba dibujo(carpeta);
    const int uno = dibujo.Cuadrado(0, 0, 10);
    const int otro = dibujo.Cuadrado(4000, 0, 10);
    dibujo.par = {{kParcela, 0.25, dibujo.Parcela("7", 500, 500), {uno}}, // a sliver
                  {kParcela, 100, dibujo.Parcela("7", 600, 600), {uno}},
                  {kParcela, 1, dibujo.Parcela("8", 4600, 600), {otro}},
                  {kParcela, 100.49995, dibujo.Parcela("8", 4500, 500), {otro}}};
    dibujo.Graba();
    Ejecuta();
    const CInformePrueba informe = Informa();
    EXPECT_TRUE(
        informe.Dice("<td class=\"n\">2</td><td class=\"n\">100</td><td class=\"n\">100</td>"
                     "<td class=\"n\">0</td><td class=\"n\"></td><td>en 2 recintos: "));
    EXPECT_TRUE(informe.Dice("dibujada, de las parcelas que están también en el fichero R</td>"
                             "<td class=\"n\">0,0201</td><td class=\"n\">2</td>"));
    EXPECT_TRUE(
        informe.Dice("<td class=\"n\">101</td><td class=\"n\">100</td><td class=\"n\">-1</td>"
                     "<td class=\"n\">1</td>"));
}

TEST_F(InformeDeVuelta, CountsWhatIsDrawnOfParcelsThatWereNotWritten)
{
    for (const int noEnBD : {0, 1}) {
        VaciaParcelas();
        Parcela("7", "164");
        CDibujoPrueba dibujo(carpeta);
        DibujaDos(dibujo);
        Ejecuta(0, 0, noEnBD);
        const CInformePrueba informe = Informa();
        const bool falta = noEnBD == 0;
        EXPECT_EQ(informe.Dice("dibujada, de parcelas que no están en el fichero R</td>"
                               "<td class=\"n\">0,0100</td><td class=\"n\">1</td>"),
                  falta);
        EXPECT_EQ(informe.Dice("<span class=\"coste\">100 m² · 2 registros</span>"), falta)
            << "E106, and E109 of its subparcel";
    }
}

TEST_F(InformeDeVuelta, MapsWhereEachMessageLies)
{
    DosParcelas();
    Ejecuta();
    const CInformePrueba informe = Informa();
    const auto mensajes = Mensajes();
    ASSERT_THAT(mensajes.at(0), HasSubstr("E109"));
    EXPECT_TRUE(informe.Dice("<path id=\"s1\" class=\"cruz\"")) << "the place of line 1";
    EXPECT_TRUE(informe.Dice("<tr id=\"m1\" class=\"err\">"));
    EXPECT_TRUE(informe.Dice("<a href=\"#s1\">mapa</a>"));
    EXPECT_TRUE(informe.Dice("id=\"p1-8\" class=\"err\""));
    EXPECT_TRUE(informe.Dice("<title>Parcela 1-8: E113, E112</title>"));
    EXPECT_TRUE(informe.Dice("<title>Parcela 1-7, recinto 1 de 2: no cuentan sus 100 m²</title>"));
    EXPECT_TRUE(informe.Dice(">−100 m²</text>"));
    EXPECT_TRUE(informe.Dice("<path id=\"p1-7\" class=\"ok pieza perdida\" data-p=\"1-7\""));
    EXPECT_TRUE(informe.Dice("<path class=\"ok pieza\" data-p=\"1-7\"")) << "all of its pieces";
    EXPECT_TRUE(informe.Dice("<path class=\"sin\""));
    EXPECT_TRUE(informe.Dice("<b>Parcela 1-8: una subparcela está fuera de ella</b>"));
    EXPECT_TRUE(informe.Dice("3 mensajes: ")) << "E109, E113 and E112 are one matter";
}

TEST_F(InformeDeVuelta, NamesAPlaceOnceWhereTwoLabelsLie)
{
    DibujaUna({{"7-a", 100, 9000}, {"7-b", 100, 9000}});
    Ejecuta();
    const CInformePrueba informe = Informa(); // looks itself for names that stand twice
    EXPECT_TRUE(informe.Dice("<path id=\"s1\" class=\"cruz\""));
    EXPECT_TRUE(informe.Dice("<path class=\"cruz\" d="));
}

TEST_F(InformeDeVuelta, ColoursAParcelThatHasWarningsAloneAsSuch)
{
    Subparcela("7", "a", "97");
    DibujaUna({{"7-a", 97, 600}});
    Ejecuta();
    ASSERT_THAT(Mensajes(), testing::ElementsAre(HasSubstr("W304")));
    EXPECT_TRUE(Informa().Dice("id=\"p1-7\" class=\"avi\""));
}

TEST_F(InformeDeVuelta, WritesFeaturesAndASheet)
{
    DosParcelas();
    Ejecuta();
    const CInformePrueba informe =
        Informa({.geojson = carpeta.En("m.geojson"), .csv = carpeta.En("m.csv")});
    ASSERT_THAT(informe.resultado.quejas, IsEmpty());
    const std::string rasgos = carpeta.Lee("m.geojson");
    EXPECT_THAT(rasgos, HasSubstr(R"("coordinates":[[[0.00,0.00],[10.00,0.00],[10.00,10.00],)"
                                  R"([0.00,10.00],[0.00,0.00]]]},"properties":{"clase":"parcela",)"
                                  R"("poligono":1,"parcela":7,)"));
    EXPECT_THAT(rasgos, HasSubstr(R"({"type":"Point","coordinates":[90.00,90.00]})"));
    EXPECT_THAT(rasgos, HasSubstr(R"("mensajes":["E109"])"));
    EXPECT_THAT(rasgos, Not(HasSubstr("crs")));
    const auto hoja = carpeta.Lineas("m.csv");
    EXPECT_EQ(hoja.size(), Mensajes().size() + 1);
    EXPECT_THAT(hoja.at(0), HasSubstr("línea;código;clase;"));
    EXPECT_THAT(hoja.at(1), HasSubstr("1;E109;error;;;a;;;;;90,00;90,00;E109: "));
    EXPECT_TRUE(carpeta.Lee("m.csv").starts_with("\xEF\xBB\xBF"));
}

TEST_F(InformeDeVuelta, FindsTheLogThatTheWayToInfografKeptUntilTheNextWayBack)
{
    DosParcelas();
    Ejecuta();
    const std::string cuenta = Informa().Cuenta();
    EXPECT_FALSE(CFile::GuardaAnterior(carpeta.En("045127.ERR")).IsEmpty());
    carpeta.Pon("045127.ERR", "");
    EXPECT_THAT(Informa().Cuenta(), EndsWith("045127.ERR.anterior: " + cuenta));
    const auto guardado = fs::last_write_time(carpeta.Ruta() / "045127.ERR.anterior");
    fs::last_write_time(carpeta.Ruta() / "045127.R", guardado + std::chrono::seconds(1));
    EXPECT_NE(Informa().Cuenta(), cuenta);
}

TEST_F(InformeDeVuelta, SaysThatTheRunWroteItsTablesAgain)
{
    const char* const kSupone = "si las reescribió (Modificar)";
    for (const int modificar : {0, 1}) {
        DosParcelas();
        Ejecuta(modificar);
        for (const char* tabla : {"Parcelas.txt", "Subparcelas.txt"})
            if (modificar == 0) // they are older than the run, and not of its own second
                Envejece(carpeta.Ruta() / tabla);
        const CInformePrueba informe = Informa();
        EXPECT_EQ(informe.Dice(kSupone), modificar == 1);
        EXPECT_THAT(informe.Cuenta(), EndsWith(", 0 sin explicar"));
    }
    informe::COpciones opciones;
    for (const char* salida : {"045127.R", "045127.M", "Parcelas.txt", "Subparcelas.txt"})
        opciones.escritos.push_back(carpeta.En(salida));
    const CInformePrueba informe = Informa(opciones);
    EXPECT_TRUE(informe.Dice("El proceso reescribió las tablas (Modificar)"));
    EXPECT_TRUE(informe.Dice("<td>tabla, reescrita</td>"));
    EXPECT_FALSE(informe.Dice(kSupone));
}

TEST_F(InformeDeVuelta, ReadsNoTableThatIsHalfDone)
{
    DosParcelas();
    Ejecuta();
    const std::string cuenta = Informa().Cuenta();
    carpeta.Pon("Parcelas.txt.~0123456789ab.~antes", carpeta.Lee("Parcelas.txt"));
    carpeta.Pon("Parcelas.txt", "a medias");
    sistema::Error error;
    const auto numero = sistema::Mira(carpeta.Ruta() / "Parcelas.txt", error).numero;
    const auto ponDiario = [&](fs::perms permisos) {
        const CString diario = carpeta.Pon(
            "Parcelas.txt.~0123456789ab.~conjunto",
            EscribeDiario({}, {{"Parcelas.txt", CEntradaDiario::Antes::Fichero, numero}}));
        fs::permissions(std::string(diario), permisos);
        return diario;
    };
    const CString diario = ponDiario(fs::perms{0666});
    if (sistema::Mira(sistema::Ruta(diario), error).permisos != 0) { // where a system has such ones
        EXPECT_THAT(Informa().resultado.quejas, Contains(HasSubstr("~conjunto")));
    }
    fs::permissions(std::string(diario), fs::perms{0644});
    EXPECT_EQ(Informa().Cuenta(), cuenta);

    // Somebody puts another file there: it is his work, and counts.
    carpeta.Pon("Parcelas.txt.~0123456789ab.~antes", "de antes");
    ponDiario(fs::perms{0644});
    EXPECT_THAT(Informa().resultado.quejas,
                Contains(HasSubstr("Parcelas.txt se ha cambiado desde entonces")));
    EXPECT_EQ(carpeta.Lee("Parcelas.txt.anterior"), "de antes");
    EXPECT_EQ(Informa().Cuenta(), cuenta);
}

TEST_F(InformeDeVuelta, FallsOnNoDrawingThatItReadsByWhateverName)
{
    DosParcelas();
    Ejecuta();
    for (const auto& [antes, ahora] : {std::pair("1.PAR", "1.par"), {"045127.R", "045127.r"}})
        fs::rename(carpeta.Ruta() / antes, carpeta.Ruta() / ahora);
    carpeta.Pon("ortos.BIN", "x");
    carpeta.Pon("ortos.TOP", "x");
    for (const char* nombre : {"1.par", "1.BIN", "045127.r", "ortos.TOP", "ortos.BIN"}) {
        const std::string antes = carpeta.Lee(nombre);
        EXPECT_THAT(Informa({.geojson = carpeta.En(nombre)}).resultado.quejas,
                    Contains(HasSubstr("no se escribe")))
            << nombre;
        EXPECT_EQ(carpeta.Lee(nombre), antes);
    }
}

TEST_F(InformeDeVuelta, MakesOneMatterOfAPolygonWithoutItsFiles)
{
    const struct {
        const char* falta;
        const char* titulo;
        const char* asuntos;
    } casos[] = {{"1.BIN", "<b>Polígono 1: falta su .BIN</b>", ", 1 asunto, 0 sin explicar"},
                 {"1.PAR", "<b>Polígono 1: falta su .PAR</b>", ", 1 asunto, 0 sin explicar"},
                 {"1.SUB", "<b>Polígono 1: falta su .SUB</b>", ", 2 asuntos, 0 sin explicar"}};
    for (const auto& caso : casos) {
        DosParcelas();
        fs::remove(carpeta.Ruta() / caso.falta);
        Ejecuta();
        const CInformePrueba informe = Informa();
        EXPECT_TRUE(informe.Dice(caso.titulo));
        EXPECT_THAT(informe.Cuenta(), HasSubstr(caso.asuntos)) << caso.falta;
        EXPECT_TRUE(informe.resultado.hayPerdidas) << caso.falta;
        carpeta.Pon(caso.falta, ""); // else the next drawing couldn't be told from it
    }
}

TEST_F(InformeDeVuelta, CallsALossWhatCannotBeChecked)
{
    Subparcela("7", "a", "100");
    DibujaUna({{"7-a", 100, 600}});
    Ejecuta();
    EXPECT_FALSE(Informa().resultado.hayPerdidas) << Informa().resultado.resumen;
    fs::remove(carpeta.Ruta() / "045127.R");
    const CInformePrueba sinR = Informa();
    EXPECT_TRUE(sinR.resultado.hayPerdidas);
    EXPECT_THAT(sinR.Cuenta(), EndsWith(", 0 sin explicar, 5 partidas sin comprobar"));
    EXPECT_THAT(sinR.resultado.resumen, HasSubstr(" (no está el fichero R).\n"));
}

TEST_F(InformeDeVuelta, TellsARunThatWasStopped)
{
    DosParcelas();
    Ejecuta();
    fs::remove(carpeta.Ruta() / "045127.M");
    Envejece(carpeta.Ruta() / "045127.R");
    CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.Dice("El proceso se detuvo"));
    EXPECT_THAT(informe.Partida("Parcelas"), HasSubstr("no llegó a escribirlo"));
    EXPECT_TRUE(informe.Dice("no hay con qué compararla"));
    EXPECT_TRUE(informe.resultado.hayPerdidas);
    fs::remove(carpeta.Ruta() / "045127.R");
    informe = Informa();
    EXPECT_TRUE(informe.Dice("El proceso se detuvo"));
    EXPECT_THAT(informe.Partida("Parcelas"), HasSubstr("no está el fichero R"));
}

TEST_F(InformeDeVuelta, FindsTheListByWhatItSays)
{
    DosParcelas();
    Ejecuta();
    carpeta.Pon("a_otra.txt", "TREN 045128\r\nP1\r\n");
    EXPECT_THAT(Informa().Cuenta(), StartsWith("vuelta, "));
    fs::rename(carpeta.Ruta() / "lista.txt", carpeta.Ruta() / "lista.R");
    EXPECT_TRUE(Informa().Dice("Proceso sin identificar"));
    EXPECT_THAT(Informa({.lista = carpeta.En("lista.R")}).Cuenta(), StartsWith("vuelta, "));
}

TEST_F(InformeDeVuelta, GoesOverMadeDrawingsWithAndWithoutFaults)
{
    for (const bool faltas : {false, true}) {
        auto municipio = sintetico::Genera({400, 4, 0}, 7);
        if (faltas)
            sintetico::DesacuerdaDibujos(municipio);
        ASSERT_TRUE(sintetico::GrabaDibujos(carpeta.En(""), municipio));
        tablas["Parcelas"].clear();
        for (const auto& parcela : municipio.parcelas)
            tablas["Parcelas"].push_back(
                Fila({"045", "127", "0", std::to_string(parcela.datos.Polig),
                      std::to_string(parcela.datos.Parcela), "1", "", "", "1", "PR", "100", "", "",
                      "", "1", std::string(1, parcela.datos.claveConc)}));
        lista = carpeta.Lee("poligonos.txt");
        Ejecuta();
        const CInformePrueba informe = Informa();
        EXPECT_THAT(informe.Cuenta(), EndsWith(", 0 sin explicar"));
        EXPECT_TRUE(informe.Dice("aria-label=\"Mapa del polígono 4\""));
    }
}
