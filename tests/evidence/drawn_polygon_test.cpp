#include "evidence/drawn_polygon.h"

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "tests/support/drawing_in_the_making.h"

namespace {

class DrawnPolygon : public testing::Test {
protected:
    CPoligonoDibujado Lee(const CHayParcela& hayParcela = {})
    {
        dibujo.Graba();
        return LeePoligonoDibujado(carpeta.En(""), "1", hayParcela);
    }

    CCarpetaPrueba carpeta;
    CDibujoPrueba dibujo{carpeta};
    const int marco = dibujo.Cuadrado(0, 0, 10);
};

} // namespace

TEST_F(DrawnPolygon, KeepsEveryOutlineAndTellsWhatTheWayBackMakesOfIt)
{
    dibujo.par = {
        {kParcela, 100, dibujo.Parcela("7", 500, 500), {marco}},
        {kParcela, 100, 0, {marco}, {1, 2}},
        {kParcela, 100, dibujo.Rotulo("125501", "7-a", 0, 0), {marco}},
        {kParcela, 100, dibujo.Rotulo("125201", "7", 0, 0, true), {marco}},
        {kParcela, 100, marco, {marco}},
        {3, 100, 0, {marco}},
        {kParcela, 100, 9999, {marco}},
        {kParcela, 100, dibujo.Parcela("8", 500, 500), {marco, 9999}},
    };
    const CPoligonoDibujado poligono = Lee();
    using enum EstadoRecinto;
    std::vector<EstadoRecinto> estados;
    for (const CRecintoDibujado& recinto : poligono.parcelas.recintos) {
        estados.push_back(recinto.estado);
        EXPECT_EQ(recinto.AreaContorno(), 100);
    }
    EXPECT_EQ(estados, (std::vector{Valido, SinRotulo, CodigoAjeno, Borrado, NoEsTexto, OtraClase,
                                    FueraDeFecha, NoSeLlega}));
    EXPECT_EQ(poligono.parcelas.recintos[1].punto, vexageo::CPunto<int>(1, 2));
    EXPECT_EQ(poligono.parcelas.recintos[7].tramosPerdidos, 1);
    EXPECT_EQ(poligono.parcelas.dañoEn, CTopologiaDibujada::kSinDaño);
}

TEST_F(DrawnPolygon, AddsIslandsUpAsTheWayBackDoes)
{
    const int hueco = dibujo.Cuadrado(200, 200, 2);
    dibujo.par = {{kIsla, -1, 0, {hueco}}, // behind nothing: by itself
                  {kParcela, 100, dibujo.Parcela("7", 100, 100), {marco}},
                  {kIsla, -4, 0, {hueco}},
                  {kIsla, 4, 0, {hueco}}}; // of the wrong sign
    const CPoligonoDibujado poligono = Lee();
    ASSERT_EQ(poligono.parcelas.recintos.size(), 2U);
    EXPECT_EQ(poligono.parcelas.recintos[0].estado, EstadoRecinto::OtraClase);
    const CRecintoDibujado& parcela = poligono.parcelas.recintos[1];
    ASSERT_EQ(parcela.islas.size(), 2U);
    EXPECT_FALSE(parcela.islas[0].enLista);
    EXPECT_EQ(parcela.areaRegistro, 100);
    EXPECT_EQ(parcela.AreaContorno(), 92);
}

TEST_F(DrawnPolygon, GivesSubparcelsTheSmallestParcelAndCountsPieces)
{
    const int fuera = dibujo.Cuadrado(0, 0, 20);
    const int dentro = dibujo.Cuadrado(500, 500, 5);
    dibujo.par = {
        {kParcela, 400, dibujo.Parcela("7", 100, 100), {fuera}},
        {kParcela, 25, dibujo.Parcela("8", 600, 600), {dentro}},
        {kParcela, 25, dibujo.Parcela("7", 9000, 9000), {dibujo.Cuadrado(8500, 8500, 9)}}};
    dibujo.sub = {{kParcela, 1, dibujo.Subparcela("x-a", 600, 600), {dentro}},
                  {kParcela, 1, dibujo.Subparcela("x-a", 100, 100), {fuera}},
                  {kParcela, 1, dibujo.Subparcela("a", 8600, 8600), {fuera}},
                  {kParcela, 1, dibujo.Subparcela("b", 7000, 100), {fuera}}};
    const CPoligonoDibujado todas = Lee();
    const auto parcelas = [](const CPoligonoDibujado& poligono) {
        std::vector<int> suyas;
        for (const CRecintoDibujado& recinto : poligono.subparcelas.recintos)
            suyas.push_back(recinto.parcela);
        return suyas;
    };
    EXPECT_EQ(parcelas(todas), (std::vector{8, 7, 7, -1}));
    const auto& recintos = todas.subparcelas.recintos;
    EXPECT_EQ(recintos[2].pieza, 2);
    EXPECT_EQ(recintos[1].piezas, 2);
    EXPECT_EQ(recintos[0].piezas, 1) << "of another parcel";
    EXPECT_EQ(todas.parcelas.recintos[2].pieza, 2);
    const CPoligonoDibujado sinLa8 = LeePoligonoDibujado(
        carpeta.En(""), "1", [](int polig, int parcela) { return polig == 1 && parcela != 8; });
    EXPECT_EQ(parcelas(sinLa8), (std::vector{7, 7, 7, -1}));
}

TEST_F(DrawnPolygon, TellsWhereATopologyIsDamagedAndWhatIsMissing)
{
    dibujo.par = {{kParcela, 1, 0, {}}};
    dibujo.Graba();
    const std::string entero = carpeta.Lee("1.PAR");
    carpeta.Pon("1.PAR", entero + "VPOL");
    std::filesystem::remove(std::filesystem::path(carpeta.Ruta() / "1.SUB"));
    const CPoligonoDibujado poligono = LeePoligonoDibujado(carpeta.En(""), "1");
    EXPECT_EQ(poligono.parcelas.dañoEn, entero.size());
    EXPECT_FALSE(poligono.subparcelas.hay);
    EXPECT_FALSE(LeePoligonoDibujado(carpeta.En(""), "2").hayDibujo);
}
