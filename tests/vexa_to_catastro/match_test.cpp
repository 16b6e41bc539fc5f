#include <algorithm>
#include <functional>

#include "tests/support/sheets.h"
#include "tests/vexa_to_catastro/run_fixture.h"

TEST_F(Cruce, AParcelTakesItsSurfaceFromThePolygonThatBearsItsNumber)
{
    const struct {
        const char* motivo;
        std::vector<std::pair<std::int16_t, double>>
            registros;          ///< kinds and areas; the first is labelled
        const char* superficie; ///< as the record shows it
    } casos[] = {
        {"rounded down", {{kParcela, 100.4}}, "000000100"},
        {"rounded up", {{kParcela, 100.5}}, "000000101"},
        {"nearly nothing", {{kParcela, 0.4}}, "000000000"},
        {"its islands follow it", {{kParcela, 100}, {kIsla, -10.25}, {kIsla, -10.25}}, "000000080"},
        {"a negative area is cut towards zero", {{kParcela, -100.9}}, "00000-100"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        tablas["Parcelas"].clear();
        Parcela("7", "5");
        CDibujoPrueba dibujo(carpeta);
        int rotulo = dibujo.Parcela("7", 48312345, 12999);
        for (const auto& [clase, area] : caso.registros) {
            dibujo.par.push_back({clase, area, rotulo, {}});
            rotulo = 0;
        }
        dibujo.Graba();
        Ejecuta();
        EXPECT_EQ(Registros("PR").at(0).substr(21, 9), caso.superficie);
        EXPECT_EQ(Registros("PR").at(0).substr(68, 6), "312012") << "tens of metres, modulo 1000";
    }
}

TEST_F(Cruce, KnowsWhichLabelsCountAndWhatTheyLeave)
{
    for (const char* numero : {"1", "2", "3", "4"})
        Parcela(numero, "20");
    CDibujoPrueba dibujo(carpeta);
    const int marco = dibujo.Cuadrado(0, 0, 10);
    dibujo.par = {
        {kIsla, 1000, 0, {}},                                     // before any parcel: nobody's
        {kParcela, 100, dibujo.Parcela("1a", 500, 500), {marco}}, // reads as 1
        {kParcela, 9, 0, {}},                                     // without a label: passed over,
        {kIsla, -30, 0, {}},                                      // and its island goes to parcel 1
        {kParcela, 200, dibujo.Rotulo("125202", "2", 0, 0), {}},  // another code: its island
        {kIsla, -30, 0, {}},                                      // is used up with it
        {kParcela, 300, dibujo.Rotulo("125201", "3", 0, 0, true), {}}, // deleted
        {3, 55, 0, {}},             // a kind of its own: parcel 1 again
        {kParcela, 400, marco, {}}, // a line is no label
        {kParcela, 444.6, dibujo.Parcela("4", 0, 0), {}},
        {kParcela, 333, dibujo.Parcela("4", 0, 0), {}}, // in two pieces: the last one counts
    };
    dibujo.Graba();
    Ejecuta(0, 1, 0);
    EXPECT_EQ(Superficies("PR"), (std::vector<int>{55, 20, 20, 333}));
    EXPECT_EQ(Errores(),
              (Textos{"El archivo ortos.BIN no existe", "El archivo ortos.TOP no existe"}));
}

TEST_F(Cruce, ReportsAParcelThatTheTablesLackAndCreatesItOnDemand)
{
    CDibujoPrueba dibujo(carpeta);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("8", 0, 0), {}},
                  {kParcela, 50, dibujo.Parcela("x", 0, 0), {}}};
    dibujo.Graba();
    Ejecuta(0, 0, 0);
    const Textos noEstan = {
        "E106: La parcela    1      8 en gráfico no tiene correspondencia en base de datos",
        "E106: La parcela    1      0 en gráfico no tiene correspondencia en base de datos"};
    EXPECT_EQ(Mensajes(), noEstan);
    EXPECT_TRUE(Registros("PR").empty());
    Ejecuta(0, 0, 1);
    EXPECT_EQ(Mensajes(),
              (Textos{noEstan[0], noEstan[1], "E213: La parcela    1      0 no pudo ser insertada.",
                      "E112: La parcela    1      8 difiere en superficie      100 de sus "
                      "subparcelas        0",
                      "W302: Parcela    1      8 no tiene titular"}));
    EXPECT_EQ(Superficies("PR"), std::vector<int>{100});
    EXPECT_EQ(Registros("PR").at(0).substr(30, 7), "-000001");
    EXPECT_EQ(Errores().back(),
              "ATENCION: Algunas parcelas no fueras salvadas en el archivo de Campiva.\n\n"
              "                         Revisar archivo de errores.\n");
}

