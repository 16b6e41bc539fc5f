#include "evidence/show_drawing/show_drawing.h"

#include <cstdlib>
#include <sstream>

#include <gmock/gmock.h>

#include "tests/support/drawing_in_the_making.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr int kNoSeLee = 2;

class ShowDrawing : public testing::Test {
protected:
    /// Prints a file of the folder.
    int Muestra(const char* nombre)
    {
        return Ejecuta({"show_drawing", carpeta.En(nombre).GetString()});
    }
    int Ejecuta(const std::vector<std::string>& argumentos)
    {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int estado = EnseñaDibujo(argumentos);
        salida = testing::internal::GetCapturedStdout();
        quejas = testing::internal::GetCapturedStderr();
        return estado;
    }
    /// The lines that tell a fault, without their mark.
    std::vector<std::string> Fallos() const
    {
        std::vector<std::string> fallos;
        std::istringstream lineas(salida);
        for (std::string linea; std::getline(lineas, linea);)
            if (linea.starts_with("! "))
                fallos.push_back(linea.substr(2));
        return fallos;
    }

    CCarpetaPrueba carpeta;
    CDibujoPrueba dibujo{carpeta};
    const int marco = dibujo.Cuadrado(0, 0, 10);
    std::string salida;
    std::string quejas;
};

} // namespace

TEST_F(ShowDrawing, PrintsSoundFilesWithoutFault)
{
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 500, 500), {marco}, {500, 500}, 3}};
    dibujo.Graba();
    EXPECT_EQ(Muestra("1.PAR"), EXIT_SUCCESS);
    EXPECT_EQ(salida, "3: recinto, 100.00 m2, 1 tramos, 0 islas, \"7\" 125201\n0 fallos\n");
    EXPECT_EQ(Muestra("1.BIN"), EXIT_SUCCESS);
    EXPECT_EQ(salida, "Dibujo con 2 decimales; la cabecera cuenta 2 entidades\n"
                      "        17  línea nuevo           5 puntos  0.00 0.00 \n"
                      "       102  texto 125201          1 puntos  5.00 5.00  \"7\"\n"
                      "0 fallos\n");
}

TEST_F(ShowDrawing, TellsAFaultBelowWhatHasIt)
{
    const int hueco = dibujo.Cuadrado(200, 200, 2);
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 300, 300), {marco}, {300, 300}, 1},
                  {kIsla, -4, 0, {hueco}, {}, 2},
                  {kIsla, 4, 0, {hueco}, {}, 3},
                  {kParcela, 100, 0, {marco}, {}, 4}};
    dibujo.Graba();
    EXPECT_EQ(Muestra("1.PAR"), EXIT_FAILURE);
    EXPECT_EQ(salida, "1: recinto, 100.00 m2, 1 tramos, 0 islas, \"7\" 125201\n"
                      "! su rótulo cae dentro de su isla 1\n"
                      "2: isla, -4.00 m2, 1 tramos, 0 islas\n"
                      "3: isla, 4.00 m2, 1 tramos, 0 islas\n"
                      "! isla 2: su superficie es positiva y se suma en vez de restarse: 4.00 m2\n"
                      "! isla 2: es la misma que la isla 1: cuenta dos veces, con 4.00 m2 ésta\n"
                      "4: recinto, 100.00 m2, 1 tramos, 0 islas\n"
                      "! no tiene rótulo: se pasa por alto\n"
                      "4 fallos\n");
}

TEST_F(ShowDrawing, TellsAnIslandOfTheListThatStandsBehindTheRecordToo)
{
    const int hueco = dibujo.Cuadrado(200, 200, 2);
    const int rotulo = dibujo.Parcela("7", 50, 50);
    dibujo.Graba();
    vexageo::CPoligonoTopologico isla;
    isla.Clase(kIsla);
    isla.AreaPropia(-4);
    isla.InsertaTramo(hueco);
    vexageo::CPoligonoTopologico recinto;
    recinto.AreaPropia(100);
    recinto.InsertaTramo(marco);
    vexageo::PonRotulo(recinto, rotulo, {50, 50});
    recinto.InsertaIsla(isla);
    CFile par;
    ASSERT_TRUE(par.Open(carpeta.En("1.PAR"), CFile::modeCreate | CFile::modeWrite));
    recinto.Write(&par);
    isla.Write(&par);
    par.Close();
    Muestra("1.PAR");
    EXPECT_EQ(salida,
              "0: recinto, 96.00 m2, 1 tramos, 1 islas, \"7\" 125201\n"
              "    0: isla, -4.00 m2, 1 tramos, 0 islas\n"
              "0: isla, -4.00 m2, 1 tramos, 0 islas\n"
              "! isla 2: es la misma que la isla 1, que está en la lista: cuenta dos veces, "
              "con -4.00 m2 ésta\n"
              "1 fallos\n");
}

TEST_F(ShowDrawing, KnowsTheParcelsOfSubparcels)
{
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 500, 500), {marco}, {500, 500}}};
    dibujo.sub = {{kParcela, 100, dibujo.Subparcela("a", 400, 400), {marco}, {400, 400}},
                  {kParcela, 100, dibujo.Subparcela("a", 600, 600), {marco}, {600, 600}}};
    dibujo.Graba();
    EXPECT_EQ(Muestra("1.SUB"), EXIT_FAILURE);
    EXPECT_THAT(Fallos(), ElementsAre(HasSubstr("la letra a de la parcela 7 está en 2 recintos"),
                                      HasSubstr("la letra a de la parcela 7 está en 2 recintos")));
    std::filesystem::remove(carpeta.Ruta() / "1.PAR");
    EXPECT_EQ(Muestra("1.sub"), EXIT_FAILURE);
    EXPECT_THAT(Fallos(),
                ElementsAre("no está su .PAR: no se sabe en qué parcela cae cada recinto"));
}

