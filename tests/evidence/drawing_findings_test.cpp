#include "evidence/drawing_findings.h"

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "tests/support/drawing_in_the_making.h"

namespace {

using enum ClaseFalta;
using CClases = std::vector<ClaseFalta>;

class DrawingFindings : public testing::Test {
protected:
    const CPoligonoDibujado& Lee()
    {
        dibujo.Graba();
        poligono = LeePoligonoDibujado(carpeta.En(""), "1");
        return poligono;
    }
    CFaltasDeRecintos Parcelas() { return FaltasDe(Lee().parcelas, ClaseTopologia::Parcelas); }
    /// Of what was read.
    CFaltasDeRecintos Subparcelas() const
    {
        return FaltasDe(poligono.subparcelas, ClaseTopologia::Subparcelas);
    }

    CCarpetaPrueba carpeta;
    CDibujoPrueba dibujo{carpeta};
    const int marco = dibujo.Cuadrado(0, 0, 10);
    const int hueco = dibujo.Cuadrado(200, 200, 2);
    CPoligonoDibujado poligono;
};

CClases Clases(const std::vector<CFalta>& faltas)
{
    CClases clases;
    for (const CFalta& falta : faltas)
        clases.push_back(falta.clase);
    return clases;
}

std::string Utf8(const CString& texto)
{
    return ansi::AUtf8(texto);
}

} // namespace

TEST_F(DrawingFindings, FindsNothingInSoundOutlines)
{
    const int otro = dibujo.Cuadrado(600, 600, 2);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 50, 50), {marco}, {50, 50}},
                  {kIsla, -4, 0, {hueco}},
                  {kIsla, -4, 0, {otro}}};
    dibujo.sub = {{kParcela, 100, dibujo.Subparcela("7-a", 50, 50), {marco}, {50, 50}}};
    dibujo.pol = {{kParcela, 100, dibujo.Rotulo("cualquiera", "1", 9, 9), {marco}, {9, 9}}};
    Lee();
    for (const ClaseTopologia que : kTopologiasDePoligono) {
        const CFaltasDeRecintos faltas = FaltasDe(poligono.Topologia(que), que);
        ASSERT_EQ(faltas.size(), 1U);
        EXPECT_EQ(Utf8(TextoFaltas(faltas[0])), "");
    }
}

TEST_F(DrawingFindings, LooksAtTheBoundary)
{
    const int lazo = dibujo.Linea({{0, 0}, {1000, 1000}, {1000, 0}, {0, 1000}, {0, 0}});
    const int espiga =
        dibujo.Linea({{0, 0}, {1000, 0}, {1000, 1000}, {2000, 1000}, {0, 1000}, {0, 0}});
    const int abierto = dibujo.Linea({{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}});
    const int aguja = dibujo.Linea({{0, 0}, {1000, 0}});
    const int rotulo = dibujo.Parcela("7", 900, 500);
    const struct {
        std::vector<int> tramos;
        double area;
        CClases clases;
        const char* texto; ///< of the last fault
    } casos[] = {
        {{marco}, 100.5, {}, ""},
        {{marco},
         100.51,
         {AreaDistinta},
         "su contorno encierra 100.00 m2 y el registro dice 100.51"},
        {{lazo}, 0, {Cruza}, "su contorno se cruza a sí mismo en 5.00 5.00"},
        {{espiga}, 100, {Repasa}, "su contorno pasa dos veces por la misma línea en 10.00 10.00"},
        {{abierto}, 100, {NoCierra}, "su contorno no cierra: va de 0.00 0.00 a 0.00 10.00"},
        {{aguja}, 0, {NoEncierra}, "su contorno no encierra nada"},
        {{}, 0, {NoEncierra}, "su contorno no encierra nada"},
        {{marco, rotulo},
         100,
         {TramoPerdido},
         "1 de los tramos de su contorno no se leen en el dibujo: fuera de fecha"},
    };
    int numero = 0;
    for (const auto& caso : casos)
        dibujo.par.push_back({kParcela,
                              caso.area,
                              dibujo.Parcela(std::to_string(++numero), 900, 500),
                              caso.tramos,
                              {900, 500}});
    const CFaltasDeRecintos faltas = Parcelas();
    for (std::size_t i = 0; i < faltas.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(Clases(faltas[i]), casos[i].clases) << Utf8(TextoFaltas(faltas[i]));
        EXPECT_EQ(faltas[i].empty() ? "" : Utf8(faltas[i].back().texto), casos[i].texto);
    }
}

