#include "tests/evidence/gis/driver_in_tests.h"

#include <cerrno>
#include <stdexcept>

#include "evidence/gis/reading/layer.h"
#include "platform/ansi.h"
#include "tests/faults/fault_plan.h"

namespace {

class Driver : public CPruebaDriver {};

} // namespace

TEST_F(Driver, ShowsEveryOutlineLabelAndMessage)
{
    CDibujoPrueba dibujo(carpeta);
    const int marco = dibujo.Cuadrado(0, 0, 10);
    const int hueco = dibujo.Cuadrado(200, 200, 2);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 100, 100), {marco}, {}, 4},
                  {kIsla, -4, 0, {hueco}},
                  {kParcela, 4, 0, {hueco}, {250, 250}},
                  {kParcela, 100, dibujo.Rotulo("125201", "8", 1, 1, true), {marco}}};
    dibujo.sub = {{kParcela, 100, dibujo.Subparcela("7-ñ"_ansi, 100, 100), {marco}}};
    dibujo.Rotulo("9", "suelto", 300, 300);
    dibujo.Graba();
    carpeta.Pon("lista.txt", "TREN 045127\r\nP1\r\n");
    carpeta.Pon("045127.ERR", "E111: La parcela    1      7 en base de datos no tiene "
                              "correspondencia en gr\xE1"
                              "fico\r\n"
                              "E109: La subparcela    a de coordenadas 1.50 2.00 no se encuentra "
                              "en ninguna parcela\r\nE101: cortado\r\n");
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"), {"SRS=EPSG:25830"});
    ASSERT_NE(datos, nullptr) << dicho;
    EXPECT_EQ(
        Lee(*datos, "parcelas",
            {"poligono", "parcela", "rotulo", "area_registro", "area_contorno", "valido", "estado",
             "numero"}),
        (Lineas{"1|7|7|96|96|1|válido|4|POLYGON ((0 0,10 0,10 10,0 10,0 0),(2 2,4 2,4 4,2 4,2 2))",
                "1|-|-|4|4|0|sin rótulo|0|POLYGON ((2 2,4 2,4 4,2 4,2 2))",
                "1|-|8|100|100|0|rótulo borrado|0|POLYGON ((0 0,10 0,10 10,0 10,0 0))"}));
    EXPECT_EQ(Lee(*datos, "subparcelas", {"parcela", "letra", "rotulo", "codigo"}),
              (Lineas{"7|ñ|7-ñ|125501|POLYGON ((0 0,10 0,10 10,0 10,0 0))"}));
    EXPECT_EQ(Lee(*datos, "rotulos", {"texto", "capa", "parcela", "estado", "borrado"}),
              (Lineas{"7|parcelas|7|válido|0|POINT (1 1)",
                      "8|parcelas|-|rótulo borrado|1|POINT (0.01 0.01)",
                      "7-ñ|subparcelas|7|válido|0|POINT (1 1)", "suelto|-|-|-|0|POINT (3 3)"}));
    EXPECT_EQ(Lee(*datos, "lineas", {"posicion"}).size(), 2U);
    EXPECT_TRUE(Lee(*datos, "parcelas", {"faltas"}).at(2).starts_with("su rótulo está borrado"));
    EXPECT_EQ(Lee(*datos, "mensajes", {"numero", "clase", "poligono", "parcela", "letra"}),
              (Lineas{"E111|error|1|7|-|MULTIPOLYGON (((0 0,10 0,10 10,0 10,0 0),(2 2,4 2,4 4,2 "
                      "4,2 2)))",
                      "E109|error|-|-|a|POINT (1.5 2.0)", "-|-|-|-|-|"}));
    EXPECT_STREQ(datos->GetLayer(0)->GetSpatialRef()->GetAuthorityCode(nullptr), "25830");
    EXPECT_EQ(dicho, "");
}