TEST_F(ShowDrawing, LooksAtSheetsAndPolygonsByTheirOwnRules)
{
    dibujo.pol = {{kParcela, 100, dibujo.Rotulo("x", "uno", 0, 0), {marco}}};
    dibujo.Graba();
    std::filesystem::copy(carpeta.Ruta() / "1.POL", carpeta.Ruta() / "1.TOP");
    Muestra("1.POL");
    EXPECT_THAT(Fallos(), ElementsAre("su rótulo está en el borde",
                                      "su rótulo, \"uno\", no empieza por un número"));
    EXPECT_EQ(Muestra("1.TOP"), EXIT_SUCCESS);
}

TEST_F(ShowDrawing, ShowsControlCharactersOfALabel)
{
    const int hoja = dibujo.Rotulo("x", "06\t29\r\n\x1F", 500, 500);
    dibujo.pol = {{kParcela, 100, hoja, {marco}, {500, 500}}};
    dibujo.Graba();
    std::filesystem::copy(carpeta.Ruta() / "1.POL", carpeta.Ruta() / "1.TOP");
    for (const char* fichero : {"1.BIN", "1.TOP"}) {
        Muestra(fichero);
        EXPECT_THAT(salida, HasSubstr(R"( "06\x0929\x0D\x0A\x1F")")) << fichero;
    }
    EXPECT_THAT(Fallos(), ElementsAre("su rótulo tiene un tabulador o un fin de línea, que parte "
                                      "las filas en las que se escribe"));
}

TEST_F(ShowDrawing, GoesOnBehindDamage)
{
    dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 500, 500), {marco}, {500, 500}}};
    dibujo.Graba();
    const std::string entero = carpeta.Lee("1.PAR");
    dibujo.par.clear();
    std::string malo = entero;
    malo.back() = static_cast<char>(malo.back() + 1);
    const auto cola = [&](std::int16_t clase) {
        CFile par;
        EXPECT_TRUE(par.Open(carpeta.En("2.PAR"), CFile::modeCreate | CFile::modeWrite));
        vexageo::CPoligonoTopologico suelto;
        suelto.Clase(clase);
        suelto.AreaPropia(50);
        suelto.InsertaTramo(marco);
        suelto.Write(&par);
        par.Close();
        return carpeta.Lee("2.PAR");
    };
    carpeta.Pon("1.PAR", entero + malo + entero + cola(kParcela));
    EXPECT_EQ(Muestra("1.PAR"), EXIT_FAILURE);
    EXPECT_THAT(Fallos(), ElementsAre(HasSubstr("no hay un registro entero"),
                                      "su contorno encierra 100.00 m2 y el registro dice 50.00",
                                      "no tiene rótulo: se pasa por alto"));
    carpeta.Pon("1.PAR", malo + malo);
    Muestra("1.PAR");
    EXPECT_THAT(Fallos(), SizeIs(2));

    const std::string bin = carpeta.Lee("1.BIN");
    carpeta.Pon("1.BIN", bin + "VENT");
    EXPECT_EQ(Muestra("1.BIN"), EXIT_FAILURE);
    EXPECT_THAT(Fallos(), ElementsAre(HasSubstr("no hay una entidad entera")));
}

TEST_F(ShowDrawing, TellsDecimalsThatNobodyReads)
{
    dibujo.Graba();
    std::string bin = carpeta.Lee("1.BIN");
    constexpr std::size_t kDecimales = 5;
    constexpr std::size_t kEntidades = 8;
    bin[kDecimales] = 3;
    bin[kEntidades] = 9;
    carpeta.Pon("1.BIN", bin);
    EXPECT_EQ(Muestra("1.BIN"), EXIT_FAILURE);
    EXPECT_THAT(Fallos(), ElementsAre("los 3 decimales de la cabecera no cuentan: las coordenadas "
                                      "se toman en centésimas de metro",
                                      "se leen 1 entidades, no 9"));
}

TEST_F(ShowDrawing, SaysWhatItCannotDo)
{
    dibujo.Graba();
    EXPECT_EQ(Ejecuta({"show_drawing"}), kNoSeLee);
    EXPECT_THAT(quejas, HasSubstr("Uso: show_drawing FICHERO"));
    EXPECT_EQ(Ejecuta({"show_drawing", "--help"}), EXIT_SUCCESS);
    EXPECT_THAT(salida, HasSubstr("Uso: show_drawing FICHERO"));
    EXPECT_THAT(quejas, IsEmpty());
    carpeta.Pon("1.txt", "VPOL");
    std::filesystem::copy(carpeta.Ruta() / "1.PAR", carpeta.Ruta() / "2.PAR");
    for (const char* nombre : {"1.txt", "3.PAR", "3.BIN", "2.PAR"}) {
        EXPECT_EQ(Muestra(nombre), kNoSeLee) << nombre;
        EXPECT_THAT(quejas, HasSubstr("no se puede leer")) << nombre;
    }
}
