#include "tests/evidence/gis/update_in_tests.h"

#include <limits>

#include "platform/files/output_set.h"

// What a source brings by mistake: no drawing loses anything by it.

TEST_F(Update, LeavesDrawingsAloneThatTheListDoesntHave)
{
    const CElementos parcelas = Elementos("parcelas");
    const struct {
        const char* motivo;
        std::function<void()> prepara;
        const char* fichero; ///< that is told
    } casos[] = {
        {"an empty list", [&] { carpeta.Pon("lista.txt", ""); }, "1.BIN"},
        {"a list without the polygon", [&] { carpeta.Pon("lista.txt", "TREN 045127\r\nP2\r\n"); },
         "1.BIN"},
        {"no list", [&] { std::filesystem::remove(carpeta.Ruta() / "lista.txt"); }, "1.BIN"},
        {"a topology alone, in small letters",
         [&] {
             carpeta.Pon("lista.txt", "");
             std::filesystem::rename(carpeta.Ruta() / "1.SUB", carpeta.Ruta() / "1.sub");
             for (const char* fichero : {"1.BIN", "1.PAR", "1.POL"})
                 std::filesystem::remove(carpeta.Ruta() / fichero);
         },
         "1.SUB"},
    };
    const auto todo = [&] {
        std::map<std::string, std::string> bytes;
        for (const auto& cada : std::filesystem::directory_iterator(carpeta.Ruta()))
            bytes[cada.path().filename().string()] =
                carpeta.Lee(cada.path().filename().string().c_str());
        return bytes;
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        caso.prepara();
        const std::map<std::string, std::string> eran = todo();
        Escribe({{"parcelas", parcelas}}, {"GER=45", "MUN=127"});
        EXPECT_EQ(todo(), eran);
        EXPECT_TRUE(Dice(std::string(caso.fichero) + " ya está, y la lista "));
        EXPECT_TRUE(dicho.ends_with("fallo: No se ha escrito ningún dibujo\n")) << dicho;
    }
    Escribe({{"parcelas", parcelas}}, {"GER=45", "MUN=127", "SUSTITUYE=SI"});
    EXPECT_FALSE(Dice("fallo: "));
    EXPECT_EQ(Parcelas().size(), 4U);
}

TEST_F(Update, WritesNothingWhereItsSourceBreaksOff)
{
    const auto falla = [](GDALDataset&) { CPLError(CE_Failure, CPLE_FileIO, "no se lee más"); };
    const auto calla = [](GDALDataset&) { CPLErrorReset(); };
    const auto cuenta = [](GDALDataset& datos) { datos.GetLayerCount(); }; // as ogr2ogr does
    const auto otraCapa = [](GDALDataset& datos) { datos.CreateLayer("subparcelas"); };
    const auto elemento = [&](GDALDataset& datos) {
        EXPECT_TRUE(Pon(*datos.GetLayer(0), {{"entrada", "1"}, {"parcela", "11"}}, kCuadro));
    };
    const auto empieza = [](auto& de) { EXPECT_EQ(de.StartTransaction(), OGRERR_NONE); };
    const auto acaba = [](auto& de) { EXPECT_EQ(de.CommitTransaction(), OGRERR_NONE); };
    const auto deshace = [](auto& de) { EXPECT_EQ(de.RollbackTransaction(), OGRERR_NONE); };
    const auto enSuCapa = [](auto hace) {
        return [=](GDALDataset& datos) { hace(*datos.GetLayer(0)); };
    };
    const struct {
        const char* motivo;
        std::vector<std::function<void(GDALDataset&)>> alFinal;
        bool escribe;
    } casos[] = {
        {"all went well", {}, true},
        {"a failure behind the last feature", {falla}, false},
        {"one that nobody looked at any longer", {falla, calla}, true},
        {"one before the next feature", {falla, elemento, calla}, false},
        {"one before the next layer is begun", {falla, cuenta, calla}, false},
        {"one before the next layer, without the question", {falla, otraCapa, calla}, false},
        {"all in a transaction", {empieza, acaba}, true},
        {"a failure before the end of one", {empieza, falla, acaba}, false},
        {"a transaction that nobody ended", {empieza}, false},
        {"a layer's transaction that was rolled back",
         {enSuCapa(empieza), enSuCapa(deshace), empieza, acaba},
         false},
        {"a layer's transaction", {enSuCapa(empieza), enSuCapa(acaba)}, true},
        {"the second one rolled back", {empieza, acaba, empieza, deshace}, false},
    };
    CElementos todas = Elementos("parcelas");
    todas.resize(2);
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        CPLError(CE_Failure, CPLE_FileIO, "de otra cosa, antes");
        alFinal = [&](GDALDataset& datos) {
            for (const auto& paso : caso.alFinal)
                paso(datos);
        };
        Escribe({{"parcelas", todas}});
        EXPECT_EQ(Cambiados(), caso.escribe ? (Lineas{"1.BIN", "1.PAR"}) : Lineas());
        EXPECT_EQ(
            dicho.ends_with("fallo: No se ha escrito ningún dibujo: lo que había que escribir "
                            "se quedó a medias\n"),
            !caso.escribe)
            << dicho;
    }
}