TEST_F(DrawingFindings, LooksAtTheIslands)
{
    // The same ring from another corner, the other way round.
    const int alReves = dibujo.Linea({{400, 400}, {400, 200}, {200, 200}, {200, 400}, {400, 400}});
    const int vecino = dibujo.Cuadrado(600, 200, 2);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 50, 50), {marco}, {50, 50}},
                  {kIsla, -4, 0, {hueco}},
                  {kIsla, -4, 0, {vecino}},
                  {kIsla, -4, 0, {alReves}},
                  {kParcela, 100, dibujo.Parcela("8", 50, 50), {marco}, {50, 50}},
                  {kIsla, 4, 0, {hueco}},
                  {kIsla, -5, 0, {vecino}}};
    const CFaltasDeRecintos faltas = Parcelas();
    ASSERT_EQ(faltas.size(), 2U);
    EXPECT_EQ(Utf8(TextoFaltas(faltas[0])),
              "isla 3: es la misma que la isla 1: cuenta dos veces, con -4.00 m2 ésta");
    EXPECT_EQ(Clases(faltas[1]), (CClases{AreaDistinta, IslaPositiva}));
    EXPECT_EQ(faltas[1][0].isla, 2);
    EXPECT_EQ(Utf8(faltas[1][1].texto),
              "isla 1: su superficie es positiva y se suma en vez de restarse: 4.00 m2");
}

TEST_F(DrawingFindings, LooksWhereTheLabelStands)
{
    const struct {
        vexageo::CPunto<int> rotulo;
        vexageo::CPunto<int> centroide;
        const char* texto;
    } casos[] = {
        {{100, 100}, {100, 100, 5}, ""},
        {{100, 100}, {100, 101}, "su rótulo está en 1.00 1.00 y el registro dice 1.00 1.01"},
        {{1001, 500}, {1001, 500}, "su rótulo cae fuera de su contorno"},
        {{1000, 500}, {1000, 500}, "su rótulo está en el borde"},
        {{300, 300}, {300, 300}, "su rótulo cae dentro de su isla 1"},
        {{200, 300}, {200, 300}, "su rótulo está en el borde de su isla 1"},
    };
    int numero = 0;
    for (const auto& caso : casos) {
        const CString texto = std::to_string(++numero);
        const int rotulo = dibujo.Parcela(texto, caso.rotulo.X, caso.rotulo.Y);
        dibujo.par.push_back({kParcela, 100, rotulo, {marco}, caso.centroide});
        dibujo.par.push_back({kIsla, -4, 0, {hueco}});
    }
    const CFaltasDeRecintos faltas = Parcelas();
    for (std::size_t i = 0; i < faltas.size(); ++i)
        EXPECT_EQ(Utf8(TextoFaltas(faltas[i])), casos[i].texto);
}

TEST_F(DrawingFindings, LooksAtTheLabel)
{
    const auto parcela = [&](int rotulo) {
        return CDibujoPrueba::CRegistro{kParcela, 100, rotulo, {marco}, {500, 500}};
    };
    dibujo.par = {parcela(dibujo.Parcela("x7", 500, 500)),
                  parcela(dibujo.Parcela("0", 500, 500)),
                  parcela(0),
                  parcela(dibujo.Rotulo("125501", "7-a", 500, 500)),
                  parcela(dibujo.Rotulo("125201", "7", 500, 500, true)),
                  parcela(marco),
                  {3, 100, 0, {marco}},
                  parcela(9999),
                  parcela(dibujo.Parcela("8", 500, 500))};
    const CFaltasDeRecintos faltas = Parcelas();
    const char* const textos[] = {
        "su rótulo, \"x7\", no empieza por un número",
        "su rótulo, \"0\", no empieza por un número",
        "no tiene rótulo: se pasa por alto",
        "el código de su rótulo, 125501, no es de una parcela",
        "su rótulo está borrado",
        "su rótulo no es un texto",
        "el registro no es un recinto ni una isla: su superficie se da a la parcela rotulada antes",
        "su rótulo no se lee en el dibujo: fuera de fecha",
        "no se llega a él: está tras un rótulo que no se lee",
    };
    ASSERT_EQ(faltas.size(), std::size(textos));
    for (std::size_t i = 0; i < faltas.size(); ++i)
        EXPECT_EQ(Utf8(faltas[i].at(0).texto), textos[i]);
}

