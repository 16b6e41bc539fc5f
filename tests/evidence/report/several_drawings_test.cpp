#include <string>
#include <vector>

#include "evidence/report/reading/text.h"
#include "tests/evidence/report/report_fixture.h"
#include "tests/vexa_to_catastro/run_fixture.h"

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using CPunto = vexageo::CPunto<int>;

namespace {

/// A drawing of a polygon: the sides, in metres, of the squares that are all of one parcel.
struct CDibujoDeUna {
    const char* entrada;
    std::vector<int> lados;
};

constexpr const char* kDibujada = "de las parcelas que están también en el fichero R";
constexpr const char* kEscrita = "escrita de ellas en el fichero R";
constexpr const char* kNoCuenta = "que no cuenta, por estar en varios recintos";

} // namespace

/// Polygons whose parcel 7, and its subparcel, stand in some drawings; parcel 8 is in one of them.
class InformeDeVariosDibujos : public Cruce {
protected:
    void Dibuja(const std::vector<CDibujoDeUna>& dibujos)
    {
        lista = "TREN 045127\r\n";
        int x = 0;
        for (const CDibujoDeUna& suyo : dibujos) {
            lista += std::string("P") + suyo.entrada + "\r\n";
            CDibujoPrueba dibujo(carpeta, suyo.entrada);
            for (const int lado : suyo.lados)
                PonRecinto(dibujo, "7", x += 10'000, lado);
            if (&suyo == &dibujos.front())
                PonRecinto(dibujo, "8", x += 10'000, 10);
            dibujo.Graba();
        }
    }
    static void PonRecinto(CDibujoPrueba& dibujo, const std::string& parcela, int x, int lado,
                           double resto = 0)
    {
        const int contorno = dibujo.Cuadrado(x, 0, lado);
        const double area = 1.0 * lado * lado + resto;
        const CPunto suyo(x + 100, 100);
        const int numero = dibujo.Parcela(parcela.c_str(), suyo.X, suyo.Y);
        const int letra = dibujo.Subparcela((parcela + "-a").c_str(), suyo.X, suyo.Y);
        dibujo.par.push_back({kParcela, area, numero, {contorno}, suyo});
        dibujo.sub.push_back({kParcela, area, letra, {contorno}, suyo});
    }
    void Tablas(const char* superficie, const char* concentrada = " ")
    {
        for (const char* tabla : {"Parcelas", "Subparcelas"})
            tablas[tabla].clear();
        Parcela("7", superficie, concentrada);
        Subparcela("7", "a", superficie);
        Parcela("8", "100");
        Subparcela("8", "a", "100");
    }
    CInformePrueba Informa(const informe::COpciones& opciones = {}) const
    {
        return CInformePrueba(carpeta, "045127.ERR", opciones);
    }
    /// A row of the sums.
    static std::string Suma(const char* que, int metros, int parcelas)
    {
        return std::string(que) + "</td><td class=\"n\">" + informe::Hectareas(metros) +
               "</td><td class=\"n\">" + std::to_string(parcelas) + "</td>";
    }
    /// What stands of parcel 7 behind its number.
    static std::string Fila(int recintos, int dibujada, int escrita, const char* motivo)
    {
        const auto celda = [](const std::string& que) {
            return "<td class=\"n\">" + que + "</td>";
        };
        const int diferencia = escrita - dibujada;
        return celda(std::to_string(recintos)) + celda(std::to_string(dibujada)) +
               celda(std::to_string(escrita)) +
               celda((diferencia > 0 ? "+" : "") + std::to_string(diferencia)) +
               celda(diferencia < 0 ? std::to_string(-diferencia) : "") + "<td>" + motivo + "</td>";
    }
};

TEST_F(InformeDeVariosDibujos, TellsWhatAParcelLosesOverAllDrawingsOfItsPolygon)
{
    // clang-format off
    const struct {
        const char* razon;
        std::vector<CDibujoDeUna> dibujos;
        const char* tabla;
        const char* concentrada;
        int recintos, dibujada, escrita, perdida;
        const char* motivo;
        int modificar = 0, concentradas = 0;
    } casos[] = {
        {"one drawing", {{"1", {10, 8}}}, "164", " ",
         2, 164, 64, 100, "en 2 recintos: toma la del último"},
        {"equal outlines", {{"1", {10}}, {"1B", {10}}}, "200", " ",
         2, 200, 100, 100, "en 2 recintos de 2 dibujos (1, 1B): toma la del último"},
        {"the smaller one last", {{"1", {10}}, {"1B", {5}}}, "100", " ",
         2, 125, 25, 100, "en 2 recintos de 2 dibujos (1, 1B): toma la del último"},
        {"the greater one last", {{"1", {5}}, {"1B", {10}}}, "100", " ",
         2, 125, 100, 25, "en 2 recintos de 2 dibujos (1, 1B): toma la del último"},
        {"three drawings, another one without it, two outlines in the last",
         {{"1", {10}}, {"1A", {}}, {"1B", {8}}, {"1C", {6, 5}}}, "100", " ",
         4, 225, 25, 200, "en 4 recintos de 3 dibujos (1, 1B, 1C): toma la del último"},
        {"both in the later drawing", {{"1", {}}, {"1B", {10, 8}}}, "164", " ",
         2, 164, 64, 100, "en 2 recintos: toma la del último"},
        {"concentrated, in one drawing", {{"1", {10, 8}}}, "150", "C",
         2, 164, 150, 14, "concentrada: conserva la de la tabla"},
        {"there, with more than is drawn", {{"1", {10, 8}}}, "170", "C",
         2, 164, 170, 0, "concentrada: conserva la de la tabla"},
        {"there, where the run is told to take the drawing's", {{"1", {10, 8}}}, "164", "C",
         2, 164, 64, 100, "en 2 recintos: toma la del último", 0, 1},
        {"there, and the tables are written again", {{"1", {10, 8}}}, "164", "C",
         2, 164, 64, 100, "en 2 recintos: toma la del último", 1, 1},
        {"concentrated", {{"1", {10}}, {"1B", {8}}}, "150", "C",
         2, 164, 150, 14, "concentrada: conserva la de la tabla"},
        {"concentrated, with more than is drawn", {{"1", {10}}, {"1B", {8}}}, "170", "C",
         2, 164, 170, 0, "concentrada: conserva la de la tabla"},
        {"concentrated, with what the last one has", {{"1", {10}}, {"1B", {8}}}, "64", "C",
         2, 164, 64, 100, "en 2 recintos de 2 dibujos (1, 1B): toma la del último"},
    };
    // clang-format on
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.razon);
        Tablas(caso.tabla, caso.concentrada);
        Dibuja(caso.dibujos);
        Ejecuta(caso.modificar, 0, 0, caso.concentradas);
        ASSERT_EQ(Superficies("PR"), (std::vector<int>{caso.escrita, 100}));
        const CInformePrueba informe = Informa();
        EXPECT_THAT(informe.pagina,
                    HasSubstr(Fila(caso.recintos, caso.dibujada, caso.escrita, caso.motivo)));
        EXPECT_THAT(informe.pagina, HasSubstr(Suma(kDibujada, caso.dibujada + 100, 2)));
        EXPECT_THAT(informe.pagina, HasSubstr(Suma(kEscrita, caso.escrita + 100, 2)));
        EXPECT_EQ(informe.Dice(Suma(kNoCuenta, caso.perdida, 1)), caso.perdida > 0);
        EXPECT_EQ(informe.resultado.cifras.value().perdida, caso.perdida);
        EXPECT_EQ(informe.resultado.hayPerdidas, caso.perdida > 0);
        const std::string noCuentan =
            std::to_string(caso.perdida) + " m² no cuentan, en 1 parcela de varios recintos, ";
        EXPECT_THAT(informe.Cuenta(),
                    StartsWith("vuelta, " + (caso.perdida > 0 ? noCuentan : "0 errores")));
        EXPECT_THAT(informe.Cuenta(), EndsWith(", 0 sin explicar"));
    }
}