TEST_F(Driver, CarriesWhatTheTablesSay)
{
    CDibujoPrueba dibujo(carpeta);
    const int marco = dibujo.Cuadrado(0, 0, 10);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 100, 100), {marco}},
                  {kParcela, 100, dibujo.Parcela("9", 100, 100), {marco}}};
    dibujo.sub = {{kParcela, 100, dibujo.Subparcela("a", 100, 100), {marco}}};
    dibujo.Graba();
    carpeta.Pon("lista.txt", "TREN 045127\r\nP1\r\n");
    carpeta.Pon("Parajes.txt", "Ger\tMun\n45\t127\t0\t3\tLAS ERAS  \r\n");
    carpeta.Pon("Titulares.txt", "45\t127\t12\tANA <B>\t \t1234\r\n45\t128\t12\tOTRA\t \t1\r\n");
    carpeta.Pon("Parcelas.txt", "45\t127\t0\t1\t7\t555\t0\t0\t12\tPR\t100\tX\t1\t2\t3\tC\r\n");
    carpeta.Pon("Subparcelas.txt", "45\t127\t0\t1\t7\ta\tA\tS\t44\tOR\t2\r\n");
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
    ASSERT_NE(datos, nullptr);
    const Lineas parcelas =
        Lee(*datos, "parcelas",
            {"parcela", "en_tablas", "superficie", "titular", "dni", "paraje", "clave_conc"});
    ASSERT_EQ(parcelas.size(), 2U);
    EXPECT_TRUE(parcelas[0].starts_with("7|1|555|ANA <B>|1234|LAS ERAS|C|")) << parcelas[0];
    EXPECT_TRUE(parcelas[1].starts_with("9|0|-|")) << parcelas[1];
    const Lineas subparcelas =
        Lee(*datos, "subparcelas", {"parcela", "tipo", "superficie", "calificacion", "clase"});
    EXPECT_TRUE(subparcelas.at(0).starts_with("7|A|44|OR|2|")) << subparcelas.at(0);
}

TEST_F(Driver, LeavesOtherFilesToOthers)
{
    carpeta.Pon("otro.txt", "TREN 045127\r\nP1\r\n"); // without drawings
    carpeta.Pon("corto.txt", "TREN");
    carpeta.Pon("binario.txt", std::string("TREN 045127\r\n\0", 14));
    for (const char* nombre : {"otro.txt", "corto.txt", "binario.txt", "nada.txt"})
        EXPECT_EQ(Abre(carpeta.En(nombre)), nullptr) << nombre;
}

TEST_F(Driver, WritesWhatItReadsBack)
{
    {
        const GDALDatasetUniquePtr datos = Crea();
        OGRLayer* parcelas = Capa(*datos, "Parcelas",
                                  {{"poligono", OFTInteger},
                                   {"parcela", OFTInteger},
                                   {"rotulo_x", OFTReal},
                                   {"rotulo_y", OFTReal}});
        EXPECT_TRUE(
            Pon(*parcelas,
                {{"poligono", "3"}, {"parcela", "7"}, {"rotulo_x", "1.5"}, {"rotulo_y", "9"}},
                "POLYGON ((0 0,10 0,10 10,0 10,0 0),(2 2,4 2,4 4,2 4,2 2))"));
        EXPECT_TRUE(Pon(*parcelas, {{"poligono", "3"}, {"parcela", "8"}},
                        "POLYGON ((2 2,4 2,4 4,2 4,2 2))"));
        OGRLayer* subparcelas =
            Capa(*datos, "subparcelas", {{"poligono", OFTInteger}, {"letra", OFTString}});
        EXPECT_TRUE(Pon(*subparcelas, {{"poligono", "3"}, {"letra", "ñ"}}, kCuadro));
        OGRLayer* hojas = Capa(*datos, "hojas", {{"hoja", OFTString}});
        EXPECT_TRUE(Pon(*hojas, {{"hoja", "0629-1-1"}}, "POLYGON ((-5 -5,50 -5,50 50,-5 -5))"));
    }
    EXPECT_EQ(dicho, "");
    EXPECT_EQ(carpeta.Lee("lista.txt"), "LISTA045127\r\nP003\r\n");
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
    ASSERT_NE(datos, nullptr);
    EXPECT_EQ(
        Lee(*datos, "parcelas", {"poligono", "parcela", "area_registro", "rotulo_x", "estado"}),
        (Lineas{"3|7|96|1.5|válido|POLYGON ((0 0,10 0,10 10,0 10,0 0),(2 2,4 2,4 4,2 4,2 2))",
                "3|8|4|3|válido|POLYGON ((2 2,4 2,4 4,2 4,2 2))"}));
    EXPECT_EQ(Lee(*datos, "subparcelas", {"rotulo", "letra", "parcela"}),
              (Lineas{"-ñ|ñ|7|POLYGON ((0 0,10 0,10 10,0 10,0 0))"}));
    const Lineas poligonos = Lee(*datos, "poligonos", {"rotulo", "codigo", "area_registro"});
    ASSERT_EQ(poligonos.size(), 1U);
    EXPECT_TRUE(poligonos[0].starts_with("3|125101|100|POLYGON (("));
    EXPECT_EQ(Lee(*datos, "hojas", {"hoja"}).size(), 1U);
    EXPECT_EQ(Lee(*datos, "lineas", {}).size(), 3U) << "the island is one line for two parcels";
}

