#include "tests/evidence/gis/update_in_tests.h"

#include <filesystem>
#include <random>

// Writing over a municipality: what the source brings changes, and nothing else.

namespace {

constexpr const char* kParcelasAntes[] = {"7|100|1", "8|100|2", "9|100|3", "-|9|4"};

} // namespace

TEST_F(Update, LeavesAllBytesWhereNothingWasEdited)
{
    for (const std::vector<const char*>& nombres :
         {std::vector{"parcelas"},
          {"subparcelas", "poligonos"},
          {"rotulos"},
          {"lineas"},
          {"parcelas", "subparcelas", "poligonos", "rotulos", "lineas"}}) {
        Escribe(Capas(nombres));
        EXPECT_EQ(Cambiados(), Lineas()) << nombres.front();
        EXPECT_EQ(dicho, "");
    }
}

TEST_F(Update, KeepsLabelsOfWhatComesByItsNumbersAlone)
{
    CElementos parcelas = Elementos("parcelas");
    std::erase_if(parcelas, [](const CValores& una) { return !una.contains("parcela"); });
    CElementos subparcelas = Elementos("subparcelas");
    Parcela(parcelas, "7")["rotulo"] = "7 bis";
    Parcela(parcelas, "8")["rotulo"] = "008";
    subparcelas.front()["rotulo"] = "x-a";
    Escribe({{"parcelas", parcelas}, {"subparcelas", subparcelas}});
    for (const char* fichero : kFicheros)
        antes[fichero] = carpeta.Lee(fichero);
    const auto soloNumeros = [](CElementos elementos) {
        constexpr std::string_view kSuyos[] = {"poligono", "parcela", "letra", "wkt"};
        for (CValores& uno : elementos)
            std::erase_if(uno, [&](const auto& campo) {
                return std::ranges::find(kSuyos, campo.first) == std::end(kSuyos);
            });
        return elementos;
    };
    parcelas = soloNumeros(Elementos("parcelas"));
    subparcelas = soloNumeros(Elementos("subparcelas"));
    const auto edita = [](CElementos elementos, const char* campo, const char* valor) {
        elementos.front()[campo] = valor;
        return elementos;
    };
    constexpr const char* kMasCorta = "POLYGON ((0 0,10 0,10 5,0 5,0 0))";
    const struct {
        const char* motivo;
        CElementos parcelas;
        CElementos subparcelas;
        Lineas rotulos;
        Lineas cambiados = {"1.BIN", "1.PAR", "1.SUB"};
    } casos[] = {
        {"as they are", parcelas, subparcelas, Lineas{"7 bis|1", "008|2", "9|3", "x-a|0"},
         Lineas()},
        {"other rings", edita(parcelas, "wkt", kMasCorta), edita(subparcelas, "wkt", kMasCorta),
         Lineas{"7 bis|1", "008|2", "9|3", "x-a|0"}},
        {"another number or letter", edita(parcelas, "parcela", "17"),
         edita(subparcelas, "letra", "b"), Lineas{"17|1", "008|2", "9|3", "7-b|0"}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        Escribe({{"parcelas", caso.parcelas}, {"subparcelas", caso.subparcelas}});
        Lineas rotulos;
        for (const char* capa : {"parcelas", "subparcelas"})
            for (const CValores& uno : Elementos(capa))
                rotulos.push_back(uno.at("rotulo") + "|" + uno.at("numero"));
        EXPECT_EQ(rotulos, caso.rotulos) << dicho;
        EXPECT_EQ(Cambiados(), caso.cambiados);
    }
    PonComoEstaba();
    tipos = {{"poligono", OFTInteger}, {"parcela", OFTInteger}, {"rotulo", OFTInteger}};
    for (CValores& suya : parcelas) // a source that took the labels for numbers
        suya["rotulo"] = suya["parcela"];
    Escribe({{"parcelas", parcelas}});
    EXPECT_EQ(Cambiados(), Lineas());
}

TEST_F(Update, EmptiesAPolygonThatTheSourceDoesntNameWhereAnOptionNamesIt)
{
    const CCapas parcelas = Capas({"parcelas"});
    const CCapas sinSubparcelas = {{"parcelas", parcelas.at("parcelas")}, {"subparcelas", {}}};
    const CCapas nada = {{"parcelas", {}}};
    const auto seVacian = [](const std::string& cuantos, const char* cuales) {
        return "aviso: " + cuantos + kSeVacian + cuales;
    };
    const struct {
        const char* motivo;
        CCapas capas;
        const char* opcion;
        std::string frase; ///< empty for nothing told
        Lineas cambian = {};
        const char* simula = "SIMULA=NO";
    } casos[] = {
        {"kept, and told", parcelas, "ORTOS=ortos", std::string("aviso: 1") + kSeQuedan},
        {"texts alone empty nothing", Capas({"rotulos"}), "ORTOS=ortos", ""},
        {"by its name", parcelas, "VACIA= 2 ", seVacian("1", "2"), Lineas{"2.BIN", "2.PAR"}},
        {"all that aren't named", parcelas, "VACIA=todos", seVacian("1", "2"),
         Lineas{"2.BIN", "2.PAR"}},
        {"in each layer that the source has", sinSubparcelas, "VACIA=2",
         "aviso: 1 capas de las que el origen no trae ningún recinto de un polígono y se quedan "
         "como están; la opción VACIA las vacía: 1.SUB\n" +
             seVacian("1", "2"),
         Lineas{"2.BIN", "2.PAR", "2.SUB"}},
        {"all of it", nada, "VACIA=1,2", seVacian("2", "1, 2"),
         Lineas{"1.BIN", "1.PAR", "2.BIN", "2.PAR"}},
        {"told alone", parcelas, "VACIA=2",
         "aviso: 2: 0 recintos nuevos, 0 cambiados, 4 quitados y 0 como estaban", Lineas(),
         "SIMULA=SI"},
        {"one that isn't there", parcelas, "VACIA=2,3",
         "fallo: La opción VACIA nombra 3, que no está en la lista"},
        {"one that comes", parcelas, "VACIA=2,1",
         "fallo: La opción VACIA nombra 1, y el origen trae recintos suyos"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        dicho.clear();
        PonCapas(caso.capas, {caso.opcion, caso.simula});
        EXPECT_TRUE(caso.frase.empty() ? dicho.empty() : Dice(caso.frase)) << dicho;
        EXPECT_EQ(Cambiados(), caso.cambian);
    }
}

TEST_F(Update, KnowsTextsAgainThatComeInAnotherForm)
{
    // Letters in UTF-8 come back in the code page, and a form without types has blanks for nothing.
    CDibujoPrueba dibujo(carpeta);
    const int marco = dibujo.Cuadrado(0, 0, 10);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7 ni\xC3\xB1o", 100, 100), {marco}},
                  {kParcela, 100, 0, {marco}, {100, 100}}};
    dibujo.Rotulo("129001", "R\xC3\xADo", 300, 300);
    dibujo.Graba();
    for (const char* extension : {".BIN", ".PAR", ".SUB", ".POL"})
        std::filesystem::rename(carpeta.Ruta() / (std::string("1") + extension),
                                carpeta.Ruta() / (std::string("1\xC3\xB1") + extension));
    carpeta.Pon("lista.txt", "TREN 045127\r\nP1\xC3\xB1\r\n");
    const auto todos = [&] {
        return carpeta.Lee("1\xC3\xB1.BIN") + carpeta.Lee("1\xC3\xB1.PAR") +
               carpeta.Lee("lista.txt");
    };
    const std::string eran = todos();
    CCapas capas = Capas({"parcelas", "rotulos"});
    ASSERT_EQ(capas["parcelas"].size(), 2U);
    for (const char* campo : {"rotulo", "codigo", "borrado", "parcela", "faltas"})
        capas["parcelas"][1].try_emplace(campo, "");
    Escribe(capas);
    EXPECT_EQ(dicho, "");
    EXPECT_EQ(todos(), eran);
    EXPECT_EQ(carpeta.Cuantos(), 4 + 4 + 1) << "no drawing of another name";
}

TEST_F(Update, BringsEachEditOfAnOutlineAndNothingElse)
{
    const struct {
        const char* motivo;
        std::function<void(CElementos&)> edita;
        Lineas quedan; ///< of polygon 1
        Lineas cambian = {"1.BIN", "1.PAR"};
    } casos[] = {
        {"deleted",
         [](CElementos& todas) { todas.erase(todas.begin() + 1); },
         {"7|100|1", "9|100|3", "-|9|4"}},
        {"new, by its number alone",
         [](CElementos& todas) {
             todas.push_back({{"poligono", "1"},
                              {"parcela", "20"},
                              {"wkt", "POLYGON ((0 10,10 10,10 15,0 15,0 10))"}});
         },
         {"7|100|1", "8|100|2", "9|100|3", "-|9|4", "20|50|5"}},
        {"moved boundary",
         [](CElementos& todas) {
             Parcela(todas, "7")["wkt"] = "POLYGON ((0 0,12 0,12 10,0 10,0 0))";
             Parcela(todas, "8")["wkt"] = "POLYGON ((12 0,20 0,20 10,12 10,12 0))";
         },
         {"7|120|1", "8|80|2", "9|100|3", "-|9|4"}},
        {"split, and the label's field taken out",
         [](CElementos& todas) {
             Parcela(todas, "9")["wkt"] = "POLYGON ((50 50,60 50,60 54,50 54,50 50))";
             todas.push_back(Parcela(todas, "9"));
             todas.back().erase("rotulo");
             todas.back()["parcela"] = "21";
             todas.back()["wkt"] = "POLYGON ((50 54,60 54,60 60,50 60,50 54))";
         },
         {"7|100|1", "8|100|2", "9|40|3", "-|9|4", "21|60|3"}},
        {"another number",
         [](CElementos& todas) {
             Parcela(todas, "9")["parcela"] = "19";
             for (CValores& una : todas)
                 if (una["parcela"] == "19")
                     una["rotulo"] = "19";
         },
         {"7|100|1", "8|100|2", "19|100|3", "-|9|4"}},
        {"a label for the one without",
         [](CElementos& todas) { todas[3]["parcela"] = "30"; },
         {"7|100|1", "8|100|2", "9|100|3", "30|9|4"}},
        {"another number of the record alone",
         [](CElementos& todas) { todas[0]["numero"] = "77"; },
         {"7|100|77", "8|100|2", "9|100|3", "-|9|4"},
         {"1.PAR"}},
        {"turned round, begun elsewhere and in another order",
         [](CElementos& todas) {
             Parcela(todas, "7")["wkt"] = "POLYGON ((10 10,10 0,0 0,0 10,10 10))";
             std::swap(todas[0], todas[2]);
         },
         {kParcelasAntes[0], kParcelasAntes[1], kParcelasAntes[2], kParcelasAntes[3]},
         {}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        CElementos todas = Elementos("parcelas");
        for (CValores& una : todas) // what a GIS would show beside the number
            if (una.contains("parcela"))
                una.erase("estado");
        caso.edita(todas);
        Escribe({{"parcelas", todas}});
        EXPECT_FALSE(Dice("fallo: "));
        EXPECT_EQ(Cambiados(), caso.cambian);
        Lineas esperadas;
        for (const std::string& linea : caso.quedan)
            esperadas.push_back("1|" + linea);
        for (const char* linea : kParcelasAntes)
            esperadas.push_back(std::string("2|") + linea);
        EXPECT_EQ(Parcelas(), esperadas);
        EsperaQueCrece();
    }
}

TEST_F(Update, GivesBackWhatItGotEditAfterEdit)
{
    std::mt19937 azar(3);
    const auto hasta = [&](int n) { return static_cast<int>(azar() % static_cast<unsigned>(n)); };
    int siguiente = 100;
    for (int vez = 0; vez < 60; ++vez) {
        SCOPED_TRACE(vez);
        CElementos todas = Elementos("parcelas");
        for (int cambios = 1 + hasta(3); cambios > 0; --cambios) {
            const double x = hasta(9000) / 100.0 + (vez % 2 == 0 ? 0 : hasta(1000) / 1e5);
            const double y = hasta(9000) / 100.0;
            const std::string wkt =
                CPLSPrintf("POLYGON ((%.5f %.2f,%.5f %.2f,%.5f %.5f,%.5f %.2f))", x, y, x + 9, y,
                           x + 9, y + 7.3331, x, y);
            const auto cual = static_cast<std::size_t>(hasta(static_cast<int>(todas.size())));
            if (todas.size() < 8 && hasta(2) == 0)
                todas.push_back(
                    {{"poligono", "1"}, {"parcela", std::to_string(siguiente++)}, {"wkt", wkt}});
            else if (todas.size() > 3 && hasta(2) == 0)
                todas.erase(todas.begin() + static_cast<std::ptrdiff_t>(cual));
            else
                todas[cual]["wkt"] = wkt;
        }
        Escribe({{"parcelas", todas}});
        ASSERT_FALSE(Dice("fallo: "));
        std::map<std::string, double> esperadas;
        for (const CValores& una : todas) {
            esperadas[una.contains("parcela") ? una.at("parcela") : "-"] +=
                Geometria(una.at("wkt").c_str())->toPolygon()->get_Area();
        }
        std::map<std::string, double> leidas;
        for (const CValores& una : Elementos("parcelas"))
            leidas[una.contains("parcela") ? una.at("parcela") : "-"] +=
                CPLAtof(una.at("area_registro").c_str());
        ASSERT_EQ(leidas.size(), esperadas.size());
        for (const auto& [parcela, area] : esperadas)
            EXPECT_NEAR(leidas[parcela], area, 0.5) << parcela; // rounding moves a boundary
        EXPECT_EQ(carpeta.Lee("1.SUB"), antes["1.SUB"]);
        const std::string bytes = carpeta.Lee("1.BIN");
        Escribe({{"parcelas", Elementos("parcelas")}});
        EXPECT_EQ(carpeta.Lee("1.BIN"), bytes) << "unedited";
    }
    EXPECT_EQ(Elementos("subparcelas").at(0)["wkt"], "POLYGON ((10 0,0 0,0 10,10 10,10 0))");
}

TEST_F(Update, KeepsHeightsAndSharesLinesWithWhatStays)
{
    CElementos todas = Elementos("parcelas");
    Parcela(todas, "7")["wkt"] = "POLYGON ((0 0,10 0,10 10,0 10,-2 5,0 0))";
    Escribe({{"parcelas", todas}});
    CFile bin;
    ASSERT_TRUE(bin.Open(carpeta.En("1.BIN"), CFile::modeRead));
    std::vector<vexageo::CTexto<int>> nuevas;
    RecorreEntidades(bin, [&](int posicion, const vexageo::CTexto<int>& entidad) {
        if (static_cast<std::size_t>(posicion) > antes["1.BIN"].size())
            nuevas.push_back(entidad);
    });
    std::string puntos; // the subparcel keeps the old outline, so the lines part where it does
    for (const vexageo::CTexto<int>& nueva : nuevas) {
        EXPECT_TRUE(nueva.Tipo().EsLinea()) << "the label is there";
        for (const auto& punto : nueva.Puntos())
            puntos += std::to_string(punto.X) + " " + std::to_string(punto.Y) + " " +
                      std::to_string(punto.Z) + ",";
        puntos.back() = ';';
    }
    EXPECT_EQ(puntos, "0 0 6,1000 0 5;1000 1000 8,0 1000 7;0 1000 7,-200 500 0,0 0 6;")
        << "all but the wall to parcel 8";
}

TEST_F(Update, RefusesWhatContradictsItselfUnlessAnOptionSaysWhichCounts)
{
    const struct {
        const char* motivo;
        const char* capa;
        std::function<void(CElementos&)> edita;
        const char* frase;
        const char* conNumeros; ///< a label of polygon 1 that is there then
        const char* conRotulos;
        const char* campo = "el campo"; ///< what is told to count
        const char* rotulo = "el rótulo";
    } casos[] = {
        {"the parcel", "parcelas",
         [](CElementos& todas) { Parcela(todas, "8")["parcela"] = "999"; },
         "la parcela 8 del polígono 1 (elemento 2): su campo parcela dice 999 y su rótulo dice "
         "\"8\"",
         "999", "8"},
        {"the letter", "subparcelas", [](CElementos& todas) { todas[0]["letra"] = "ñ"; },
         "su campo letra dice ñ y su rótulo dice \"7-a\"", "7-ñ", "7-a"},
        {"the parcel of a letter", "subparcelas",
         [](CElementos& todas) { todas[0]["parcela"] = "12"; }, "su campo parcela dice 12", "12-a",
         "7-a"},
        {"a deleted label", "parcelas", [](CElementos& todas) { todas[0]["borrado"] = "1"; },
         "su campo parcela dice 7 y su rótulo dice \"7\", que no vale", "7", "7"},
        {"the polygon", "parcelas", [](CElementos& todas) { todas[0]["poligono"] = "2"; },
         "su campo poligono dice 2 y su campo entrada dice 1", "8", "7", "poligono", "entrada"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        CElementos todas = Elementos(caso.capa);
        caso.edita(todas);
        EsperaQueNiega({{caso.capa, todas}}, caso.frase, {"GANAN=NADIE", "PIEZAS=SI"});
        for (const bool numeros : {true, false}) {
            SCOPED_TRACE(numeros);
            PonComoEstaba();
            Escribe({{caso.capa, todas}},
                    {numeros ? "GANAN=NUMEROS" : "GANAN=ROTULOS", "PIEZAS=SI"});
            EXPECT_TRUE(Dice(caso.frase));
            EXPECT_FALSE(Dice("fallo: "));
            EXPECT_TRUE(Dice(std::string(": vale ") + (numeros ? caso.campo : caso.rotulo) + "\n"));
            const CElementos ahora = Elementos(caso.capa);
            const char* esperado = numeros ? caso.conNumeros : caso.conRotulos;
            EXPECT_TRUE(std::any_of(ahora.begin(), ahora.end(), [&](const CValores& una) {
                return una.contains("rotulo") && una.at("rotulo") == esperado;
            })) << esperado;
        }
    }
    EXPECT_EQ(Parcelas().size(), 8U) << "the first parcel stayed, its files' name counted";
}

TEST_F(Update, MovesAParcelToAnotherPolygonWhereItsNumberCounts)
{
    CElementos todas = Elementos("parcelas");
    todas.resize(1);
    todas[0]["poligono"] = "2";
    Escribe({{"parcelas", todas}}, {"GANAN=NUMEROS", "PIEZAS=SI"});
    EXPECT_EQ(Parcelas(), (Lineas{"2|7|100|1"})) << "both polygons were named";
    EXPECT_EQ(carpeta.Lee("lista.txt"), antes["lista.txt"]);
}

TEST_F(Update, ChangesTextsAndLinesOfNobody)
{
    CCapas capas = Capas({"rotulos", "lineas"});
    CElementos& rotulos = capas["rotulos"];
    ASSERT_EQ(rotulos.back()["texto"], "Camino");
    rotulos.back()["texto"] = "Camino del río";
    rotulos.push_back({{"poligono", "1"}, {"texto", "Fuente"}, {"wkt", "POINT (3 4)"}});
    ASSERT_EQ(capas["lineas"].back()["linde"], "0");
    capas["lineas"].pop_back();
    Escribe(capas, {"SIMULA=SI"});
    const std::string cambia = "aviso: 1: 0 recintos nuevos, 0 cambiados, 0 quitados y 0 como "
                               "estaban; 1 textos o líneas sueltos nuevos, 1 cambiados y 1 "
                               "quitados\n";
    EXPECT_TRUE(Dice(cambia));
    EXPECT_EQ(Cambiados(), Lineas());
    Escribe(capas);
    EXPECT_EQ(dicho, cambia);
    EXPECT_EQ(Cambiados(), Lineas{"1.BIN"});
    EsperaQueCrece();
    Lineas textos;
    for (const CValores& uno : Elementos("rotulos"))
        if (!uno.contains("capa"))
            textos.push_back(uno.at("texto") + "|" + uno.at("codigo") + "|" + uno.at("borrado") +
                             "|" + uno.at("wkt"));
    EXPECT_EQ(textos, (Lineas{"Camino|129001|1|POINT (3 3)", "Camino del río|129001|0|POINT (3 3)",
                              "Fuente|nuevo|0|POINT (3 4)"}));
    EXPECT_EQ(Elementos("lineas").back().at("borrado"), "1");
    EXPECT_EQ(Elementos("parcelas").size(), 4U);
}

/// A source may have lost the positions, as a sheet whose columns somebody chose.
TEST_F(Update, KnowsTextsAndLinesAgainThatDontSayWhereTheyStood)
{
    CCapas capas = Capas({"rotulos", "lineas"});
    capas["rotulos"].push_back(capas["rotulos"].back()); // one more at the same place
    for (auto& [capa, elementos] : capas)
        for (CValores& uno : elementos)
            for (const char* campo : {"posicion", "capa", "linde", "codigo"})
                uno.erase(campo);
    CValores& linea = capas["lineas"].front(); // drawn from its other end
    ASSERT_EQ(linea["wkt"], "LINESTRING (10 0,0 0,0 10,10 10)");
    linea["wkt"] = "LINESTRING (10 10,0 10,0 0,10 0)";
    for (int vez = 0; vez < 2; ++vez) { // the second time both are there
        Escribe(capas);
        for (const auto& [capa, elementos] : capas)
            EXPECT_EQ(Elementos(capa.c_str()).size(), elementos.size()) << capa;
    }
    EXPECT_EQ(dicho, "");
    // A copy that somebody put in front of what still says its position is the new one.
    CElementos rotulos = Elementos("rotulos");
    CValores copia = rotulos.front();
    copia.erase("posicion");
    rotulos.insert(rotulos.begin(), copia);
    rotulos[1]["texto"] = "otro";
    Escribe({{"rotulos", rotulos}});
    EXPECT_TRUE(Dice("es de un recinto: se cambia en la capa"));
}

TEST_F(Update, WritesTextsAndLinesIntoAnEmptyFolder)
{
    CCapas capas = Capas({"parcelas", "subparcelas", "poligonos", "rotulos", "lineas"});
    for (const char* fichero : kFicheros)
        std::filesystem::remove(carpeta.Ruta() / fichero);
    Escribe(capas, {"GER=45", "MUN=127"});
    EXPECT_FALSE(Dice("fallo: "));
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
    ASSERT_NE(datos, nullptr);
    EXPECT_EQ(Lee(*datos, "rotulos", {"texto", "codigo"}).back(), "Camino|129001|POINT (3 3)");
    EXPECT_EQ(Lee(*datos, "rotulos", {}).size(), capas["rotulos"].size());
    EXPECT_EQ(Lee(*datos, "lineas", {"codigo", "linde"}).back(), "127001|0|LINESTRING (1 1,90 90)");
    EXPECT_EQ(Lee(*datos, "lineas", {}).size(), capas["lineas"].size());
}

TEST_F(Update, LeavesWhatItCantChangeAndSaysWhy)
{
    const std::string cortado = antes["1.BIN"].substr(0, antes["1.BIN"].size() - 3);
    const struct {
        const char* motivo;
        const char* fichero;
        std::string bytes;
        const char* frase;
        std::vector<const char*> opciones = {};
    } casos[] = {
        {"another municipality", "lista.txt", antes["lista.txt"],
         "es del municipio 045127 y lo que se escribe es de 045128",
         std::vector{"GER=45", "MUN=128"}},
        {"no list", "lista.txt", "una carta\r\n", "no es una lista de polígonos"},
        {"a damaged drawing", "1.BIN", cortado, "el dibujo 1 no se puede cambiar: su .BIN está"},
        {"a damaged topology", "1.PAR", antes["1.PAR"] + "VPOL",
         "el dibujo 1 no se puede cambiar: su .PAR está dañado"},
        {"no drawing", "1.BIN", "", "tiene .SUB y le falta el .BIN"},
        {"a record of a newer drawing", "1.BIN", antes["1.BIN"].substr(0, 16),
         "sus topologías están fuera de fecha"},
    };
    CElementos todas = Elementos("parcelas");
    Parcela(todas, "9")["wkt"] = "POLYGON ((50 50,60 50,60 54,50 54,50 50))";
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        carpeta.Pon(caso.fichero, caso.bytes);
        if (caso.bytes.empty())
            std::filesystem::remove(carpeta.Ruta() / caso.fichero);
        Escribe({{"parcelas", todas}}, caso.opciones);
        EXPECT_TRUE(Dice(caso.frase));
        EXPECT_TRUE(dicho.ends_with("fallo: No se ha escrito ningún dibujo\n")) << dicho;
        for (const char* fichero : kFicheros)
            EXPECT_TRUE(carpeta.Lee(fichero) == antes[fichero] ||
                        fichero == std::string(caso.fichero));
        Escribe({{"parcelas", todas}}, {"SUSTITUYE=SI", "GER=45", "MUN=128"});
        EXPECT_EQ(carpeta.Lee("lista.txt"), "LISTA045128\r\nP1\r\n");
        EXPECT_EQ(carpeta.Lee("1.SUB"), "");
        EXPECT_TRUE(Dice("1.SUB"));
        EXPECT_TRUE(Dice("SUSTITUYE quita de la lista: 2\n") ||
                    caso.fichero == std::string("lista.txt"))
            << dicho;
    }
}

TEST_F(Update, KeepsAnInvalidOutlineThatNobodyTouched)
{
    const char* pajarita = "POLYGON ((50 50,60 60,60 50,50 60,50 50))";
    CDibujoPrueba dibujo(carpeta);
    const int lazo =
        dibujo.Linea({{5000, 5000}, {6000, 6000}, {6000, 5000}, {5000, 6000}, {5000, 5000}});
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 100, 100), {dibujo.Cuadrado(0, 0, 10)}},
                  {kParcela, 50, dibujo.Parcela("8", 5100, 5050), {lazo}}};
    dibujo.Graba();
    CElementos todas = Elementos("parcelas");
    ASSERT_EQ(Parcela(todas, "8")["wkt"], pajarita);
    Parcela(todas, "7")["wkt"] = "POLYGON ((0 0,9 0,9 9,0 9,0 0))";
    Escribe({{"parcelas", todas}});
    EXPECT_EQ(dicho, "");
    EXPECT_EQ(Parcela(todas = Elementos("parcelas"), "8")["wkt"], pajarita);
    EXPECT_EQ(Parcela(todas, "7")["area_registro"], "81");
    // One that came to be invalid is refused, or stays as it was.
    Parcela(todas, "7")["wkt"] = "POLYGON ((0 0,9 9,9 0,0 9,0 0))";
    Escribe({{"parcelas", todas}}, {"INVALIDOS=SI"});
    EXPECT_TRUE(Dice("Se deja como estaba la parcela 7"));
    EXPECT_EQ(Parcela(todas = Elementos("parcelas"), "7")["area_registro"], "81");
}

