#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "generator/cadastre_lines.h"
#include "tests/vexa_to_catastro/run_fixture.h"

TEST_F(Cruce, NamesItsOutputsByTheFirstLineOfTheList)
{
    const struct {
        const char* motivo;
        const char* lista;
        const char* nombre;
        const char* resumen;
    } casos[] = {
        {"as it should be", "TREN 045127 VILLANUEVA\r\n", "045127", "Muncipio leido  : 045 127"},
        {"with blanks", "TREN  45 12\r\n", " 45 12", "Muncipio leido  : 045 012"},
        {"cut", "TREN 0451", "0451", "Muncipio leido  : 045 001"},
        {"empty", "", "", "Muncipio leido  : 000 000"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        lista = caso.lista;
        Ejecuta();
        for (const char* extension : {".ERR", ".R", ".M"})
            EXPECT_NE(carpeta.Lee(std::string(caso.nombre) + extension), "(no file)") << extension;
        EXPECT_THAT(aplicacion.guion.cajas.back().texto, testing::HasSubstr(caso.resumen));
    }
}

TEST_F(Cruce, TellsWhichOutputsItCannotCreate)
{
    const struct {
        const char* carpetaEnMedio;
        Textos cajas; ///< besides those of the sheets
        bool acaba;   ///< the closing box comes
    } casos[] = {
        {"045127.ERR", {"Imposible crear el archivo 045127.ERR"}, false},
        {"045127.R", {"Imposible crear el archivo 045127.R"}, false},
        {"045127.M", {"Imposible crear el archivo 045127.M"}, true},
    };
    lista = "TREN 045127\r\n";
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.carpetaEnMedio);
        std::filesystem::create_directory(carpeta.Ruta() / caso.carpetaEnMedio);
        Ejecuta();
        Textos cajas = Errores();
        if (cajas.size() > 1)
            cajas.erase(cajas.begin(), cajas.begin() + 2);
        EXPECT_EQ(cajas, caso.cajas);
        EXPECT_EQ(aplicacion.guion.cajas.back().titulo == "Fin del proceso", caso.acaba);
        std::filesystem::remove(carpeta.Ruta() / caso.carpetaEnMedio);
        std::filesystem::remove(carpeta.Ruta() / "045127.R");
    }
}

TEST_F(Cruce, TellsRecordsThatLackRoomForWhatTheyHold)
{
    const auto titular = [](const std::string& numero, const std::string& nombre,
                            const std::string& dni, const std::string& via = "") {
        return Fila({"045", "127", numero, nombre, " ", dni, "", "", "", "", "CL", via});
    };
    const auto parcela = [](const std::string& hoja, const std::string& paraje = "1") {
        return FilaParcela({.numero = "7", .titular = "2", .hoja = hoja, .paraje = paraje});
    };
    const auto modulo = [](const std::string& evalua) {
        return Fila({"045", "127", "LR", "1", "LABOR", evalua, "0"});
    };
    const auto vinculo = [](const std::string& parte) {
        return Fila({"045", "127", "0", "1", "1", "2", "PR", parte});
    };
    const std::string nombre(60, 'N');
    const struct {
        const char* motivo;
        std::string tabla;
        std::string fila;
        std::string dice;
    } casos[] = {
        {"all that has room", "Titulares", titular("9999999", nombre, "12345678"), ""},
        {"a longer name", "Titulares", titular("3", nombre + "N", "1"), "R, 1, desde la línea 3"},
        {"blanks behind a name", "Titulares", titular("3", nombre + "   ", "1"), ""},
        {"a letter behind the DNI", "Titulares", titular("3", "ANA", "12345678Z"),
         "R, 1, desde la línea 3"},
        {"blanks behind it", "Titulares", titular("3", "ANA", "12345678  "), ""},
        {"a street, for which records have less room than tables", "Titulares",
         titular("3", "ANA", "1", "AVENIDA DE LA CONSTITUCION"), ""},
        {"a number that is too long", "Titulares", titular("12345678", "ANA", "1"),
         "R, 1, desde la línea 3"},
        {"a sheet's name", "Parcelas", parcela("HOJA 123456"), "R, 1, desde la línea 4"},
        {"the longest that has room", "Parcelas", parcela("HOJA 12345"), ""},
        {"a co-holder's share", "Cotitulares", vinculo("123456"), "R, 1, desde la línea 4"},
        {"one that has room", "Cotitulares", vinculo("12345"), ""},
        {"a module's number", "Modulos", modulo("1234567"), "M, 1, desde la línea 1"},
    };
    Parcela("1", "3");
    lista = "TREN 045127\r\n";
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        tablas[caso.tabla].push_back(caso.fila);
        Ejecuta(0, 1);
        tablas[caso.tabla].pop_back();
        Textos dicho = Observaciones();
        std::erase_if(dicho,
                      [](const std::string& d) { return d.find("no cabe") == std::string::npos; });
        const std::string donde = caso.dice.substr(0, caso.dice.find(','));
        EXPECT_EQ(dicho, caso.dice.empty()
                             ? Textos{}
                             : Textos{"En 045127." + donde +
                                      " hay registros con algún dato que no cabe en su columna" +
                                      caso.dice.substr(donde.size()) +
                                      ". Va cortado, o corre lo que va detrás"});
    }
}