TEST_F(DrawingFindings, TellsWhoseSurfaceTheIslandsOfAnUnlabelledOutlineTake)
{
    dibujo.par = {{kParcela, 100, 0, {marco}}, {kIsla, -4, 0, {hueco}}};
    dibujo.sub = dibujo.par;
    EXPECT_EQ(
        Utf8(TextoFaltas(Parcelas()[0])),
        "no tiene rótulo: se pasa por alto, y sus islas se restan de la parcela rotulada antes");
    EXPECT_EQ(Utf8(TextoFaltas(Subparcelas()[0])), "no tiene rótulo: se pasa por alto");
}

TEST_F(DrawingFindings, TellsWhatRepeatedNumbersAndLettersLose)
{
    const int grande = dibujo.Cuadrado(0, 0, 20);
    const int lejos = dibujo.Cuadrado(5000, 0, 10);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 5500, 500), {lejos}, {5500, 500}},
                  {kParcela, 400, dibujo.Parcela("7", 100, 100), {grande}, {100, 100}}};
    const int unos = dibujo.Cuadrado(0, 0, 5);
    const int otros = dibujo.Cuadrado(600, 600, 6);
    dibujo.sub = {{kParcela, 25, dibujo.Subparcela("7-a", 100, 100), {unos}, {100, 100}},
                  {kParcela, 36, dibujo.Subparcela("7-a", 700, 700), {otros}, {700, 700}},
                  {kParcela, 100, dibujo.Subparcela("7-", 5500, 500), {lejos}, {5500, 500}},
                  {kParcela, 100, dibujo.Subparcela("12", 5500, 500), {lejos}, {5500, 500}},
                  {kParcela, 100, dibujo.Subparcela("c", 9000, 9000), {lejos}, {9000, 9000}}};
    const CFaltasDeRecintos parcelas = Parcelas();
    EXPECT_EQ(Utf8(TextoFaltas(parcelas[0])),
              "la parcela 7 está en 2 recintos y éste no cuenta: se pierden sus 100.00 m2; cuenta "
              "el último, de 400.00 m2");
    EXPECT_EQ(Utf8(TextoFaltas(parcelas[1])),
              "la parcela 7 está en 2 recintos: cuenta éste, el último, de 400.00 m2, y se pierden "
              "100.00 m2 de los demás");
    const CFaltasDeRecintos subparcelas = Subparcelas();
    EXPECT_EQ(
        Utf8(TextoFaltas(subparcelas[0])),
        "la letra a de la parcela 7 está en 2 recintos y éste no cuenta: se pierden sus 25.00 "
        "m2; cuenta el último, de 36.00 m2");
    EXPECT_EQ(Clases(subparcelas[1]), CClases{Repetido});
    EXPECT_EQ(Utf8(TextoFaltas(subparcelas[2])), "su rótulo, \"7-\", no dice ninguna letra");
    EXPECT_EQ(Clases(subparcelas[3]), CClases{SinLetra});
    EXPECT_EQ(Clases(subparcelas[4]), (CClases{RotuloFuera, FueraDeParcela}));
}

/// Of a parcel's label the number alone is read, so what else stands there breaks no line.
TEST_F(DrawingFindings, FindsWhatPartsTheRowsThatALabelIsWrittenTo)
{
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7\t", 500, 500), {marco}, {500, 500}}};
    for (const char* rotulo : {"7-a\tb", "7-a\n", "7-\ra", "7\t-a", "7-a\x01"})
        dibujo.sub.push_back(
            {kParcela, 100, dibujo.Subparcela(rotulo, 500, 500), {marco}, {500, 500}});
    EXPECT_EQ(Clases(Parcelas().at(0)), CClases());
    const CFaltasDeRecintos suyas = Subparcelas();
    ASSERT_EQ(suyas.size(), 5U);
    for (const std::size_t i : {0U, 1U, 2U})
        EXPECT_EQ(Clases(suyas[i]), CClases{ParteFilas}) << i;
    for (const std::size_t i : {3U, 4U})
        EXPECT_EQ(Clases(suyas[i]), CClases()) << i;
}
