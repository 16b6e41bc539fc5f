#include "tests/evidence/gis/driver_in_tests.h"

#include <random>
#include <stdexcept>

#include "evidence/gis/reading/layer.h"
#include "platform/ansi.h"

namespace {

class Driver : public CPruebaDriver {
protected:
    /// Puts files into todo.zip and gives their folder in it, as GDAL calls that.
    std::string Archiva(const std::string& lugar, const std::vector<const char*>& ficheros)
    {
        const std::string dentro =
            std::string("/vsizip/") + carpeta.En("todo.zip").GetString() + "/" + lugar;
        for (const char* fichero : ficheros)
            EXPECT_EQ(CPLCopyFile((dentro + fichero).c_str(), carpeta.En(fichero).GetString()), 0);
        return dentro;
    }
};

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

TEST_F(Driver, TellsWhichFilesAreMissingOrDamaged)
{
    PonUnaParcela();
    carpeta.Pon("lista.txt", "TREN 045127\r\nP1\r\nP2\r\n");
    std::filesystem::remove(carpeta.Ruta() / "1.SUB");
    const std::string par = carpeta.Lee("1.PAR");
    carpeta.Pon("1.PAR", par + "VPOL");
    carpeta.Pon("1.BIN", carpeta.Lee("1.BIN") + "V");
    carpeta.Pon("hojas.top", par);
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
    ASSERT_NE(datos, nullptr);
    for (int vez = 0; vez < 2; ++vez) // once
        for (const char* capa : {"parcelas", "subparcelas", "hojas", "rotulos"})
            datos->GetLayerByName(capa)->GetFeatureCount();
    std::string esperado;
    for (const auto& [antes, fichero, despues] :
         {std::tuple("", "1.PAR", " está dañado desde el byte 104: lo que sigue no se lee"),
          std::tuple("Falta ", "2.BIN", ", y sin él no se lee nada del polígono"),
          std::tuple("Falta ", "1.SUB", ""),
          std::tuple("Falta ", "hojas.BIN", ", y sin él no se lee ninguna hoja"),
          std::tuple("", "1.BIN", " está dañado: no se leen todos sus rótulos y líneas")})
        esperado +=
            std::string("aviso: ") + antes + carpeta.En(fichero).GetString() + despues + "\n";
    EXPECT_EQ(dicho, esperado);
}

TEST_F(Driver, TellsADrawingThatLacksWhatItsOutlinesAreMadeOf)
{
    for (const bool entero : {true, false}) {
        PonUnaParcela();
        if (!entero) // its last entity is the square
            carpeta.Pon("1.BIN", carpeta.Lee("1.BIN").substr(0, carpeta.Lee("1.BIN").size() - 1));
        dicho.clear();
        {
            const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
            EXPECT_EQ(Lee(*datos, "parcelas", {"parcela"}).size(), 1U);
        }
        const std::string aviso = std::string("aviso: ") + carpeta.En("1.BIN").GetString() +
                                  " está dañado: no se leen todos sus rótulos y líneas\n";
        EXPECT_EQ(dicho, entero ? "" : aviso);
    }
}

TEST_F(Driver, RefusesAnOptionThatNamesNothing)
{
    CDibujoPrueba(carpeta).Graba();
    carpeta.Pon("lista.txt", "TREN 045127\r\nP1\r\n");
    carpeta.Pon("hojas.TOP", "");
    for (const auto& [opcion, nombre] :
         {std::pair("TABLAS", ""), std::pair("TABLAS", "otras"), std::pair("ORTOS", "hojas.TOP"),
          std::pair("REGISTRO", "otro.ERR"), std::pair("SRS", "EPSG:0")}) {
        const std::string dada =
            std::string(opcion) + "=" +
            (opcion == std::string("SRS") ? nombre : carpeta.En(nombre).GetString());
        dicho.clear();
        EXPECT_EQ(Abre(carpeta.En("lista.txt"), {dada.c_str()}), nullptr) << dada;
        EXPECT_TRUE(Dice("fallo: ")) << dada;
    }
    carpeta.Pon("hojas.BIN", "");
    EXPECT_NE(Abre(carpeta.En("lista.txt"),
                   {("ORTOS=" + std::string(carpeta.En("hojas.TOP").GetString())).c_str()}),
              nullptr);
}

TEST_F(Driver, FindsTheSheetsAndNamesAllItsFiles)
{
    CDibujoPrueba dibujo(carpeta);
    const int marco = dibujo.Cuadrado(0, 0, 10);
    dibujo.par = {{kParcela, 100, dibujo.Rotulo("126001", "0629-1-1", 100, 100), {marco}}};
    dibujo.Graba();
    carpeta.Pon("lista.txt", "TREN 045127\r\nP1\r\n");
    const auto copia = [&](const char* base) {
        for (const auto& [de, a] : {std::pair("1.BIN", ".BIN"), std::pair("1.PAR", ".TOP")})
            carpeta.Pon(std::string(base) + a, carpeta.Lee(de));
    };
    const auto hojas = [&] {
        return Lee(*Abre(carpeta.En("lista.txt")), "hojas", {"hoja"}).size();
    };
    EXPECT_EQ(hojas(), 0U);
    copia("fotos");
    EXPECT_EQ(hojas(), 1U) << "the only one";
    const std::string porSuBin = std::string("ORTOS=") + carpeta.En("fotos.BIN").GetString();
    const GDALDatasetUniquePtr nombradas = Abre(carpeta.En("lista.txt"), {porSuBin.c_str()});
    EXPECT_TRUE(Lee(*nombradas, "lineas", {"linde"}).at(1).starts_with("1|")) << "a sheet's edge";
    carpeta.Pon("045127.ERR", "");
    carpeta.Pon("Parajes.txt", "");
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
    const CPLStringList ficheros(datos->GetFileList(), TRUE);
    std::string nombres;
    for (int i = 0; i < ficheros.size(); ++i)
        nombres += carpeta.SinRuta(ficheros[i]) + " ";
    EXPECT_EQ(nombres,
              "lista.txt 1.BIN 1.PAR 1.SUB 1.POL fotos.BIN fotos.TOP Parajes.txt 045127.ERR ");
    copia("otras");
    EXPECT_EQ(dicho, "");
    EXPECT_EQ(hojas(), 0U) << "nobody knows which";
    EXPECT_TRUE(dicho.starts_with("aviso: Hay varios .TOP y ninguno es ortos.TOP")) << dicho;
    dicho.clear();
    copia("ortos");
    EXPECT_EQ(hojas(), 1U) << "the usual one";
    EXPECT_EQ(dicho, "");
}

TEST_F(Driver, ReadsAMunicipalityInsideAnArchive)
{
    PonUnaParcela();
    const std::string dentro =
        Archiva("pueblo/", {"lista.txt", "1.BIN", "1.PAR", "1.SUB", "1.POL"});
    std::string copia;
    {
        const GDALDatasetUniquePtr datos = Abre((dentro + "lista.txt").c_str());
        ASSERT_NE(datos, nullptr) << dicho;
        EXPECT_EQ(Lee(*datos, "parcelas", {"parcela"}),
                  (Lineas{"7|POLYGON ((0 0,10 0,10 10,0 10,0 0))"}));
        const CPLStringList ficheros(datos->GetFileList(), TRUE);
        EXPECT_EQ(ficheros[0], dentro + "lista.txt");
        EXPECT_EQ(ficheros[1], dentro + "1.BIN");
    }
    EXPECT_EQ(Abre((dentro + "nada.txt").c_str()), nullptr);
    EXPECT_EQ(dicho, "");
    CPLSetConfigOption("CPL_TMPDIR", "");
    {
        const CEnCarpeta ahi(carpeta.Ruta());
        const int antes = carpeta.Cuantos();
        const GDALDatasetUniquePtr datos = Abre((dentro + "lista.txt").c_str());
        EXPECT_NE(datos, nullptr) << dicho;
        EXPECT_EQ(carpeta.Cuantos(), antes) << "a copy in the user's folder";
    }
    CPLSetConfigOption("CPL_TMPDIR", nullptr);
}

TEST_F(Driver, ReadsNoPartOfADamagedArchiveAsTheWhole)
{
    PonUnaParcela();
    std::string tabla = "Ger\r\n"; // longer than what is copied at a time
    for (unsigned i = 0; i < 4000; ++i)
        tabla += "045\t127\t" + std::to_string(i * 2654435761U) + "\r\n";
    carpeta.Pon("Parcelas.txt", tabla);
    Archiva("", {"lista.txt", "1.BIN", "1.PAR", "Parcelas.txt"});
    const std::string bytes = carpeta.Lee("todo.zip");
    int rechazados = 0;
    for (std::size_t i = 0; i < bytes.size() && !HasFailure(); i += 1 + i / 50) {
        SCOPED_TRACE(testing::Message() << "byte " << i << " of " << bytes.size());
        std::string otros = bytes;
        otros[i] = static_cast<char>(otros[i] ^ 0xFF);
        const std::string suyo = std::to_string(i) + ".zip"; // GDAL keeps what it saw of each
        carpeta.Pon(suyo, otros);
        dicho.clear();
        const GDALDatasetUniquePtr datos =
            Abre(("/vsizip/" + std::string(carpeta.En(suyo)) + "/lista.txt").c_str());
        std::filesystem::remove(carpeta.Ruta() / suyo);
        rechazados += Dice(" no se puede copiar ") ? 1 : 0;
        if (datos == nullptr)
            continue;
        const Lineas leidas = Lee(*datos, "parcelas", {"parcela"});
        EXPECT_FALSE(Dice("fallo: "));
        EXPECT_TRUE(leidas == (Lineas{"7|POLYGON ((0 0,10 0,10 10,0 10,0 0))"}) || !dicho.empty());
    }
    EXPECT_GT(rechazados, 100);
}

TEST_F(Driver, PutsMessagesWithoutAPlaceIntoTheirPolygon)
{
    PonUnaParcela();
    const std::string par = carpeta.Lee("1.PAR");
    std::string registro;
    for (const char* donde : {"1      7", "1      8", "2      7"})
        registro += std::string("E111: La parcela    ") + donde +
                    " en base de datos no tiene correspondencia en gr\xE1"
                    "fico\r\n";
    carpeta.Pon("045127.ERR", registro);
    const Lineas esperadas = {"7|parcela|MULTIPOLYGON (((0 0,10 0,10 10,0 10,0 0)))",
                              "8|polígono|MULTIPOLYGON (((0 0,10 0,10 10,0 10,0 0)))", "7|-|"};
    EXPECT_EQ(Lee(*Abre(carpeta.En("lista.txt")), "mensajes", {"parcela", "lugar"}), esperadas)
        << "the parcels, where the polygon has no outline";
    carpeta.Pon("1.POL", par);
    carpeta.Pon("1.PAR", "");
    EXPECT_EQ(Lee(*Abre(carpeta.En("lista.txt")), "mensajes", {"parcela", "lugar"})[1],
              esperadas[1]);
}

TEST_F(Driver, ShowsInAWindowWhatLiesThere)
{
    CDibujoPrueba dibujo(carpeta);
    for (int i = 0; i < 300; ++i) { // rows of ten
        const int marco = dibujo.Cuadrado(i % 10 * 2000, i / 10 * 2000, 10);
        dibujo.par.push_back(
            {kParcela, 100, dibujo.Parcela(std::to_string(i).c_str(), 1, 1), {marco}});
    }
    dibujo.par.push_back({kParcela, 0, 0, {}}); // an outline without points
    dibujo.Graba();
    carpeta.Pon("lista.txt", "TREN 045127\r\nP1\r\n");
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
    OGRLayer& capa = *datos->GetLayerByName("parcelas");
    OGREnvelope caja;
    ASSERT_EQ(capa.GetExtent(&caja), OGRERR_NONE);
    EXPECT_EQ(caja.MaxX, 190);
    EXPECT_EQ(caja.MaxY, 590);
    EXPECT_NE(capa.TestCapability(OLCFastSpatialFilter), 0);
    const double ventanas[][4] = {{0, 0, 5, 5},
                                  {11, 11, 19, 19},
                                  {-9, -9, 999, 999},
                                  {40, 400, 70, 555},
                                  {190, 590, 191, 591}};
    for (const auto& ventana : ventanas) {
        std::vector<GIntBig> esperados;
        capa.SetSpatialFilter(nullptr);
        for (const auto& elemento : capa) {
            OGREnvelope suya;
            const OGRGeometry* geometria = elemento->GetGeometryRef();
            if (geometria == nullptr)
                continue;
            geometria->getEnvelope(&suya);
            if (suya.MinX <= ventana[2] && suya.MaxX >= ventana[0] && suya.MinY <= ventana[3] &&
                suya.MaxY >= ventana[1])
                esperados.push_back(elemento->GetFID());
        }
        capa.SetSpatialFilterRect(ventana[0], ventana[1], ventana[2], ventana[3]);
        std::vector<GIntBig> vistos;
        for (const auto& elemento : capa)
            vistos.push_back(elemento->GetFID());
        EXPECT_EQ(vistos, esperados);
        EXPECT_EQ(capa.GetFeatureCount(), static_cast<GIntBig>(esperados.size()));
    }
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
        {"nothing left", "POLYGON ((400 0,400.001 0,400 0.001,400 0))", "se queda en nada"},
        {"degrees of which nothing says that they are",
         "POLYGON ((-3.7025 40.4171,-3.7021 40.4171,-3.7021 40.4174,-3.7025 40.4171))",
         "está en grados"},
        {"two pieces", "MULTIPOLYGON (((0 0,9 0,9 9,0 9,0 0)),((20 0,22 0,22 2,20 2,20 0)))",
         "la parcela 7 del polígono 003 está en 2 recintos: la vuelta toma el último, de 4.00 m2, "
         "y pierde 81.00 m2"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        dicho.clear();
        Dibuja({{"3", "7", caso.wkt}, {"4", "1", kCuadro}});
        EXPECT_TRUE(Dice(caso.frase));
        EXPECT_TRUE(Dice("fallo: "));
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
    EXPECT_TRUE(Dice("el código es demasiado largo"));
    EXPECT_EQ(carpeta.Cuantos(), 0);
}

TEST_F(Driver, RefusesOptionsThatSayNothing)
{
    for (const char* opcion : {"TOLERANCIA_ARCOS=0,05", "TOLERANCIA_ARCOS=nan",
                               "TOLERANCIA_ARCOS=inf", "TOLERANCIA_ARCOS=0", "TOLERANCIA_ARCOS=-1",
                               "TOLERANCIA_ARCOS=1 m", "PIEZAS=QUIZA", "ORTOS=../ortos"}) {
        SCOPED_TRACE(opcion);
        dicho.clear();
        EXPECT_EQ(Crea({"GER=45", "MUN=127", opcion}), nullptr);
        EXPECT_TRUE(Dice("fallo: La opción "));
    }
    const GDALDatasetUniquePtr datos = Crea();
    const char* const deCapa[] = {"SIMULA=SI", nullptr};
    EXPECT_EQ(datos->CreateLayer("parcelas", nullptr, wkbPolygon, const_cast<char**>(deCapa)),
              nullptr);
    EXPECT_TRUE(Dice("fallo: La opción SIMULA es del municipio"));
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
        EXPECT_TRUE(Dibuja({{"3", "7", caso.wkt}, {"3", "1", kCuadro}},
                           {"GER=45", "MUN=127", caso.opcion}));
        EXPECT_FALSE(Dice("fallo: "));
        EXPECT_TRUE(Dice(caso.frase));
        const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
        EXPECT_EQ(Lee(*datos, "parcelas", {}).size(), caso.parcelas);
    }
}

TEST_F(Driver, MakesNoListOfAMunicipalityThatIsNone)
{
    const struct {
        std::vector<const char*> opciones;
        const char* frase;
    } casos[] = {
        {{"MUN=127"}, "Las opciones GER y MUN van juntas"},
        {{"GER=45", "CABECERA=LISTA045127"}, "Las opciones GER y MUN van juntas"},
        {{"GER=45", "MUN=12a"}, "GER y MUN van de 0 a 999"},
        {{"GER=", "MUN=127"}, "GER y MUN van de 0 a 999"},
        {{"GER=45", "MUN=1000"}, "GER y MUN van de 0 a 999"},
        {{"CABECERA=VILLANUEVA"}, "CABECERA no es la primera línea de una lista: VILLANUEVA"},
        {{"CABECERA=LISTA045127\nP../x"}, "CABECERA no es la primera línea de una lista"},
        {{"ORTOS=ortos"}, "Falta el municipio: opciones GER y MUN"},
        {{"CABECERA=LISTA045127 Y MAS"}, nullptr},
    };
    for (const auto& [opciones, frase] : casos) {
        SCOPED_TRACE(opciones.back());
        dicho.clear();
        EXPECT_TRUE(Dibuja({{"3", "7", kCuadro}}, opciones));
        EXPECT_EQ(std::filesystem::exists(carpeta.Ruta() / "lista.txt"), frase == nullptr) << dicho;
        EXPECT_TRUE(frase == nullptr || Dice(frase)) << dicho;
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
        EXPECT_TRUE(Dibuja({{"3", "7", caso.una}, {"3", "8", caso.otra}}));
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

TEST_F(Driver, DrawsAnyOutlinesOnWholeHundredthsAsTheyAre)
{
    std::mt19937 azar(7);
    const auto hasta = [&](int n) { return static_cast<int>(azar() % static_cast<unsigned>(n)); };
    for (int vez = 0; vez < 60; ++vez) {
        SCOPED_TRACE(vez);
        const int lado = vez % 2 == 0 ? 30 : 3000; // hundredths: crowded, and not
        Lineas contornos;
        {
            const GDALDatasetUniquePtr datos = Crea();
            OGRLayer* capa =
                Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
            for (int i = 0; i < 12; ++i) { // triangles and boxes that cross, touch and repeat
                const int x = hasta(lado), y = hasta(lado), a = 1 + hasta(lado),
                          b = 1 + hasta(lado);
                std::string wkt;
                const auto punto = [&](int px, int py) {
                    wkt +=
                        CPLSPrintf("%s%.2f %.2f", wkt.empty() ? "" : ",", px / 100.0, py / 100.0);
                };
                punto(x, y);
                punto(x + a, y);
                punto(x + a, y + b);
                if (i % 3 == 0)
                    punto(x, y + b);
                punto(x, y);
                contornos.push_back("POLYGON ((" + wkt + "))");
                Pon(*capa, {{"poligono", "3"}, {"parcela", std::to_string(i + 1)}},
                    contornos.back().c_str());
            }
        }
        ASSERT_FALSE(Dice("fallo: "));
        const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
        std::size_t i = 0;
        for (const auto& elemento : *datos->GetLayerByName("parcelas")) {
            const std::unique_ptr<OGRGeometry> pedida = Geometria(contornos.at(i++).c_str());
            const OGRGeometry* leida = elemento->GetGeometryRef();
            EXPECT_TRUE(leida->IsValid());
            // In metres a point that lies on an edge lies a hair off it.
            const std::unique_ptr<OGRGeometry> resto(leida->SymDifference(pedida.get()));
            EXPECT_LT(OGR_G_Area(OGRGeometry::ToHandle(resto.get())), 1e-9);
            EXPECT_NEAR(elemento->GetFieldAsDouble("area_registro"),
                        pedida->toPolygon()->get_Area(), 1e-6);
        }
        EXPECT_EQ(i, contornos.size());
        dicho.clear();
    }
}

TEST_F(Driver, RefusesWhatNobodyCouldMeanByALayerOrAMunicipality)
{
    const struct {
        const char* capa;
        const char* srs;
        const char* frase; ///< null for a layer that is made
    } casos[] = {
        {"caminos", "EPSG:25830", "De la capa caminos no se hace un dibujo"},
        {"parcelas", "WGS84", "está en grados"},
        {"parcelas", "EPSG:2264", "está en US survey foot y no en metros"},
        {"parcelas", "EPSG:3857", "está en la proyección de Mercator"},
        {"parcelas", "EPSG:25830", nullptr},
    };
    {
        const GDALDatasetUniquePtr datos = Crea();
        for (const auto& [capa, srs, frase] : casos) {
            OGRSpatialReference referencia;
            ASSERT_EQ(referencia.SetFromUserInput(srs), OGRERR_NONE);
            const bool hecha = datos->CreateLayer(capa, &referencia, wkbPolygon) != nullptr;
            EXPECT_EQ(hecha, frase == nullptr) << srs;
            EXPECT_TRUE(frase == nullptr || Dice(frase)) << dicho;
        }
    }
    EXPECT_EQ(carpeta.Cuantos(), 0);
}

TEST_F(Driver, LeavesOldDrawingsAloneWhereItCantWriteAll)
{
    carpeta.Pon("003.PAR", "viejo");
    std::filesystem::create_directory(carpeta.Ruta() / "003.SUB"); // no file can stand there
    EXPECT_TRUE(Dibuja({{"3", "7", kCuadro}}, {"GER=45", "MUN=127", "SUSTITUYE=SI"}));
    EXPECT_TRUE(Dice("fallo: "));
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
        const auto lee = [&](std::size_t /*trozo*/) {
            caso.lanza();
            return CTrozo{};
        };
        CCapa capa("c", wkbPoint, nullptr, {}, {1, lee});
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
    PonUnaParcela();
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
        for (const char* nombre : {"003.BIN", "003.PAR", "003.SUB", "003.POL"})
            std::filesystem::remove(carpeta.Ruta() / nombre);
        Dibuja({{"3", "7", kCuadro}});
        Lineas todas;
        for (const char* nombre : {"003.BIN", "003.PAR", "003.SUB", "003.POL", "lista.txt"})
            todas.push_back(carpeta.Lee(nombre));
        return todas;
    };
    FallaCadaLlamada(lee);
    FallaCadaLlamada(escribe);
}
