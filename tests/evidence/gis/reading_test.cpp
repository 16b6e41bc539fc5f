#include <chrono>
#include <memory>

#include "evidence/gis/reading/last_used.h"
#include "tests/evidence/gis/driver_in_tests.h"

namespace {

class Reading : public CPruebaDriver {};

/// The features that a window shows.
int EnVentana(OGRLayer& capa, double x, double y, double lado)
{
    capa.SetSpatialFilterRect(x, y, x + lado, y + lado);
    int cuantos = 0;
    for (const auto& elemento : capa)
        cuantos += elemento ? 1 : 0;
    return cuantos;
}

} // namespace

TEST_F(Reading, ReadsADrawingWhenAFeatureOfItIsAskedFor)
{
    {
        const GDALDatasetUniquePtr datos = Crea();
        OGRLayer* capa =
            Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
        for (int i = 1; i <= 40; ++i)
            Pon(*capa, {{"poligono", std::to_string(i)}, {"parcela", "7"}},
                CPLSPrintf("POLYGON ((%d 0,%d 0,%d 10,%d 0))", i * 20, i * 20 + 10, i * 20,
                           i * 20));
    }
    carpeta.Pon("045127.ERR", "E111: La parcela    5      7 en base de datos no tiene "
                              "correspondencia en gr\xE1"
                              "fico\r\n");
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
    ASSERT_NE(datos, nullptr);
    Plan() = {};
    EXPECT_EQ(datos->GetLayerByName("mensajes")->GetFeatureCount(), 1);
    EXPECT_LT(Plan().llamadas, 10) << "the log alone";
    EXPECT_EQ(EnVentana(*datos->GetLayerByName("mensajes"), 99, -1, 12), 1);
    EXPECT_LT(Plan().llamadas, 60) << "and the polygon that it names";
    for (const char* nombre : {"parcelas", "poligonos", "rotulos", "lineas"}) {
        SCOPED_TRACE(nombre);
        OGRLayer& capa = *datos->GetLayerByName(nombre);
        OGREnvelope caja;
        EXPECT_EQ(capa.GetExtent(&caja), OGRERR_NONE);
        EXPECT_GT(caja.MaxX, 800);
        Plan() = {};
        EXPECT_GE(capa.GetFeatureCount(), 40);
        EXPECT_EQ(Plan().llamadas, 0) << "what was looked at is kept";
        EXPECT_GT(EnVentana(capa, 99, -1, 12), 0) << "polygon 5";
        EXPECT_GT(Plan().llamadas, 0);
        Plan() = {};
        EXPECT_GT(EnVentana(capa, 98, -1, 12), 0);
        EXPECT_EQ(Plan().llamadas, 0) << "the last ones are kept";
        EXPECT_GT(EnVentana(capa, 119, -1, 12), 0) << "polygon 6";
        EXPECT_LT(Plan().llamadas, 40) << "and it alone";
    }
    OGRLayer& parcelas = *datos->GetLayerByName("parcelas");
    parcelas.SetSpatialFilter(nullptr);
    std::filesystem::remove(carpeta.Ruta() / "009.PAR");
    EXPECT_EQ(std::unique_ptr<OGRFeature>(parcelas.GetFeature(9)), nullptr);
    const std::string aviso = "aviso: La capa parcelas ha cambiado desde que se abrió";
    EXPECT_TRUE(Dice(aviso));
    const std::unique_ptr<OGRFeature> decima(parcelas.GetFeature(10));
    ASSERT_NE(decima, nullptr);
    EXPECT_EQ(decima->GetFieldAsInteger("poligono"), 10) << "numbers stay as they were";
}

TEST_F(Reading, ReadsADrawingOnceThatTheListNamesTwice)
{
    Dibuja({{"1", "7", kCuadro}});
    const std::string lista = carpeta.Lee("lista.txt");
    const auto ultima = lista.rfind('\n', lista.size() - 2) + 1;
    carpeta.Pon("lista.txt", lista + "\r\n" + lista.substr(ultima));
    dicho.clear();
    const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
    ASSERT_NE(datos, nullptr);
    EXPECT_EQ(datos->GetLayerByName("parcelas")->GetFeatureCount(), 1);
    EXPECT_TRUE(Dice("nombra otra vez polígonos que ya tiene, 1: se leen una vez"));
}

TEST_F(Reading, BelievesNoExtentThatCantBeTrue)
{
    const auto escribe = [&] {
        Dibuja({{"3", "7", kCuadro}}, {"GER=45", "MUN=127", "SUSTITUYE=SI"});
    };
    using CPunto = vexageo::CPunto<int>;
    const auto veinte = std::chrono::minutes(20);
    const struct {
        const char* motivo;
        CPunto minimo;
        CPunto maximo;
        bool dibujoNuevo;
        double lejos; ///< a window there shows what a record that is believed says
    } casos[] = {
        {"true", {0, 0}, {1000, 1000}, false, 5},
        {"none", {}, {}, false, 5},
        {"turned round", {1000, 1000}, {0, 0}, false, 5},
        {"less than the surface", {0, 0}, {1000, 800}, false, 9},
        {"without the label", {5000, 5000}, {9000, 9000}, false, 5},
        {"all there is", {-2147483647, -2147483647}, {2147483647, 2147483647}, false, 5},
        {"of an older drawing", {0, 0}, {1000, 1001}, true, 5},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        escribe();
        vexageo::CPoligonoTopologico registro;
        CFile par;
        ASSERT_TRUE(par.Open(carpeta.En("003.PAR"), CFile::modeRead) && registro.Read(&par));
        registro.Maximas().Minimo = caso.minimo;
        registro.Maximas().Maximo = caso.maximo;
        ASSERT_TRUE(par.Open(carpeta.En("003.PAR"), CFile::modeCreate | CFile::modeWrite));
        registro.Write(&par);
        par.Close();
        if (caso.dibujoNuevo)
            std::filesystem::last_write_time(
                carpeta.Ruta() / "003.BIN",
                std::filesystem::last_write_time(carpeta.Ruta() / "003.PAR") + veinte);
        const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
        OGRLayer& capa = *datos->GetLayerByName("parcelas");
        OGREnvelope caja;
        EXPECT_EQ(capa.GetExtent(&caja), OGRERR_NONE);
        EXPECT_EQ(caja.MaxX, 10);
        EXPECT_EQ(caja.MaxY, 10);
        EXPECT_EQ(EnVentana(capa, caso.lejos, caso.lejos, 1), 1);
    }
}

TEST(LastUsed, KeepsTheLastOnesOfWhatWouldBeTooMuch)
{
    struct CParte {
        std::size_t Cuanto() const { return cuanto; }
        std::size_t cuanto;
    };
    CUltimos<int, CParte> ultimos;
    std::string leidas;
    for (const auto& [clave, cuanto] :
         {std::pair(1, 6000), std::pair(2, 6000), std::pair(1, 6000), std::pair(3, 6000),
          std::pair(1, 6000), std::pair(2, 6000), std::pair(4, 90000), std::pair(4, 90000),
          std::pair(1, 6000)})
        EXPECT_EQ(ultimos
                      .Dame(clave,
                            [&, cuanto = cuanto, clave = clave] {
                                leidas += std::to_string(clave);
                                return CParte{static_cast<std::size_t>(cuanto)};
                            })
                      .cuanto,
                  static_cast<std::size_t>(cuanto));
    EXPECT_EQ(leidas, "123241") << "2 went for 3; 4, too much alone, is kept until another comes";
}