TEST_F(Driver, RefusesByNameWhatItCantDrawAndWritesNothing)
{
    const struct {
        const char* motivo;
        const char* wkt;
        const char* frase;
    } casos[] = {
        {"a bow tie", "POLYGON ((0 0,10 10,10 0,0 10,0 0))",
         "la parcela 7 del polígono 003 (elemento 1): su contorno no es válido"},
        {"no surface", "LINESTRING (0 0,1 1)", "la parcela 7 del polígono 003 (elemento 1): no es"},
        {"nothing", nullptr, "no tiene contorno"},
        {"too far", "POLYGON ((0 0,30000000 0,0 10,0 0))", "no caben"},
        {"an arc", "CURVEPOLYGON (CIRCULARSTRING (0 0,5 5,10 0,5 -5,0 0))", "TOLERANCIA_ARCOS"},
        {"nothing left", "POLYGON ((0 0,0.001 0,0 0.001,0 0))", "se queda en nada"},
        {"two pieces", "MULTIPOLYGON (((0 0,9 0,9 9,0 9,0 0)),((20 0,22 0,22 2,20 2,20 0)))",
         "la parcela 7 del polígono 003 está en 2 recintos: la vuelta toma el último, de 4.00 m2, "
         "y pierde 81.00 m2"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        dicho.clear();
        {
            const GDALDatasetUniquePtr datos = Crea();
            OGRLayer* capa =
                Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
            Pon(*capa, {{"poligono", "3"}, {"parcela", "7"}}, caso.wkt);
            Pon(*capa, {{"poligono", "4"}, {"parcela", "1"}}, kCuadro);
        }
        EXPECT_NE(dicho.find(caso.frase), std::string::npos) << dicho;
        EXPECT_NE(dicho.find("fallo: "), std::string::npos);
        EXPECT_EQ(carpeta.Cuantos(), 0);
    }
}

TEST_F(Driver, RefusesACodeThatNoDrawingCouldTellTheLengthOf)
{
    {
        const GDALDatasetUniquePtr datos = Crea();
        OGRLayer* capa =
            Capa(*datos, "parcelas",
                 {{"poligono", OFTInteger}, {"parcela", OFTInteger}, {"codigo", OFTString}});
        Pon(*capa, {{"poligono", "3"}, {"parcela", "7"}, {"codigo", std::string(65536, '1')}},
            kCuadro);
    }
    EXPECT_NE(dicho.find("el código es demasiado largo"), std::string::npos) << dicho;
    EXPECT_EQ(carpeta.Cuantos(), 0);
}

TEST_F(Driver, GoesOnWhereAnOptionSaysSo)
{
    const struct {
        const char* motivo;
        const char* wkt;
        const char* opcion;
        const char* frase;
        std::size_t parcelas;
    } casos[] = {
        {"without the bow tie", "POLYGON ((0 0,10 10,10 0,0 10,0 0))", "INVALIDOS=SI",
         "aviso: Se deja fuera la parcela 7 del polígono 003 (elemento 1): ", 1},
        {"without what rounding takes", "POLYGON ((0 0,0.001 0,0 0.001,0 0))", "INVALIDOS=SI",
         "aviso: Se deja fuera la parcela 7 del polígono 003 (elemento 1): ", 1},
        {"with both pieces", "MULTIPOLYGON (((0 0,9 0,9 9,0 9,0 0)),((20 0,22 0,22 2,20 2,20 0)))",
         "PIEZAS=SI", "aviso: la parcela 7 del polígono 003 está en 2 recintos", 3},
        {"without arcs that aren't there", "CURVEPOLYGON ((0 0,9 0,9 9,0 0))", "ORTOS=ortos", "",
         2},
        {"with chords", "CURVEPOLYGON (CIRCULARSTRING (0 0,5 5,10 0,5 -5,0 0))",
         "TOLERANCIA_ARCOS=0.01", "", 2},
        {"without a hole", "POLYGON ((0 0,10 0,10 10,0 0),(5 2,5.001 2,5 2.001,5 2))",
         "ORTOS=ortos", "aviso: 1 agujeros que desaparecen", 2},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        dicho.clear();
        {
            const GDALDatasetUniquePtr datos = Crea({"GER=45", "MUN=127", caso.opcion});
            OGRLayer* capa =
                Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
            EXPECT_TRUE(Pon(*capa, {{"poligono", "3"}, {"parcela", "7"}}, caso.wkt));
            EXPECT_TRUE(Pon(*capa, {{"poligono", "3"}, {"parcela", "1"}}, kCuadro));
        }
        EXPECT_EQ(dicho.find("fallo: "), std::string::npos) << dicho;
        EXPECT_NE(dicho.find(caso.frase), std::string::npos) << dicho;
        const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
        EXPECT_EQ(Lee(*datos, "parcelas", {}).size(), caso.parcelas);
    }
}

TEST_F(Driver, TellsOverlapsAndDrawsTheOutlinesAsTheyAre)
{
    const struct {
        const char* motivo;
        const char* una;
        const char* otra;
        const char* frase;
        const char* areas;
    } casos[] = {
        {"by a centimetre", "POLYGON ((0 0,10 0,10.03 7.01,10 10,0 10,0 0))",
         "POLYGON ((10 0,20 0,20 10,10.01 10,10 0))",
         "aviso: 1 solapes de parcelas en el polígono 003: 0.10 m2 en total\n", "100.15 99.95 "},
        {"by more than a square metre", "POLYGON ((10 0,20 0,20 10,10 10,10 0))",
         "POLYGON ((15 5,25 5,25 9,15 9,15 5))",
         "aviso: se solapan la parcela 7 y la parcela 8 del polígono 003: 20.00 m2 en 17.50 7.00\n"
         "aviso: 1 solapes de parcelas en el polígono 003: 20.00 m2 en total\n",
         "100.00 40.00 "},
        {"in two places", "POLYGON ((0 0,10 0,10 10,0 10,0 0))",
         "POLYGON ((8 -1,30 -1,30 20,6 20,6 7,20 7,20 3,8 3,8 -1))",
         "aviso: se solapan la parcela 7 y la parcela 8 del polígono 003: 18.00 m2 en 8.00 8.50\n"
         "aviso: 1 solapes de parcelas en el polígono 003: 18.00 m2 en total\n",
         "100.00 440.00 "},
        {"an island isn't one", "POLYGON ((0 0,10 0,10 10,0 10,0 0),(2 2,4 2,4 4,2 4,2 2))",
         "POLYGON ((2 2,4 2,4 4,2 4,2 2))", "", "96.00 4.00 "},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        dicho.clear();
        {
            const GDALDatasetUniquePtr datos = Crea();
            OGRLayer* capa =
                Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
            EXPECT_TRUE(Pon(*capa, {{"poligono", "3"}, {"parcela", "7"}}, caso.una));
            EXPECT_TRUE(Pon(*capa, {{"poligono", "3"}, {"parcela", "8"}}, caso.otra));
        }
        EXPECT_EQ(dicho, caso.frase);
        const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
        ASSERT_NE(datos, nullptr);
        std::string areas;
        for (const auto& elemento : *datos->GetLayerByName("parcelas"))
            areas += CPLSPrintf("%.2f ", elemento->GetFieldAsDouble("area_registro"));
        EXPECT_EQ(areas, caso.areas);
        EXPECT_EQ(Lee(*datos, "poligonos", {}).size(), 1U);
    }
}

TEST_F(Driver, RefusesWhatNobodyCouldMeanByALayerOrAMunicipality)
{
    {
        const GDALDatasetUniquePtr datos = Crea();
        EXPECT_EQ(datos->CreateLayer("caminos", nullptr, wkbPolygon), nullptr);
        EXPECT_NE(dicho.find("De la capa caminos no se hace un dibujo"), std::string::npos);
        OGRSpatialReference grados;
        grados.SetWellKnownGeogCS("WGS84");
        EXPECT_EQ(datos->CreateLayer("parcelas", &grados, wkbPolygon), nullptr);
        EXPECT_NE(dicho.find("está en grados"), std::string::npos);
    }
    {
        const GDALDatasetUniquePtr datos = Crea({"GER=45"});
        OGRLayer* capa =
            Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
        EXPECT_TRUE(Pon(*capa, {{"poligono", "3"}, {"parcela", "7"}}, kCuadro));
    }
    EXPECT_NE(dicho.find("Falta el municipio"), std::string::npos);
    EXPECT_EQ(carpeta.Cuantos(), 0);
}

TEST_F(Driver, LeavesOldDrawingsAloneWhereItCantWriteAll)
{
    carpeta.Pon("003.PAR", "viejo");
    std::filesystem::create_directory(carpeta.Ruta() / "003.SUB"); // no file can stand there
    {
        const GDALDatasetUniquePtr datos = Crea();
        OGRLayer* capa =
            Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
        EXPECT_TRUE(Pon(*capa, {{"poligono", "3"}, {"parcela", "7"}}, kCuadro));
    }
    EXPECT_NE(dicho.find("fallo: "), std::string::npos);
    EXPECT_EQ(carpeta.Lee("003.PAR"), "viejo");
    EXPECT_EQ(carpeta.Cuantos(), 2);
}

TEST_F(Driver, LetsNoExceptionIntoGdal)
{
    const struct {
        std::function<void()> lanza;
        const char* frase;
    } casos[] = {
        {[] { throw std::out_of_range("indice"); }, "fallo: Fallo del programa: indice\n"},
        {[] { throw std::bad_alloc(); }, "fallo: No hay memoria para seguir\n"},
        {[] { throw CFileException("a", std::make_error_code(std::errc::io_error), true); },
         "fallo: Imposible leer el archivo a: Error de entrada/salida\n"},
    };
    for (const auto& caso : casos) {
        CCapa capa("c", wkbPoint, nullptr, {}, [&] {
            caso.lanza();
            return CCapa::CFuente{};
        });
        const std::pair<const char*, std::function<bool()>> preguntas[] = {
            {"next", [&] { return capa.GetNextFeature() == nullptr; }},
            {"by id", [&] { return capa.GetFeature(1) == nullptr; }},
            {"go to", [&] { return capa.SetNextByIndex(0) == OGRERR_FAILURE; }},
            {"count", [&] { return capa.GetFeatureCount(TRUE) == -1; }},
        };
        for (const auto& [motivo, falla] : preguntas) {
            dicho.clear();
            EXPECT_TRUE(falla()) << motivo;
            EXPECT_EQ(dicho, caso.frase) << motivo;
        }
    }
}

TEST_F(Driver, TellsEachCallOfTheSystemThatFailsAndGoesOnLiving)
{
    CDibujoPrueba dibujo(carpeta);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 100, 100), {dibujo.Cuadrado(0, 0, 10)}}};
    dibujo.Graba();
    carpeta.Pon("lista.txt", "TREN 045127\r\nP1\r\n");
    carpeta.Pon("Parcelas.txt", "45\t127\t0\t1\t7\t555\t0\t0\t12\tPR\t100\tX\t1\t2\t3\tC\r\n");
    carpeta.Pon("045127.ERR", "E111: La parcela    1      7 en base\r\n");
    const auto lee = [&] {
        Lineas todas;
        const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
        for (int i = 0; datos && i < datos->GetLayerCount(); ++i)
            for (const auto& elemento : *datos->GetLayer(i))
                for (int campo = 0; campo < elemento->GetFieldCount(); ++campo)
                    todas.push_back(elemento->GetFieldAsString(campo));
        return todas;
    };
    const auto escribe = [&] {
        {
            const GDALDatasetUniquePtr datos = Crea();
            OGRLayer* capa =
                Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
            Pon(*capa, {{"poligono", "3"}, {"parcela", "7"}}, kCuadro);
        }
        Lineas todas;
        for (const char* nombre : {"003.BIN", "003.PAR", "003.SUB", "003.POL", "lista.txt"})
            todas.push_back(carpeta.Lee(nombre));
        return todas;
    };
    const auto prueba = [&](const std::function<Lineas()>& hace, const Lineas& antes) {
        Plan() = {};
        const Lineas limpias = hace();
        const long cuantas = Plan().llamadas;
        EXPECT_GT(cuantas, 10);
        EXPECT_EQ(dicho, "");
        for (long en = 1; en <= cuantas && !HasFailure(); ++en) {
            SCOPED_TRACE(testing::Message() << "call " << en << " of " << cuantas);
            for (std::size_t i = 0; i < antes.size(); ++i)
                std::filesystem::remove(carpeta.Ruta() / antes[i]);
            dicho.clear();
            Plan() = {CPlanDeFallos::Que::FallaLlamada, en};
            Plan().error = EIO;
            const Lineas lineas = hace();
            Plan() = {};
            EXPECT_TRUE(lineas == limpias || dicho.find("fallo: ") != std::string::npos);
        }
    };
    prueba(lee, {});
    prueba(escribe, {"003.BIN", "003.PAR", "003.SUB", "003.POL"});
}