TEST_F(Update, TellsOnceOfEditsThatHaveNoEffect)
{
    carpeta.Pon("Parcelas.txt", "45\t127\t0\t1\t7\t555\t0\t0\t12\tPR\t100\tX\t1\t2\t3\tC\r\n");
    CElementos todas = Elementos("parcelas");
    ASSERT_EQ(Parcela(todas, "7")["superficie"], "555");
    Escribe({{"parcelas", todas}});
    EXPECT_EQ(dicho, "");
    Parcela(todas, "7")["superficie"] = "556";
    Parcela(todas, "8")["estado"] = "dudoso";
    Parcela(todas, "9")["estado"] = "dudoso";
    for (CValores& una : todas) { // as a Shapefile has it
        una["area_regis"] = una["area_registro"];
        una.erase("area_registro");
        una["observaciones"] = "de alguien";
    }
    Parcela(todas, "9")["area_regis"] = "5";
    Escribe({{"parcelas", todas}});
    EXPECT_EQ(dicho, "aviso: Sin efecto, porque estos campos sólo se leen; elementos que los "
                     "cambian: area_regis (1), estado (2), superficie (1)\n");
    EXPECT_EQ(Cambiados(), Lineas());
}

TEST_F(Update, AddsAPolygonToTheListAndFindsThoseThatHaveOtherNames)
{
    Escribe({{"parcelas",
              {{{"poligono", "2"}, {"parcela", "7"}, {"wkt", kCuadro}},
               {{"poligono", "3"}, {"parcela", "1"}, {"wkt", kCuadro}}}}});
    EXPECT_EQ(dicho,
              "aviso: 2: 0 recintos nuevos, 0 cambiados, 3 quitados y 1 como estaban\naviso: 1" +
                  std::string(kSeQuedan) + "1\n");
    EXPECT_EQ(carpeta.Lee("lista.txt"), antes["lista.txt"] + "\r\nP003\r\n");
    EXPECT_EQ(Parcelas().size(), 4U + 1U + 1U);
    EXPECT_EQ(Cambiados(), (Lineas{"2.BIN", "2.PAR", "lista.txt"}))
        << "parcel 7 of polygon 2 came as it was, the others are gone";
    for (const char* fichero : {"2.BIN", "2.PAR", "2.SUB", "2.POL"})
        std::filesystem::remove(carpeta.Ruta() / fichero);
    Escribe({{"parcelas", {{{"poligono", "2"}, {"parcela", "7"}, {"wkt", kCuadro}}}}});
    EXPECT_TRUE(Dice("aviso: 1 dibujos de la lista que faltaban y se hacen nuevos: 2\n"));
}