TEST_F(Cruce, NoOutputFallsOnTheList)
{
    lista = "TREN 045127\r\n";
    Ejecuta();
    for (const char* nombre : {"045127.R", "045127.M"}) {
        SCOPED_TRACE(nombre);
        std::filesystem::remove(carpeta.Ruta() / nombre);
        std::filesystem::create_hard_link(carpeta.Ruta() / "lista.txt", carpeta.Ruta() / nombre);
        EjecutaLote(0, 0, 0);
        EXPECT_EQ(Errores().back(), std::string("Imposible crear el archivo ") + nombre);
        EXPECT_EQ(carpeta.Lee(nombre), lista);
        std::filesystem::remove(carpeta.Ruta() / nombre);
    }
}

TEST_F(Cruce, AStopLeavesTheLogAndNothingElse)
{
    Parcela("1", "3");
    carpeta.Pon("045127.R", "antes");
    for (int vez = 2; vez < 40; ++vez) { // in each phase
        aplicacion.guion.alAtender = [vez](CDialog& dialogo, int cuantas) {
            if (cuantas == vez)
                dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
        };
        Ejecuta(1, 1, 1);
        const auto& cajas = aplicacion.guion.cajas;
        const bool acabo = std::any_of(cajas.begin(), cajas.end(), [](const CCajaVista& caja) {
            return caja.titulo == "Fin del proceso";
        });
        EXPECT_EQ(carpeta.Lee("045127.R") == "antes", !acabo) << vez;
        EXPECT_NE(carpeta.Lee("045127.ERR"), "(no file)");
        if (acabo)
            return;
        EXPECT_EQ(Lineas("Parcelas.txt").at(0), "Ger Mun") << "the table as it was";
    }
    FAIL() << "no run was long enough to end before its stop";
}

TEST_F(Cruce, TellsEachPhaseInItsStatusLine)
{
    Ejecuta();
    EXPECT_EQ(aplicacion.guion.estados,
              (Textos{"Leyendo fichero de parajes", "Leyendo fichero de módulos",
                      "Leyendo fichero de titulares", "Leyendo fichero de parcelas",
                      "Leyendo fichero de subparcelas", "Leyendo fichero de cotitulares",
                      "Leyendo fichero de ortos", "Leyendo polígonos", " "}));
}

TEST_F(Cruce, ADialogIsAsNewInItsNextRun)
{
    const struct {
        const char* motivo;
        const char* rotulo; ///< of a parcel that only the drawing has
        bool llena;         ///< the output's disk is full
        const char* caja;   ///< the last one of the first run
    } casos[] = {
        {"after parcels that weren't saved", "x", false, "ATENCION: Algunas parcelas no fueras"},
#ifdef __linux__
        {"after a write that failed", "7", true, "Imposible escribir el archivo 045127.R\n"},
#endif
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CDibujoPrueba dibujo(carpeta);
        dibujo.par = {{1, 50, dibujo.Parcela(caso.rotulo, 0, 0), {}}};
        dibujo.Graba();
        const auto r = carpeta.Ruta() / "045127.R";
        std::filesystem::remove(r);
        if (caso.llena)
            std::filesystem::create_symlink("/dev/full", r);
        CVexaACampiva2Dlg dialogo;
        Ejecuta(dialogo, 0, 0, 1);
        ASSERT_FALSE(Errores().empty());
        EXPECT_THAT(Errores().back(), testing::StartsWith(caso.caja));

        std::filesystem::remove(r);
        CDibujoPrueba bueno(carpeta);
        bueno.par = {{1, 50, bueno.Parcela("7", 0, 0), {}}};
        bueno.Graba();
        aplicacion.guion.cajas.clear();
        dialogo.SendMessage(WM_COMMAND, IDOK, 0);
        EXPECT_EQ(aplicacion.guion.cajas.back().titulo, "Fin del proceso");
        EXPECT_EQ(Superficies("PR"), std::vector<int>{50});
        EXPECT_THAT(Mensajes(), testing::Not(testing::Contains(testing::HasSubstr("E213"))));
    }
}