TEST_F(Update, KeepsWhatIsThereOfWhatIsLeftOut)
{
    struct CEdicion {
        CValores pone;
        std::vector<const char*> quita = {};
    };
    const char* pajarita = "POLYGON ((50 50,60 60,60 50,50 60,50 50))";
    const char* arcos = "CURVEPOLYGON (CIRCULARSTRING (50 50,55 55,60 50,55 45,50 50))";
    const struct {
        const char* motivo;
        CEdicion edicion; ///< of parcel 9
        const char* porque;
    } casos[] = {
        {"letters of another alphabet", {{{"rotulo", "9Ω"}}}, "lleva letras"},
        {"of one known by its rings", {{{"rotulo", "9Ω"}}, {"parcela", "numero"}}, "lleva letras"},
        {"of one known by its record's number",
         {{{"rotulo", "9Ω"}, {"wkt", kCuadro}}, {"parcela"}},
         "lleva letras"},
        {"arcs", {{{"wkt", arcos}}}, "tiene arcos"},
        {"too far", {{{"wkt", "POLYGON ((0 0,30000000 0,0 10,0 0))"}}}, "no caben"},
        {"no surface", {{{"wkt", "LINESTRING (0 0,1 1)"}}}, "no es un recinto"},
        {"half a number", {{{"parcela", "9.5"}}}, "no es un número entero"},
        {"neither yes nor no", {{{"borrado", "quizá"}}}, "no dice ni sí ni no: quizá"},
        {"a ring across itself, of one known by its record's number",
         {{{"rotulo", "19"}, {"parcela", "19"}, {"wkt", pajarita}}},
         "no es válido"},
        {"a broken label", {{{"rotulo", "9\n1"}}, {"parcela"}}, "carácter de control"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        CElementos todas = Elementos("parcelas");
        Parcela(todas, "8")["wkt"] = "POLYGON ((10 0,20 0,20 5,10 5,10 0))";
        CValores& nueve = Parcela(todas, "9");
        for (const auto& [campo, valor] : caso.edicion.pone)
            nueve[campo] = valor;
        for (const char* campo : caso.edicion.quita)
            nueve.erase(campo);
        // New ones have nothing that could stay.
        todas.push_back({{"poligono", "1"}, {"parcela", "20"}, {"wkt", "POINT (1 1)"}});
        todas.push_back({{"poligono", "5"}, {"parcela", "21"}, {"wkt", "POINT (1 1)"}});
        Escribe({{"parcelas", todas}}, {"INVALIDOS=SI"});
        EXPECT_TRUE(Dice("aviso: Se deja como estaba la parcela"));
        EXPECT_TRUE(Dice(caso.porque));
        for (const char* nueva : {"20 del polígono 001", "21 del polígono 005"})
            EXPECT_TRUE(Dice(std::string("aviso: Se deja fuera la parcela ") + nueva));
        EXPECT_EQ(Cambiados(), (Lineas{"1.BIN", "1.PAR"}));
        Lineas parcelas = Parcelas();
        parcelas.resize(4);
        EXPECT_EQ(parcelas, (Lineas{"1|7|100|1", "1|8|50|2", "1|9|100|3", "1|-|9|4"}));
        PonComoEstaba();
        EsperaQueNiega({{"parcelas", todas}}, "fallo: la parcela ");
    }
}

TEST_F(Update, KnowsOneOfSeveralPiecesByTheNumberOfItsRecord)
{
    CElementos todas = Elementos("parcelas");
    CValores& otra = Parcela(todas, "8");
    otra["parcela"] = otra["rotulo"] = "7";
    Escribe({{"parcelas", todas}}, {"PIEZAS=SI"});
    todas = Elementos("parcelas");
    std::erase_if(todas, [](const CValores& una) { return una.at("numero") == "1"; });
    ASSERT_EQ(todas.front()["numero"], "2");
    todas.front()["wkt"] = "POLYGON ((50 50,60 60,60 50,50 60,50 50))";
    Escribe({{"parcelas", todas}}, {"INVALIDOS=SI"});
    EXPECT_TRUE(Dice("Se deja como estaba la parcela 7"));
    Lineas parcelas = Parcelas();
    parcelas.resize(3);
    EXPECT_EQ(parcelas, (Lineas{"1|7|100|2", "1|9|100|3", "1|-|9|4"}));
}

TEST_F(Update, KnowsNoneByANumberThatSeveralRecordsHave)
{
    CElementos todas = Elementos("parcelas");
    CValores& otra = Parcela(todas, "8");
    CValores& una = Parcela(todas, "9");
    otra["numero"] = una["numero"];
    Escribe({{"parcelas", todas}});
    una["rotulo"] = "9Ω";
    una.erase("parcela");
    una["wkt"] = kCuadro;
    Escribe({{"parcelas", todas}}, {"INVALIDOS=SI"});
    EXPECT_TRUE(Dice("aviso: Se deja fuera la parcela"));
    EXPECT_FALSE(Dice("Se deja como estaba"));
}

TEST_F(Update, LeavesSheetsAloneThatHaveNoDrawing)
{
    carpeta.Pon("ortos.TOP", "hojas");
    Escribe({{"rotulos", {{{"posicion", "1"}, {"texto", "a"}, {"wkt", "POINT (1 1)"}}}}});
    EXPECT_TRUE(Dice("el dibujo ortos no se puede cambiar: tiene .TOP y le falta el .BIN"));
    EXPECT_EQ(carpeta.Lee("ortos.TOP"), "hojas");
    Escribe({{"parcelas", Elementos("parcelas")}, {"hojas", {}}});
    EXPECT_EQ(dicho, "aviso: 1 dibujos de hojas de los que el origen no trae ninguna y se quedan "
                     "como están: ortos\n");
}

TEST_F(Update, KnowsAPolygonByTheNumberAsWhichItsNameWasRead)
{
    for (const char* extension : {"BIN", "PAR", "SUB", "POL"})
        std::filesystem::rename(carpeta.Ruta() / (std::string("1.") + extension),
                                carpeta.Ruta() / (std::string("01.") + extension));
    carpeta.Pon("lista.txt", "TREN 045127 PUEBLO\r\nP01\r\nP2");
    const std::string lista = carpeta.Lee("lista.txt");
    const CElementos parcelas = Elementos("parcelas");
    for (const OGRFieldType tipo : {OFTInteger, OFTInteger64, OFTReal}) {
        tipos = {{"entrada", tipo}};
        CElementos todas;
        for (const CValores& una : parcelas)
            todas.push_back({{"entrada", "1"},
                             {"rotulo", una.contains("rotulo") ? una.at("rotulo") : ""},
                             {"wkt", una.at("wkt")}});
        Escribe({{"parcelas", todas}});
        EXPECT_FALSE(Dice("fallo: "));
        EXPECT_EQ(carpeta.Lee("lista.txt"), lista);
        EXPECT_FALSE(std::filesystem::exists(carpeta.Ruta() / "1.BIN"));
    }
}

TEST_F(Update, KeepsTextsAndLinesOfWhatIsLeftOut)
{
    const struct {
        const char* capa;
        const char* campo;
        const char* valor;
        const char* porque;
    } casos[] = {
        {"rotulos", "texto", "Camino Ω", "lleva letras"},
        {"rotulos", "wkt", "LINESTRING (0 0,1 1)", "no es un punto"},
        {"rotulos", "borrado", "quizá", "no dice ni sí ni no"},
        {"lineas", "wkt", "POINT (1 1)", "no es una línea"},
        {"lineas", "linde", "quizá", "no dice ni sí ni no"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.valor);
        CElementos todas = Elementos(caso.capa);
        todas.back()[caso.campo] = caso.valor;
        Escribe({{caso.capa, todas}}, {"INVALIDOS=SI"});
        EXPECT_TRUE(dicho.starts_with("aviso: Se deja como estaba ")) << dicho;
        EXPECT_TRUE(Dice(caso.porque));
        EXPECT_EQ(Cambiados(), Lineas());
        EsperaQueNiega({{caso.capa, todas}}, caso.porque);
    }
}

TEST_F(Update, EmptiesNoLayerThatTheSourceHasOfOtherPolygonsAlone)
{
    const CElementos parcelas = Elementos("parcelas");
    const std::string seQueda = "aviso: 2 capas de las que el origen no trae ningún recinto de un "
                                "polígono y se quedan como están; la opción VACIA las vacía: "
                                "1.SUB, 1.POL\n";
    for (const char* textos : {"rotulos", "lineas"}) {
        Escribe({{"parcelas", parcelas}, {"poligonos", {}}, {"subparcelas", {}}, {textos, {}}});
        EXPECT_EQ(Cambiados(), Lineas());
        EXPECT_EQ(dicho, seQueda);
    }
    Escribe({{"parcelas", parcelas}, {"subparcelas", {}}}, {"VACIA=1"});
    EXPECT_EQ(Cambiados(), (Lineas{"1.BIN", "1.SUB"}));
    EXPECT_EQ(dicho, "aviso: 1: 0 recintos nuevos, 0 cambiados, 1 quitados y 4 como estaban\n"
                     "aviso: 1 capas que la opción VACIA deja sin recintos: 1.SUB\n");
}

TEST_F(Update, TakesAClearYesOrNoForAnOptionAlone)
{
    const struct {
        const char* valor;
        const char* sustituye; ///< "sí", "no", or refused
    } casos[] = {
        {"SI", "sí"},  {"sí", "sí"},   {" S ", "sí"},   {"yes", "sí"}, {"On", "sí"},
        {"1", "sí"},   {"TRUE", "sí"}, {"NO", "no"},    {" NO", "no"}, {"N", "no"},
        {"off", "no"}, {"0", "no"},    {"false", "no"}, {"", ""},      {"QUIZÁ", ""},
    };
    const CElementos parcelas = Elementos("parcelas");
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.valor);
        PonComoEstaba();
        dicho.clear();
        const std::string opcion = std::string("SUSTITUYE=") + caso.valor;
        if (*caso.sustituye == '\0') {
            EXPECT_EQ(Crea({opcion.c_str(), "GER=45", "MUN=127"}), nullptr);
            EXPECT_TRUE(dicho.ends_with("fallo: La opción SUSTITUYE es SI o NO\n")) << dicho;
            EXPECT_EQ(Cambiados(), Lineas());
            continue;
        }
        Escribe({{"parcelas", parcelas}}, {opcion.c_str(), "GER=45", "MUN=127"});
        EXPECT_EQ(carpeta.Lee("1.SUB").empty(), caso.sustituye == std::string("sí")) << dicho;
    }
}