TEST_F(Update, TellsOfParcelsAndSubparcelsThatLieElsewhere)
{
    CElementos parcelas = Elementos("parcelas"); // polygon 1 is drawn around parcel 9 alone
    parcelas.push_back({{"poligono", "1"},
                        {"parcela", "20"},
                        {"wkt", "POLYGON ((51 51,52 51,52 52,51 52,51 51))"}});
    parcelas.push_back(
        {{"poligono", "1"}, {"parcela", "21"}, {"wkt", "POLYGON ((0 20,5 20,5 25,0 25,0 20))"}});
    CElementos subparcelas = Elementos("subparcelas");
    subparcelas.push_back({{"poligono", "1"}, {"parcela", "8"}, {"letra", "b"}, {"wkt", kCuadro}});
    Escribe({{"parcelas", parcelas}, {"subparcelas", subparcelas}});
    EXPECT_TRUE(Dice("1 parcelas que caen fuera del contorno de su polígono (capa poligonos), "
                     "así que no pasan a Infograf: la parcela 21 del"));
    EXPECT_TRUE(Dice("1 subparcelas que caen en otra parcela que la que dicen: la subparcela "
                     "8-b del"));
}

TEST_F(Update, TellsWhatWouldChangeAndChangesNothing)
{
    CElementos todas = Elementos("parcelas");
    Parcela(todas, "9")["wkt"] = "POLYGON ((50 50,60 50,60 58,50 58,50 50))";
    todas.erase(todas.begin());
    Escribe({{"parcelas", todas}}, {"SIMULA=SI"});
    EXPECT_EQ(dicho, "aviso: 1: 0 recintos nuevos, 1 cambiados, 1 quitados y 2 como estaban\n");
    EXPECT_EQ(Cambiados(), Lineas());
}