TEST_F(Cruce, TheRoadOutAndBackChangesNothing)
{
    const auto municipio = sintetico::Genera({.parcelas = 200}, 5);
    ASSERT_TRUE(sintetico::GrabaLineas(carpeta.En("entrada.txt"),
                                       sintetico::LineasCatastro(municipio).Todas()));
    ASSERT_TRUE(sintetico::GrabaDibujos(carpeta.Ruta().string(), municipio));
    CCampivaAVexaDlg ida;
    ida.EjecutaLote(carpeta.En("entrada.txt"), carpeta.En("Modulos.txt"),
                    carpeta.En("Titulares.txt"), carpeta.En("Parcelas.txt"),
                    carpeta.En("Subparcelas.txt"), carpeta.En("Parajes.txt"),
                    carpeta.En("Cotitulares.txt"), nullptr);
    std::filesystem::rename(carpeta.Ruta() / "poligonos.txt", carpeta.Ruta() / "lista.txt");
    const std::string parcelas = carpeta.Lee("Parcelas.txt");
    const std::string subparcelas = carpeta.Lee("Subparcelas.txt");
    EjecutaLote(1, 0, 0);
    EXPECT_EQ(Mensajes(), Textos{});
    EXPECT_EQ(Errores(), Textos{});
    EXPECT_EQ(carpeta.Lee("Parcelas.txt"), parcelas) << "rewritten as they were";
    EXPECT_EQ(carpeta.Lee("Subparcelas.txt"), subparcelas);
    ASSERT_EQ(Registros("PR").size(), municipio.parcelas.size());
    for (std::size_t i = 0; i < municipio.parcelas.size(); ++i) {
        const CParcela& parcela = municipio.parcelas[i].datos;
        const std::string pr = Registros("PR")[i];
        ASSERT_EQ(LeeEntero(pr.substr(13, 3)) * 1000 + LeeEntero(pr.substr(16, 5)),
                  parcela.Polig * 1000 + parcela.Parcela);
        EXPECT_EQ(LeeEntero(pr.substr(21, 9)), parcela.Superficie);
        EXPECT_EQ(LeeEntero(pr.substr(68, 3)), parcela.x);
        EXPECT_EQ(LeeEntero(pr.substr(71, 3)), parcela.y);
        EXPECT_EQ(CString(pr.substr(58, 10)).TrimRight(), parcela.numOrtofoto);
        EXPECT_EQ(pr[111], parcela.claveConc);
    }
}

TEST_F(Cruce, MutatedDrawingsNeitherCrashNorStopARun)
{
    const auto municipio = sintetico::Genera({.parcelas = 30}, 9);
    ASSERT_TRUE(sintetico::GrabaDibujos(carpeta.Ruta().string(), municipio));
    for (const char* numero : {"1", "2", "3"})
        Parcela(numero, "0");
    lista = "TREN 045127\r\nP001\r\n";
    sintetico::CSorteo sorteo(3);
    for (const char* nombre : {"001.BIN", "001.PAR", "001.SUB", "ortos.BIN", "ortos.TOP"}) {
        const std::string bueno = carpeta.Lee(nombre);
        for (int vez = 0; vez < 25; ++vez) {
            std::string malo = bueno;
            for (int k = 0; k <= vez % 4; ++k)
                malo[static_cast<std::size_t>(sorteo.Hasta(static_cast<int>(malo.size())))] =
                    static_cast<char>(sorteo.Hasta(256));
            if (vez % 5 == 0)
                malo.resize(static_cast<std::size_t>(sorteo.Hasta(static_cast<int>(malo.size()))));
            carpeta.Pon(nombre, malo);
            Ejecuta(0, 1, 1);
            const std::string ultima = aplicacion.guion.cajas.back().titulo;
            ASSERT_TRUE(ultima == "Fin del proceso" || ultima == "Error");
        }
        carpeta.Pon(nombre, bueno);
    }
}

TEST_F(Cruce, IsTriedByWhatItsControlsHold)
{
    CVexaACampiva2Dlg dialogo;
    Ejecuta(dialogo, 1, 1, 0, 1);
    std::vector<CString> esperada = {"--ensayo"};
    for (const char* tabla :
         {"Modulos", "Titulares", "Parcelas", "Subparcelas", "Parajes", "Cotitulares"})
        esperada.insert(esperada.end(), {"--con", carpeta.En(std::string(tabla) + ".txt")});
    esperada.insert(esperada.end(), {"--ortos", carpeta.En("ortos.TOP"), "--conserva",
                                     "--concentradas", carpeta.En("lista.txt")});
    EXPECT_TRUE(dialogo.SeEnsaya());
    EXPECT_EQ(dialogo.OrdenDeEnsayo(), esperada);
}