TEST_F(Update, RefusesANameThatItsSourceTookForADate)
{
    for (const auto& [tipo, valor] :
         {std::pair(OFTDate, "0629/01/01"), std::pair(OFTDateTime, "0629/01/01 00:00:00")}) {
        tipos = {{"hoja", tipo}};
        EsperaQueNiega({{"hojas", {{{"hoja", valor}, {"wkt", kCuadro}}}}},
                       "el campo hoja es de fecha u hora y no de texto");
    }
}

TEST_F(Update, RefusesByNameWhatItCantWrite)
{
    const auto una = [](const char* capa, CValores suya) {
        suya.try_emplace("wkt", capa == std::string("rotulos") ? "POINT (1 1)" : kCuadro);
        return CCapas{{capa, {suya}}};
    };
    const auto deUno = [&](const char* campo, const char* valor) {
        return una("parcelas", {{"poligono", "1"}, {campo, valor}});
    };
    const auto deDibujo = [&](const char* entrada) {
        return una("parcelas", {{"entrada", entrada}, {"parcela", "7"}});
    };
    const auto conHoja = [&](const char* entrada) {
        CCapas capas = deDibujo(entrada);
        capas.merge(una("hojas", {{"hoja", "0629-1-1"}}));
        return capas;
    };
    const auto otra = [&](const char* capa, const char* campo) {
        CCapas capas = Capas({capa});
        capas[capa][0][campo] += "0";
        return capas;
    };
    const auto sin = [&](const std::vector<const char*>& campos) { // of parcel 9
        CCapas capas = Capas({"parcelas"});
        CValores& suya = Parcela(capas["parcelas"], "9");
        for (const char* campo : campos)
            suya.erase(campo);
        return capas;
    };
    const char* otros = "son los mismos ficheros";
    const char* control = "carácter de control";
    const char* esta = "no está en la lista, y está 1: ";
    const char* deCual = "no dice de qué polígono es";
    const struct {
        const char* motivo;
        CCapas capas;
        const char* frase;
        const char* opcion = "ORTOS=ortos";
    } casos[] = {
        {"letters of another alphabet", deUno("rotulo", "7α"),
         "el campo rotulo lleva letras que un dibujo no puede llevar: 7?"},
        {"no number", deUno("parcela", "12 bis"),
         "el campo parcela no es un número entero: 12 bis"},
        {"half a number", deUno("parcela", "1.5"), "no es un número entero: 1.5"},
        {"decimals behind a comma",
         una("parcelas",
             {{"poligono", "1"}, {"parcela", "12"}, {"rotulo_x", "5,5"}, {"rotulo_y", "5.5"}}),
         "el campo rotulo_x no es un número, cuyos decimales van tras un punto: 5,5"},
        {"a negative one", deUno("parcela", "-3"), "lleva un número negativo"},
        {"no polygon", una("parcelas", {{"parcela", "3"}, {"poligono", ""}}),
         "falta el campo poligono"},
        // It may be one that is there, and would go from its drawing.
        {"to be left out", sin({"poligono", "entrada"}), deCual, "INVALIDOS=SI"},
        {"the same without its number", sin({"poligono", "entrada", "numero"}), deCual,
         "INVALIDOS=SI"},
        {"a sheet that breaks a line", una("hojas", {{"hoja", "0629-1\n"}}), control},
        {"a label that does", deUno("rotulo", "7\x01"), control},
        {"a letter that does",
         una("subparcelas", {{"poligono", "1"}, {"parcela", "7"}, {"letra", "b\r"}}), control},
        {"a name that does", una("rotulos", {{"entrada", "1\t"}, {"texto", "a"}}), control},
        {"a name that leads elsewhere", una("rotulos", {{"entrada", "../1"}, {"texto", "a"}}),
         control},
        {"a zero in front", deDibujo("01"), esta},
        {"a blank behind", deDibujo("1 "), esta},
        {"both in front", deDibujo(" 001"), esta},
        {"what looks like an extension", conHoja("2.bis"), otros},
        {"the sheets' drawing", conHoja("ortos"), otros},
        {"sheets upon a polygon", conHoja("3"), otros, "ORTOS=2"},
        {"two of the source", conHoja("3"), otros, "ORTOS=3.bis"},
        {"another label of an outline", otra("rotulos", "texto"),
         "el rótulo \"70\" del polígono 1 (elemento 1) es de un"},
        {"another boundary of one", otra("lineas", "codigo"),
         "la línea del polígono 1 (elemento 1) es linde de un"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EsperaQueNiega(caso.capas, caso.frase, {caso.opcion});
    }
    Escribe(deDibujo("1B"));
    EXPECT_FALSE(Dice("fallo: ")) << "a letter tells names apart";
}

TEST_F(Update, KeepsALabelThatBreaksALineAndIsThereAlready)
{
    CDibujoPrueba dibujo(carpeta);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7\r", 100, 100), {dibujo.Cuadrado(0, 0, 10)}}};
    dibujo.Graba();
    const std::string era = carpeta.Lee("1.PAR") + carpeta.Lee("1.BIN");
    Escribe({{"parcelas", Elementos("parcelas")}});
    EXPECT_EQ(dicho, "");
    EXPECT_EQ(carpeta.Lee("1.PAR") + carpeta.Lee("1.BIN"), era);
}

TEST_F(Update, RefusesCoordinatesThatAreNoNumbers)
{
    constexpr double kNada = std::numeric_limits<double>::quiet_NaN();
    OGRLinearRing anillo;
    OGRLineString linea;
    for (OGRSimpleCurve* curva :
         {static_cast<OGRSimpleCurve*>(&anillo), static_cast<OGRSimpleCurve*>(&linea)})
        for (const double x : {0.0, 10.0, kNada, 0.0})
            curva->addPoint(x, x == 10.0 ? 10 : 0);
    OGRPolygon recinto;
    recinto.addRing(&anillo);
    const OGRPoint punto(1, kNada);
    for (const auto& [nombre, geometria] :
         {std::pair<const char*, const OGRGeometry*>("parcelas", &recinto),
          {"lineas", &linea},
          {"rotulos", &punto}}) {
        SCOPED_TRACE(nombre);
        dicho.clear();
        {
            const GDALDatasetUniquePtr datos = Crea({});
            OGRLayer* capa =
                Capa(*datos, nombre,
                     {{"poligono", OFTInteger}, {"parcela", OFTInteger}, {"texto", OFTString}});
            OGRFeature elemento(capa->GetLayerDefn());
            elemento.SetField("poligono", 1);
            elemento.SetField("parcela", 30);
            elemento.SetField("texto", "a");
            elemento.SetGeometry(geometria);
            EXPECT_NE(capa->CreateFeature(&elemento), OGRERR_NONE);
        }
        EXPECT_TRUE(Dice("sus coordenadas no son números"));
        EXPECT_EQ(Cambiados(), Lineas());
    }
}

TEST_F(Update, WritesNothingWhileAnotherProgramHasTheMunicipality)
{
    CElementos parcelas = Elementos("parcelas");
    Parcela(parcelas, "7")["parcela"] = "77";
    CConjuntoSalidas otro;
    sistema::Error error;
    ASSERT_EQ(otro.Reserva(carpeta.En("lista.txt"), error), CReemplazo::Apertura::Abierto);
    Escribe({{"parcelas", parcelas}}, {"GANAN=NUMEROS", "SIMULA=SI"});
    EXPECT_FALSE(Dice("fallo: ")) << "nothing is to be written";
    Escribe({{"parcelas", parcelas}}, {"GANAN=NUMEROS"});
    EXPECT_EQ(Cambiados(), Lineas{});
    EXPECT_TRUE(Dice("lista.txt: Otro proceso lo está escribiendo"));
    otro.Desecha();
    Escribe({{"parcelas", parcelas}}, {"GANAN=NUMEROS"});
    EXPECT_EQ(Cambiados(), (Lineas{"1.BIN", "1.PAR"}));
}