TEST_F(Update, ComesWholeOrNotAtAllWhateverFails)
{
    CElementos todas = Elementos("parcelas");
    Parcela(todas, "9")["wkt"] = "POLYGON ((50 50,60 50,60 54,50 54,50 50))";
    todas.push_back({{"poligono", "3"}, {"parcela", "1"}, {"wkt", kCuadro}});
    const Lineas todos = {"1.BIN", "1.PAR", "lista.txt"};
    const auto escribe = [&] {
        PonComoEstaba();
        for (const char* extension : {"BIN", "PAR", "SUB", "POL"}) // else nobody's to write
            std::filesystem::remove(carpeta.Ruta() / (std::string("003.") + extension));
        Escribe({{"parcelas", todas}});
        const Lineas cambiados = Cambiados();
        EXPECT_TRUE(cambiados.empty() || cambiados == todos);
        return cambiados;
    };
    EXPECT_EQ(escribe(), todos);
    FallaCadaLlamada(escribe);
}

TEST_F(Update, WritesNothingBesideWhatAnotherSavedSinceADrawingWasRead)
{
    CElementos todas = Elementos("parcelas");
    Parcela(todas, "9")["wkt"] = "POLYGON ((50 50,60 50,60 54,50 54,50 50))";
    Plan() = {};
    Escribe({{"parcelas", todas}});
    const long cuantas = Plan().llamadas;
    for (const std::string fichero : {"1.BIN", "1.SUB"}) {
        std::string ajeno = antes[fichero];
        ajeno[ajeno.size() - 1] ^= 1; // a height, or the number of an island
        int negados = 0;
        for (long en = 1; en <= cuantas && !HasFailure(); ++en) {
            SCOPED_TRACE(testing::Message()
                         << fichero << " before call " << en << " of " << cuantas);
            PonComoEstaba();
            Plan() = {};
            Plan().entretanto = [&] { carpeta.Pon(fichero, ajeno); };
            Plan().entretantoEn = en;
            Escribe({{"parcelas", todas}});
            Plan() = {};
            const bool negado = Dice("fallo: Otro programa ha escrito");
            EXPECT_TRUE(!negado || Cambiados() == Lineas{fichero});
            negados += negado ? 1 : 0;
        }
        EXPECT_GT(negados, 20);
    }
}