TEST_F(Cruce, ASubparcelFallsIntoTheSmallestParcelThatHoldsIt)
{
    for (const char* numero : {"1", "2", "3", "4"}) {
        Parcela(numero, "0");
        Subparcela(numero, "a", "0");
    }
    CDibujoPrueba dibujo(carpeta);
    const int fuera = dibujo.Cuadrado(0, 0, 100);
    const int dentro = dibujo.Cuadrado(1000, 1000, 10);
    const int igual = dibujo.Cuadrado(5000, 5000, 10);
    dibujo.par = {{kParcela, 1, dibujo.Parcela("1", 100, 100), {fuera}},
                  {kParcela, 1, dibujo.Parcela("2", 1100, 1100), {dentro}},
                  {kParcela, 1, dibujo.Parcela("3", 5100, 5100), {igual}},
                  {kParcela, 1, dibujo.Parcela("4", 5100, 5100), {-igual}}};
    dibujo.sub = {{kParcela, 10, dibujo.Subparcela("xx-a", 9000, 9000), {}},
                  {kParcela, 20, dibujo.Subparcela("-a", 1000, 1500), {}}, // on the boundary of 2
                  {kParcela, 30, dibujo.Subparcela("-a", 5500, 5500), {}}, // 3 and 4 are equal
                  {kParcela, 99, dibujo.Subparcela("-a", -1, 5), {}},
                  {kIsla, 99, 0, {}}};
    dibujo.Graba();
    Ejecuta(0, 1, 0);
    EXPECT_EQ(Superficies("SP"), (std::vector<int>{10, 20, 30, 0}));
    EXPECT_THAT(
        Mensajes(),
        testing::Contains("E109: La subparcela    a de coordenadas -0.01 0.05 no se encuentra "
                          "en ninguna parcela"));
}