TEST_F(InformeDeVariosDibujos, TellsOfALetterThatStandsInSeveralOfThem)
{
    Tablas("200");
    Dibuja({{"1", {10}}, {"1B", {10}}});
    Ejecuta();
    ASSERT_EQ(Superficies("SP"), (std::vector<int>{100, 100}));
    const CInformePrueba informe = Informa();
    const std::string que =
        "</td><td>está en 2 recintos de 2 dibujos (1, 1B): cuenta el último</td>";
    EXPECT_EQ(Veces(informe.pagina, "<td>subparcela 7-a" + que), 1);
    EXPECT_EQ(Veces(informe.pagina, "<td>parcela 7" + que), 1);
    EXPECT_FALSE(informe.Dice("<td>subparcela 8-a</td>"));
}

TEST_F(InformeDeVariosDibujos, ShowsWhichOutlineCountsOnTheMapsOfAll)
{
    Tablas("164");
    // Another polygon stands between its drawings, with a parcel of the same number.
    tablas["Parcelas"].push_back(Cruce::Fila(
        {"045", "127", "0", "2", "7", "81", "", "", "1", "PR", "100", "", "", "", "1", " "}));
    Dibuja({{"1", {10}}, {"2", {9}}, {"1B", {8}}});
    Ejecuta();
    const CInformePrueba informe = Informa({.geojson = carpeta.En("m.geojson")});
    for (const char* dice : {"<path id=\"p1-7\" class=\"ok pieza perdida\" data-p=\"1-7\"",
                             "<title>Parcela 1-7, recinto 1 de 2: no cuentan sus 100 m²</title>",
                             "<path class=\"ok pieza\" data-p=\"1-7\"",
                             "<title>Parcela 1-7, recinto 2 de 2: cuenta éste</title>",
                             "<li><a href=\"#p1-7\">1-7</a> 100 m²</li>"})
        EXPECT_EQ(Veces(informe.pagina, dice), 1) << dice;
    EXPECT_EQ(Veces(informe.pagina, "<title>Polígono 1: 100 m² se pierden, en 1 parcela</title>"),
              1)
        << "a polygon is one on the map of all";
    EXPECT_FALSE(informe.Dice("Parcela 2-7, recinto"));
    const std::string rasgos = carpeta.Lee("m.geojson");
    for (const char* recinto : {R"("recinto":1,"recintos":2,)", R"("recinto":2,"recintos":2,)"})
        EXPECT_EQ(Veces(rasgos, recinto), 2) << "the parcel's and its letter's: " << recinto;
}