TEST_F(Update, CountsWhatItHasToldAHundredTimes)
{
    CElementos todas;
    for (int i = 0; i < 300; ++i) { // each upon the next one
        const std::string x = std::to_string(i * 10);
        const std::string hasta = std::to_string(i * 10 + 12);
        todas.push_back({{"poligono", "5"},
                         {"parcela", std::to_string(i + 1)},
                         {"wkt", "POLYGON ((" + x + " 0," + hasta + " 0," + hasta + " 10," + x +
                                     " 10," + x + " 0))"}});
    }
    Escribe({{"parcelas", todas}});
    const auto veces = [&](const std::string& que) {
        int cuantas = 0;
        for (std::size_t en = dicho.find(que); en != std::string::npos;
             en = dicho.find(que, en + 1))
            ++cuantas;
        return cuantas;
    };
    EXPECT_EQ(veces("se solapan la parcela"), 100);
    EXPECT_EQ(veces("299 solapes de parcelas en el polígono 005: 5980.00 m2 en total"), 1);
    EXPECT_EQ(
        veces("299 solapes de más de 1 m2 en total, de los que se han dicho los 100 primeros; "
              "suman 5980.00 m2"),
        1);
}

TEST_F(Update, IsNobodysToDelete)
{
    EXPECT_NE(GetGDALDriverManager()->GetDriverByName("Vexa")->Delete(
                  carpeta.En("lista.txt").GetString()),
              CE_None);
    EXPECT_EQ(Cambiados(), Lineas());
}