TEST_F(Cruce, GivesTheSurfaceOfAPolygonToItsLetter)
{
    const std::string noEsta =
        "E110: La subparcela    1      9  x-a en gráfico no tiene correspondencia en base de datos";
    const auto difiere = [](const std::string& metros) {
        return "W303: La subparcela abstracta    1      9    a difiere en superficie " + metros +
               " del gráfico";
    };
    const struct {
        const char* motivo;
        const char* concentrada;
        int opcion;
        const char* tipo;
        const char* rotulo;
        double area;
        std::vector<int> superficies; ///< of the subparcels a, a, b
        Textos mensajes;
    } casos[] = {
        {"both lines of the letter", " ", 0, " ", "9-a", 99.5, {100, 100, 7}, {}},
        {"without a hyphen the whole label", " ", 0, " ", "a", 50, {50, 50, 7}, {}},
        {"behind the first hyphen", " ", 0, " ", "9-x-a", 50, {999, 999, 7, 50}, {noEsta}},
        {"a concentrated parcel keeps its surfaces", "C", 0, " ", "9-a", 50, {999, 999, 7}, {}},
        {"unless it is to be changed", "C", 1, " ", "9-a", 50, {50, 50, 7}, {}},
        {"an abstract one is compared, all of its letter together",
         " ",
         0,
         "A",
         "9-a",
         1999.4,
         {999, 999, 7},
         {difiere("      -1")}},
        {"less than a square metre isn't told", " ", 0, "A", "9-a", 1998.9, {999, 999, 7}, {}},
        {"an abstract one of a concentrated parcel too",
         "C",
         0,
         "A",
         "9-a",
         1990,
         {999, 999, 7},
         {difiere("       8")}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        tablas["Parcelas"].clear();
        tablas["Subparcelas"].clear();
        Parcela("9", "0", caso.concentrada);
        Subparcela("9", "a", "999", caso.tipo);
        Subparcela("9", "a", "999", caso.tipo);
        Subparcela("9", "b", "7");
        CDibujoPrueba dibujo(carpeta);
        dibujo.par = {{kParcela, 1, dibujo.Parcela("9", 10, 10), {dibujo.Cuadrado(0, 0, 100)}}};
        dibujo.sub = {{kParcela, caso.area, dibujo.Subparcela(caso.rotulo, 10, 10), {}}};
        dibujo.Graba();
        Ejecuta(0, 1, 0, caso.opcion);
        EXPECT_EQ(Superficies("SP"), caso.superficies);
        Textos mensajes = Mensajes();
        mensajes.erase(std::remove_if(mensajes.begin(), mensajes.end(),
                                      [](const std::string& m) {
                                          return m.starts_with("E11")
                                                     ? !m.starts_with("E110")
                                                     : m.starts_with("W30") && m[3] != '3';
                                      }),
                       mensajes.end());
        EXPECT_EQ(mensajes, caso.mensajes);
    }
}

TEST_F(Cruce, ReportsWhatThePolygonsNeverTouched)
{
    Parcela("1", "30");
    Subparcela("1", "a", "10");
    Subparcela("1", "b", "20");
    Parcela("2", "5");
    Subparcela("2", "a", "5");
    CDibujoPrueba dibujo(carpeta);
    dibujo.par = {{kParcela, 30, dibujo.Parcela("1", 10, 10), {dibujo.Cuadrado(0, 0, 100)}}};
    dibujo.sub = {{kParcela, 10, dibujo.Subparcela("1-a", 10, 10), {}}};
    dibujo.Graba();
    Ejecuta(0, 0, 0);
    const Textos noEstan = {
        "E113: La subparcela    1      1    b en base de datos no tiene correspondencia en gráfico",
        "E111: La parcela    1      2 en base de datos no tiene correspondencia en gráfico"};
    EXPECT_EQ(Mensajes(), (Textos{noEstan[0], noEstan[1],
                                  "E112: La parcela    1      1 difiere en superficie       30 de "
                                  "sus subparcelas       10"}));
    EXPECT_EQ(Superficies("PR"), std::vector<int>{30});
    EXPECT_EQ(Superficies("SP"), (std::vector<int>{10, 5}))
        << "a missing parcel's subparcels are written";
    Ejecuta(1, 1, 0);
    EXPECT_EQ(Mensajes(), noEstan) << "kept, they count in the sum";
    EXPECT_EQ(Superficies("PR"), (std::vector<int>{30, 5}));
    EXPECT_EQ(Lineas("Parcelas.txt").size(), 3U);
}

TEST_F(Cruce, MendsASmallDifferenceAndReportsALargeOne)
{
    const struct {
        int parcela, suma, queda;
        const char* mensaje;
    } casos[] = {
        {1000, 1000, 1000, ""},
        {1000, 1005, 1005,
         "W304: La parcela    1      1 difiere en superficie     1000 de sus subparcelas     1005. "
         "Se asigna nueva superficie a la parcela"},
        {1000, 995, 995,
         "W304: La parcela    1      1 difiere en superficie     1000 de sus subparcelas      995. "
         "Se asigna nueva superficie a la parcela"},
        {1000, 1006, 1000,
         "E112: La parcela    1      1 difiere en superficie     1000 de sus subparcelas     1006"},
    };
    for (const auto& caso : casos) {
        tablas["Parcelas"].clear();
        tablas["Subparcelas"].clear();
        Parcela("1", "0");
        Subparcela("1", "a", "0");
        CDibujoPrueba dibujo(carpeta);
        dibujo.par = {{kParcela,
                       static_cast<double>(caso.parcela),
                       dibujo.Parcela("1", 10, 10),
                       {dibujo.Cuadrado(0, 0, 100)}}};
        dibujo.sub = {
            {kParcela, static_cast<double>(caso.suma), dibujo.Subparcela("1-a", 10, 10), {}}};
        dibujo.Graba();
        Ejecuta();
        EXPECT_EQ(Superficies("PR"), std::vector<int>{caso.queda});
        EXPECT_EQ(Mensajes(), *caso.mensaje == '\0' ? Textos{} : Textos{caso.mensaje});
    }
}

TEST_F(Cruce, GoesOnWithoutTheFilesOfAPolygon)
{
    Parcela("1", "30");
    const struct {
        const char* falta;
        Textos cajas;
        int superficie;
    } casos[] = {
        {"1.BIN", {"El archivo 1.BIN no existe"}, 30},
        {"1.PAR", {"El archivo 1.PAR no existe"}, 30},
        {"1.SUB", {"El archivo 1.SUB no existe"}, 44},
    };
    for (const auto& caso : casos)
        for (const bool esCarpeta : {false, true}) { // in its place, which can't be read
            SCOPED_TRACE(caso.falta + std::string(esCarpeta ? ", a folder" : ""));
            CDibujoPrueba dibujo(carpeta);
            dibujo.par = {{kParcela, 44, dibujo.Parcela("1", 10, 10), {}}};
            dibujo.Graba();
            std::filesystem::remove(carpeta.Ruta() / caso.falta);
            if (esCarpeta)
                std::filesystem::create_directory(carpeta.Ruta() / caso.falta);
            carpeta.Pon("045127.R", "antes");
            std::filesystem::remove(carpeta.Ruta() / "045127.R.anterior");
            Ejecuta(0, 1, 0);
            std::filesystem::remove(carpeta.Ruta() / caso.falta);
            Textos cajas = Errores();
            cajas.erase(cajas.begin(), cajas.begin() + 2); // the sheets'
            for (std::string& caja : cajas)
                caja.resize(std::min(caja.size(), caja.find('\n'))); // the system's reason
            EXPECT_EQ(cajas, caso.cajas);
            EXPECT_EQ(Superficies("PR"), std::vector<int>{caso.superficie});
            EXPECT_EQ(aplicacion.guion.cajas.back().titulo, "Fin del proceso");
            EXPECT_EQ(Observacion(),
                      esCarpeta ? "El archivo " + std::string(caso.falta) +
                                      " está en su sitio y no se pudo leer: lo escrito no cuenta "
                                      "con él"
                                : "");
            EXPECT_EQ(carpeta.Lee("045127.R.anterior"), esCarpeta ? "antes" : "(no file)");
        }
}

TEST_F(Cruce, TellsATopologyThatIsOutOfDate)
{
    Parcela("1", "30");
    Parcela("2", "30");
    Subparcela("1", "a", "3");
    CDibujoPrueba dibujo(carpeta);
    const int marco = dibujo.Cuadrado(0, 0, 100);
    dibujo.par = {
        {kParcela, 44, dibujo.Parcela("1", 10, 10), {0, marco, 2000000000}}, // two bad stretches
        {kParcela, 44, 2000000000, {}},                                      // ends the walk
        {kParcela, 44, dibujo.Parcela("2", 10, 10), {}}};
    carpeta.Pon("045127.R", "antes");
    dibujo.sub = {{kParcela, 5, dibujo.Subparcela("1-a", 10, 10), {}},
                  {kParcela, 5, 3, {}},
                  {kParcela, 9, dibujo.Subparcela("1-a", 10, 10), {}}};
    dibujo.Graba();
    Ejecuta(0, 1, 0);
    const std::string par = "E107: Archivo topológico del polígono 1.PAR fuera de fecha\n";
    Textos cajas = Errores();
    cajas.erase(cajas.begin(), cajas.begin() + 2);
    EXPECT_EQ(cajas, (Textos{par, par, par,
                             "E108: Archivo topológico del polígono 1.SUB fuera de fecha\n"}));
    EXPECT_EQ(Superficies("PR"), (std::vector<int>{44, 30}));
    EXPECT_EQ(Superficies("SP"), std::vector<int>{5});
    EXPECT_EQ(carpeta.Lee("045127.R.anterior"), "antes");
}

TEST_F(Cruce, KeepsWhatItReplacesWhereATopologyIsOutOfDate)
{
    Parcela("1", "30");
    Subparcela("1", "a", "3");
    enum Donde { Nada, Tramo, Rotulo, RotuloDeSubparcela };
    for (const Donde donde : {Nada, Tramo, Rotulo, RotuloDeSubparcela}) {
        SCOPED_TRACE(donde);
        constexpr int kAjeno = 2000000000;
        CDibujoPrueba dibujo(carpeta);
        const int marco = dibujo.Cuadrado(0, 0, 100);
        dibujo.par = {{kParcela, 44, dibujo.Parcela("1", 10, 10), {marco}}};
        dibujo.sub = {{kParcela, 5, dibujo.Subparcela("1-a", 10, 10), {}}};
        if (donde == Tramo)
            dibujo.par[0].tramos.push_back(kAjeno);
        else if (donde == Rotulo)
            dibujo.par[0].rotulo = kAjeno;
        else if (donde == RotuloDeSubparcela)
            dibujo.sub[0].rotulo = kAjeno;
        dibujo.Graba();
        carpeta.Pon("045127.R", "antes");
        Ejecuta(0, 1, 0);
        EXPECT_EQ(std::filesystem::remove(carpeta.Ruta() / "045127.R.anterior"), donde != Nada);
    }
}

TEST_F(Cruce, TellsADrawingThatIsNotWholeOrPartsRows)
{
    const std::string dañado =
        " está dañado o fuera de fecha: lo escrito no cuenta con todo lo que dibuja";
    const auto parten = [](const char* dibujo) {
        return "En " + std::string(dibujo) +
               " hay rótulos con un tabulador o un fin de línea, 1, que parten las filas donde se "
               "escriben. Corríjalos en el dibujo";
    };
    const auto corta = [&](const char* nombre) {
        const std::string todo = carpeta.Lee(nombre);
        carpeta.Pon(nombre, todo.substr(0, todo.size() - 1));
    };
    const struct {
        const char* motivo;
        const char* letra;
        const char* hoja;
        std::function<void()> hace;
        std::string observacion;
    } casos[] = {
        {"a good one", "1-a", "HOJA", [] {}, ""},
        {"parcels that are cut", "1-a", "HOJA", [&] { corta("1.PAR"); },
         "El archivo 1.PAR" + dañado},
        {"subparcels that are cut", "1-a", "HOJA", [&] { corta("1.SUB"); },
         "El archivo 1.SUB" + dañado},
        {"sheets that are cut", "1-a", "HOJA", [&] { corta("ortos.TOP"); },
         "El archivo ortos.TOP" + dañado},
        {"sheets of which nothing is left", "1-a", "HOJA", [&] { carpeta.Pon("ortos.TOP", ""); },
         "El archivo ortos.TOP está vacío: de él no sale ningún recinto"},
        {"a sheet without a name", "1-a", "  ", [] {},
         "En ortos.TOP hay hojas sin rótulo, y parcelas en ellas, 2, que quedan sin hoja"},
        {"a tab in a letter", "1-a\t", "HOJA", [] {}, parten("1.BIN")},
        {"a line end in a sheet's name", "1-a", "06\n29", [] {}, parten("ortos.BIN")},
        {"an entry with a point, and a drawing of that name", "1-a", "HOJA",
         [&] {
             lista = "TREN 045127\r\nP1.bis\r\n";
             carpeta.Pon("1.bis.BIN", "");
         },
         "De la entrada 1.bis se ha leído 1.BIN: lo que va tras el último punto se toma por "
         "extensión"},
    };
    Parcela("1", "30");
    Parcela("2", "30");
    Subparcela("1", "a", "3");
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        ASSERT_TRUE(
            GrabaHojas(carpeta, {{caso.hoja, {{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}}}}));
        CDibujoPrueba dibujo(carpeta);
        const int marco = dibujo.Cuadrado(0, 0, 100);
        dibujo.par = {{kParcela, 44, dibujo.Parcela("1", 10, 10), {marco}},
                      {kParcela, 44, dibujo.Parcela("2", 10, 10), {}}};
        dibujo.sub = {{kParcela, 5, dibujo.Subparcela(caso.letra, 10, 10), {}}};
        dibujo.Graba();
        caso.hace();
        carpeta.Pon("045127.R", "antes");
        Ejecuta(0, 1, 0);
        EXPECT_EQ(Observacion(), caso.observacion);
        EXPECT_EQ(std::filesystem::remove(carpeta.Ruta() / "045127.R.anterior"),
                  !caso.observacion.empty());
    }
}

