#include <chrono>
#include <filesystem>

#include "generator/drawing_files.h"
#include "generator/synthetic_municipality.h"
#include "tests/evidence/report/report_fixture.h"
#include "tests/support/scripted_front_end.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

namespace fs = std::filesystem;

/// A municipality of two polygons with 31 parcels each.
class InformeDeInfograf : public testing::Test {
protected:
    InformeDeInfograf()
    {
        const auto municipio = sintetico::Genera({.parcelas = 60, .poligonos = 2}, 3);
        EXPECT_TRUE(sintetico::GrabaDibujos(carpeta.En(""), municipio));
    }
    void Ejecuta() const { EjecutaAInfograf(carpeta); }
    CInformePrueba Informa(const informe::COpciones& opciones = {}) const
    {
        return CInformePrueba(carpeta, "045127.ERR", opciones, "045127_infograf.html");
    }

    CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
};

} // namespace

TEST_F(InformeDeInfograf, CountsRecordsByKindOnAPageOfItsOwn)
{
    carpeta.Pon("045127.ERR", "E111: La parcela    1      1 en base de datos no tiene "
                              "correspondencia en gr\xE1"
                              "fico\r\n");
    carpeta.Pon("045127.html", "la de la vuelta");
    Ejecuta();
    const CInformePrueba informe = Informa();
    EXPECT_THAT(informe.Cuenta(), StartsWith("a Infograf, 62 parcelas, 2 polígonos, "));
    EXPECT_THAT(informe.Cuenta(), HasSubstr(", 0 sin padre, 0 asuntos, 0 sin explicar"));
    EXPECT_THAT(informe.Partida("Parcelas"),
                HasSubstr("|recintos de .PAR|62|Sale|registros de parcela (12)|62|"));
    EXPECT_THAT(informe.Partida("Polígonos"), HasSubstr("|2|Sale|registros de polígono (13)|2|"));
    for (const char* deLaVuelta : {"Vuelta", "se detuvo", "errores", "E111"})
        EXPECT_FALSE(informe.Dice(std::string("<b>") + deLaVuelta)) << deLaVuelta;
    EXPECT_EQ(carpeta.Lee("045127.html"), "la de la vuelta");
    // What the way back told is kept, and has its own page.
    const auto vuelta = Resultado(carpeta, "045127.ERR.anterior");
    EXPECT_THAT(vuelta.resumen, HasSubstr(": vuelta, 1 error, "));
    EXPECT_THAT(carpeta.Lee("045127.html"), HasSubstr("E111"));
}

TEST_F(InformeDeInfograf, NamesWhatIsMissingAndWhatHasNoParent)
{
    fs::rename(carpeta.Ruta() / "002.SUB", carpeta.Ruta() / "guardado.SUB");
    Ejecuta();
    EXPECT_TRUE(Informa().resultado.hayPerdidas) << "of a drawing that isn't whole";
    fs::rename(carpeta.Ruta() / "guardado.SUB", carpeta.Ruta() / "002.SUB");
    fs::rename(carpeta.Ruta() / "ortos.TOP", carpeta.Ruta() / "guardado.TOP");
    Ejecuta();
    EXPECT_FALSE(Informa().resultado.hayPerdidas) << "of sheets nothing is asked";
    fs::rename(carpeta.Ruta() / "guardado.TOP", carpeta.Ruta() / "ortos.TOP");
    fs::rename(carpeta.Ruta() / "002.POL", carpeta.Ruta() / "002.guardado");
    fs::copy_file(carpeta.Ruta() / "001.POL", carpeta.Ruta() / "002.POL"); // elsewhere
    fs::remove(carpeta.Ruta() / "001.SUB");
    fs::remove(carpeta.Ruta() / "ortos.TOP");
    Ejecuta();
    const CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.Dice("<b>Polígono 001: falta su .SUB</b>"));
    EXPECT_TRUE(
        informe.Dice("<b>Ortofotos: no se halló su gráfico, y ningún registro nombra su hoja</b>"));
    EXPECT_TRUE(informe.Dice("no cae en ningún polígono"));
    EXPECT_TRUE(informe.Dice("su parcela no cae en ningún polígono"));
    EXPECT_EQ(Veces(informe.pagina, "<tr><td>002</td><td>"), 60) << "the first ones";
    EXPECT_TRUE(informe.Dice(" más.</p>"));
    EXPECT_THAT(informe.Partida("Parcelas"), HasSubstr("|en ningún polígono, sin mensaje|"));
    EXPECT_THAT(informe.Cuenta(), HasSubstr(", 0 sin explicar"));
    fs::remove(carpeta.Ruta() / "002.BIN");
    Ejecuta();
    EXPECT_TRUE(Informa().Dice("<b>Polígono 002: falta su .BIN, y no sale nada de él</b>"));
}