TEST_F(InformeDeVariosDibujos, RoundsOnceWhatIsDrawnOfOneThatWasNotWritten)
{
    lista = "TREN 045127\r\nP1\r\nP1B\r\n";
    for (const char* entrada : {"1", "1B"}) {
        CDibujoPrueba dibujo(carpeta, entrada);
        PonRecinto(dibujo, "7", 0, 10, 0.3);
        PonRecinto(dibujo, "8", 10'000, 10);
        dibujo.Graba();
    }
    Parcela("8", "100");
    Ejecuta();
    EXPECT_TRUE(Informa().Dice(Suma("dibujada, de parcelas que no están en el fichero R", 201, 1)));
}

TEST_F(InformeDeVariosDibujos, TakesADrawingThatIsListedTwiceForOne)
{
    Tablas("100");
    Dibuja({{"1", {10}}});
    for (const char* otra : {"P1\r\n", "P1.BIN\r\n"}) {
        lista = "TREN 045127\r\nP1\r\n" + std::string(otra);
        Ejecuta();
        const CInformePrueba informe = Informa();
        EXPECT_FALSE(informe.resultado.hayPerdidas) << otra;
        EXPECT_TRUE(informe.Dice(Suma(kDibujada, 200, 2))) << otra;
        EXPECT_THAT(informe.Cuenta(), StartsWith("vuelta, 0 errores"));
    }
}