TEST_F(Cruce, NamesTheFirstSheetThatHoldsTheLabel)
{
    const std::vector<sintetico::CHoja> hojas = {
        {"PRIMERA", {{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}}},
        {"SEGUNDA, CON UN NOMBRE LARGO", {{500, 0}, {2000, 0}, {2000, 1000}, {500, 1000}}}};
    ASSERT_TRUE(GrabaHojas(carpeta, hojas));
    for (const char* numero : {"1", "2", "3"})
        Parcela(numero, "0");
    CDibujoPrueba dibujo(carpeta);
    dibujo.par = {{kParcela, 1, dibujo.Parcela("1", 700, 500), {}},
                  {kParcela, 1, dibujo.Parcela("2", 1500, 500), {}},
                  {kParcela, 1, dibujo.Parcela("3", 5000, 500), {}}};
    dibujo.Graba();
    Ejecuta();
    const auto pr = Registros("PR");
    ASSERT_EQ(pr.size(), 3U);
    EXPECT_EQ(pr[0].substr(58, 10), "PRIMERA   ");
    EXPECT_EQ(pr[1].substr(58, 10), "SEGUNDA, C");
    EXPECT_EQ(pr[2].substr(58, 10), "VIEJA     ") << "in no sheet it keeps what it had";
    std::filesystem::resize_file(carpeta.Ruta() / "ortos.BIN", 20);
    EjecutaLote(0, 0, 0);
    EXPECT_EQ(Errores(), Textos{"Archivo topológico de ortofotos fuera de fecha.\n"});
    EXPECT_EQ(aplicacion.guion.cajas.size(), 1U);
}