TEST_F(InformeDeInfograf, TellsWhatADamagedTopologyAndAnotherSurfaceCost)
{
    const std::string entero = carpeta.Lee("002.SUB");
    const struct {
        std::string suyo;
        const char* dice;
    } casos[] = {
        {entero.substr(0, entero.size() / 2), "está dañado o fuera de fecha, y no sale todo de él"},
        {"", "está vacío"},
    };
    for (const auto& [suyo, dice] : casos) {
        carpeta.Pon("002.SUB", suyo);
        Ejecuta();
        const CInformePrueba informe = Informa();
        EXPECT_TRUE(informe.resultado.hayPerdidas);
        EXPECT_TRUE(informe.Dice("<b>Polígono 002: su .SUB " + std::string(dice) + "</b>"));
        EXPECT_THAT(informe.resultado.resumen,
                    HasSubstr("Dibujos que no están enteros: 002, su .SUB " + std::string(dice)));
    }
    const std::string parcelas = carpeta.Lee("002.PAR");
    carpeta.Pon("002.PAR", "");
    Ejecuta();
    EXPECT_FALSE(Informa().resultado.hayPerdidas) << "of a polygon in which nothing is drawn";
    carpeta.Pon("002.PAR", parcelas);
    carpeta.Pon("002.SUB", entero);
    Ejecuta();
    ASSERT_FALSE(Informa().resultado.hayPerdidas);
    std::string csp;
    for (std::string linea : carpeta.Lineas("045127.CSP"))
        csp += (linea.starts_with("12") ? linea.replace(linea.find('.') - 9, 12, "        0.00")
                                        : linea) +
               "\r\n";
    carpeta.Pon("045127.CSP", csp);
    const CInformePrueba informe = Informa();
    EXPECT_TRUE(informe.resultado.hayPerdidas);
    EXPECT_THAT(informe.Partida("Parcelas"),
                HasSubstr("|✕ los registros suman 0 m² y sus recintos "));
    EXPECT_THAT(informe.Partida("Subparcelas"), HasSubstr("✓ Cuadra"));
}

TEST_F(InformeDeInfograf, ShowsARecordThatWasTakenOutAndARunThatEndedBefore)
{
    Ejecuta();
    const std::string entero = carpeta.Lee("045127.CSP");
    const std::size_t desde = entero.find("\n12 ") + 1;
    const std::size_t hasta = entero.find('\n', desde) + 1;
    carpeta.Pon("045127.CSP", entero.substr(0, desde) + entero.substr(hasta));
    CInformePrueba informe = Informa();
    EXPECT_THAT(informe.Partida("Parcelas"), HasSubstr("✕ sin explicar: 1: falta "));
    EXPECT_FALSE(informe.Dice("se detuvo"));
    carpeta.Pon("045127.CSP", entero.substr(0, entero.find('\n', entero.size() / 2) + 1));
    informe = Informa();
    EXPECT_TRUE(informe.Dice("El proceso se detuvo: los registros acaban antes que los dibujos."));
}

/// The log is the way back's as well: what the run wrote, or the time, tells whose it is.
TEST_F(InformeDeInfograf, IsToldFromTheWayBack)
{
    Ejecuta();
    const auto csp = fs::last_write_time(carpeta.Ruta() / "045127.CSP");
    carpeta.Pon("045127.R", "");
    fs::last_write_time(carpeta.Ruta() / "045127.R", csp + std::chrono::seconds(1));
    const auto sentido = [&](const informe::COpciones& opciones) {
        return Resultado(carpeta, "045127.ERR", opciones).resumen;
    };
    EXPECT_THAT(sentido({}), HasSubstr(": vuelta, ")) << "a way back came behind";
    EXPECT_THAT(sentido({.escritos = {carpeta.En("045127.CSP")}}), HasSubstr(": a Infograf, "));
    fs::last_write_time(carpeta.Ruta() / "045127.R", csp - std::chrono::hours(1));
    EXPECT_THAT(sentido({}), HasSubstr(": a Infograf, "));
    EXPECT_THAT(sentido({.escritos = {carpeta.En("045127.R")}}), HasSubstr(": vuelta, "));
    fs::last_write_time(carpeta.Ruta() / "045127.CSP", csp - std::chrono::hours(1));
    EXPECT_THAT(sentido({}), HasSubstr(": vuelta, ")) << "the log is newer";
    EXPECT_THAT(sentido({.detenido = true}),
                testing::AllOf(HasSubstr(": a Infograf, "), HasSubstr("no llegó a su fin")))
        << "no way back without tables";
}
