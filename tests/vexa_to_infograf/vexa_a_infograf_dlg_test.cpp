#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "generator/cadastre_lines.h"
#include "generator/drawing_files.h"
#include "platform/ansi.h"
#include "shell/frame/box_texts.h"
#include "tests/support/drawing_in_the_making.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "tests/support/sheets.h"

using CPunto = vexageo::CPunto<int>;
using Textos = std::vector<std::string>;

namespace {

class Infograf : public testing::Test {
protected:
    /// Runs on the list and the sheets of the folder.
    void Ejecuta()
    {
        aplicacion.guion.cajas.clear();
        CVexaAInfografDlg dialogo;
        dialogo.Create(IDD_VEXA_A_INFOGRAF, nullptr);
        dialogo.GetDlgItem(IDC_TREN)->SetWindowText(carpeta.En("poligonos.txt"));
        dialogo.GetDlgItem(IDC_ORTOS)->SetWindowText(carpeta.En("ortos.TOP"));
        dialogo.SendMessage(WM_COMMAND, IDOK, 0);
        EXPECT_FALSE(dialogo.EnMarcha);
        EXPECT_TRUE(dialogo.GetDlgItem(IDC_TREN)->IsWindowEnabled());
    }
    /// The records, without the path in front of their blocks' names and the blanks at their ends.
    Textos Registros(std::string_view fichero = "045127.CSP") const
    {
        Textos registros = carpeta.Lineas(fichero);
        for (std::string& linea : registros) {
            if (linea.starts_with("00"))
                linea.erase(2, static_cast<std::size_t>(carpeta.En("").GetLength()));
            linea.erase(linea.find_last_not_of(' ') + 1);
        }
        return registros;
    }
    /// How many records of a kind there are.
    std::ptrdiff_t Cuantos(std::string_view tipo) const
    {
        const Textos registros = Registros();
        return std::count_if(registros.begin(), registros.end(),
                             [&](const std::string& r) { return r.starts_with(tipo); });
    }
    Textos Cajas() const
    {
        Textos cajas;
        for (const CCajaVista& caja : aplicacion.guion.cajas) {
            EXPECT_EQ(caja.titulo, "Error");
            EXPECT_EQ(caja.flags, MB_ICONERROR);
            cajas.push_back(carpeta.SinRuta(caja.texto));
        }
        return cajas;
    }

    Textos Observaciones() const
    {
        Textos dichas;
        for (const CString& dicha : aplicacion.guion.escritos.observaciones)
            dichas.push_back(carpeta.SinRuta(ansi::AUtf8(dicha)));
        return dichas;
    }

    CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
};

/// A municipality of two polygons with 31 parcels each.
class InfografDeMuestra : public Infograf {
protected:
    InfografDeMuestra()
    {
        municipio = sintetico::Genera({.parcelas = 60, .poligonos = 2}, 3);
        EXPECT_TRUE(sintetico::GrabaDibujos(carpeta.En(""), municipio));
        Ejecuta();
        completos = Registros();
    }

    sintetico::CMunicipioSintetico municipio;
    Textos completos;
};

} // namespace

TEST_F(Infograf, WritesARecordForEachPolygonInItsParent)
{
    CDibujoPrueba dibujo(carpeta);
    const int finca = dibujo.Cuadrado(0, 0, 100);
    const int mitad = dibujo.Cuadrado(0, 0, 50);
    const int hueco = dibujo.Cuadrado(1000, 1000, 10);
    const int lejos = dibujo.Cuadrado(900000, 900000, 10);
    dibujo.pol = {{kParcela, 10000, dibujo.Rotulo("1", "7", 5, 5), {finca}, {5, 5}}};
    dibujo.par = {
        // Sorted by number, not as they stand.
        {kParcela, 2500.005, dibujo.Rotulo("1", "12", 0, 0), {mitad}, {2000, 3000}, 9},
        {kIsla, -100, 0, {hueco}, {0, 0}, 3},
        {kParcela, 10000, dibujo.Rotulo("1", "11-x", 0, 0), {finca}, {9000, 9000}, 4},
        {kParcela, 100, dibujo.Rotulo("1", "13", 0, 0), {lejos}, {900100, 900100}, 5},
    };
    dibujo.sub = {
        {kParcela, 20, dibujo.Rotulo("1", "b", 0, 0), {}, {3000, 3000}},
        {kParcela, 30, dibujo.Rotulo("1", "12-abcd", 0, 0), {}, {4900, 100}},
        // In the island, by the point inside it, as it has no label: the parcel around holds it.
        {kParcela, 40, 0, {}, {-5, 0}, 0, {}, CPunto(1500, 1500)},
        // On the island's edge, by its label's place and no other.
        {kParcela, 50, dibujo.Rotulo("1", "c", 0, 0), {}, {1000, 1500}, 0, {}, CPunto(-5, 0)},
        {kParcela, 60, dibujo.Rotulo("1", "d", 0, 0), {}, {900100, 900100}}, // with its parcel
        {kParcela, 70, dibujo.Rotulo("1", "e", 0, 0), {}, {-5, 0}},          // in none
    };
    dibujo.Graba();
    carpeta.Pon("poligonos.txt", "TREN 045127\r\nP1\r\n");
    Ejecuta();
    EXPECT_EQ(Cajas(),
              (Textos{"El archivo ortos.BIN no existe", "El archivo ortos.TOP no existe"}));
    EXPECT_EQ(
        Registros(),
        (Textos{
            "001.IFG",
            "12 0000000700011621               40     9000      9000        10000.00",
            "12 0000000700012621               40     2000      3000         2400.01",
            "13 0000000700000611               50        5         5        10000.00",
            "11 0000000700012633               30     3000      3000           20.00          0b",
            "11 0000000700012633               30     4900       100           30.00"
            "          012-abcd",
            "11 0000000700011633               30     1500      1500           40.00          0",
            "11 0000000700012633               30     1000      1500           50.00          0c",
        }));
    EXPECT_EQ(carpeta.Lee("045127.ERR"), "");
    EXPECT_EQ(
        Observaciones()[0],
        "En los dibujos de poligonos.txt hay recintos fuera de su parcela o de su polígono, 3, "
        "que quedan sin registro");
}

TEST_F(Infograf, TellsLabelsThatAreNoNumberAndTopologiesWithNothingInThem)
{
    CDibujoPrueba dibujo(carpeta);
    const int finca = dibujo.Cuadrado(0, 0, 100);
    dibujo.pol = {{kParcela, 10000, dibujo.Rotulo("1", "x", 5, 5), {finca}, {5, 5}}};
    dibujo.par = {{kParcela, 10000, dibujo.Rotulo("1", "x1", 5, 5), {finca}, {5, 5}}};
    dibujo.Graba();
    carpeta.Pon("poligonos.txt", "TREN 045127\r\nP1\r\n");
    Ejecuta();
    EXPECT_EQ(Observaciones(),
              (Textos{"El archivo 1.SUB está vacío: de él no sale ningún recinto",
                      "En los dibujos de poligonos.txt hay parcelas o polígonos sin número en su "
                      "rótulo, 2. Llevan un 0"}));
}

TEST_F(Infograf, AValueWiderThanItsColumnPushesTheRestOn)
{
    CDibujoPrueba dibujo(carpeta);
    dibujo.pol = {{kParcela,
                   12345678901234.5,
                   dibujo.Rotulo("1", "123456", 0, 0),
                   {},
                   {-2000000000, -2000000000}}};
    dibujo.Graba();
    carpeta.Pon("poligonos.txt", "TREN 045127\r\nP1\r\n");
    Ejecuta();
    EXPECT_EQ(Registros().back(), "13 0000012345600000611               50-2000000000-2000000000"
                                  " 12345678901234.50");
    const std::string csp = carpeta.Lee("045127.CSP");
    EXPECT_EQ(csp.size() - csp.find("13 "), 126U + 3 + 2 + 1 + 2 + 2) << "the blanks are all there";
}

TEST_F(InfografDeMuestra, TellsItsPhasesAndNamesTheSheetOfEachRecord)
{
    EXPECT_TRUE(Cajas().empty());
    EXPECT_EQ(aplicacion.guion.estados,
              (Textos{"Leyendo fichero de ortos", "Registrando parcelas", "Registrando polígonos",
                      "Registrando subparcelas", "Registrando parcelas", "Registrando polígonos",
                      "Registrando subparcelas", " "}));
    EXPECT_EQ(Cuantos("00"), 2);
    EXPECT_EQ(Cuantos("12 "), 62);
    EXPECT_EQ(Cuantos("13 "), 2);
    for (const std::string& registro : completos)
        EXPECT_TRUE(registro.starts_with("00") || registro.substr(71, 5) != "     ") << registro;
    std::filesystem::remove(carpeta.Ruta() / "ortos.BIN");
    Ejecuta();
    EXPECT_EQ(Cajas(), Textos{"El archivo ortos.BIN no existe"});
    Textos sinHoja = completos;
    for (std::string& registro : sinHoja) {
        if (registro.starts_with("00"))
            continue;
        registro.replace(71, 10, 10, ' ');
        registro.erase(registro.find_last_not_of(' ') + 1);
    }
    EXPECT_EQ(Registros(), sinHoja) << "all else stays";
}

TEST_F(InfografDeMuestra, GoesOnWithoutAMissingFile)
{
    const std::ptrdiff_t subparcelas = Cuantos("11 ");
    ASSERT_GT(subparcelas, 60);
    const struct {
        const char* falta; ///< of the first polygon
        std::ptrdiff_t bloques, parcelas, poligonos, subparcelas;
        const char* primera; ///< head of the first subparcel, after its kind
    } casos[] = {
        {"001.BIN", 1, 31, 1, 0, "00000002"},
        {"001.PAR", 2, 31, 2, subparcelas, "0000000100000"},
        {"001.POL", 2, 62, 1, subparcelas, "0000000000001"},
        {"001.SUB", 2, 62, 2, 0, "00000002"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.falta);
        std::filesystem::rename(carpeta.Ruta() / caso.falta, carpeta.Ruta() / "guardado");
        Ejecuta();
        EXPECT_EQ(Cajas(), Textos{std::string("El archivo ") + caso.falta + " no existe"});
        EXPECT_EQ(Cuantos("00"), caso.bloques);
        EXPECT_EQ(Cuantos("12 "), caso.parcelas);
        EXPECT_EQ(Cuantos("13 "), caso.poligonos);
        if (caso.subparcelas > 0) {
            EXPECT_EQ(Cuantos("11 "), caso.subparcelas);
        }
        const Textos registros = Registros();
        const auto primera =
            std::find_if(registros.begin(), registros.end(),
                         [](const std::string& r) { return r.starts_with("11 "); });
        ASSERT_NE(primera, registros.end());
        EXPECT_EQ(primera->substr(3, std::string(caso.primera).size()), caso.primera);
        std::filesystem::rename(carpeta.Ruta() / "guardado", carpeta.Ruta() / caso.falta);
    }
    Ejecuta();
    EXPECT_EQ(Registros(), completos);
}

TEST_F(InfografDeMuestra, TellsAPolygonThatTheListNamesTwice)
{
    carpeta.Pon("poligonos.txt", carpeta.Lee("poligonos.txt") + "\r\n\r\nP001\r\n");
    Ejecuta();
    EXPECT_EQ(Cuantos("00"), 3);
    const Textos dicho = Observaciones();
    ASSERT_FALSE(dicho.empty());
    EXPECT_EQ(dicho[0],
              "La lista poligonos.txt nombra otra vez polígonos que ya tiene, 1. Sus registros van "
              "repetidos");
    EXPECT_EQ(Registros("045127.CSP.anterior"), completos);
}

TEST_F(InfografDeMuestra, TellsADrawingOfWhichItCouldNotReadAllAndKeepsTheOlderRecords)
{
    const struct {
        const char* motivo;
        const char* cortado; ///< to its half
        const char* dicho;   ///< of which file
    } casos[] = {
        {"parcels", "001.PAR", "001.PAR"},
        {"a drawing: labels and lines are gone", "002.BIN", "002.PAR"},
        {"sheets whose drawing is cut", "ortos.BIN", "ortos.TOP"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        ASSERT_TRUE(sintetico::GrabaDibujos(carpeta.En(""), municipio));
        Ejecuta();
        ASSERT_TRUE(aplicacion.guion.escritos.observaciones.empty());
        const std::string todo = carpeta.Lee(caso.cortado);
        carpeta.Pon(caso.cortado, todo.substr(0, todo.size() / 2));
        Ejecuta();
        EXPECT_EQ(Cajas(), Textos{});
        const Textos dicho = Observaciones();
        ASSERT_FALSE(dicho.empty());
        EXPECT_EQ(dicho[0],
                  std::string("El archivo ") + caso.dicho +
                      " está dañado o fuera de fecha: lo escrito no cuenta con todo lo que dibuja");
        EXPECT_EQ(Registros("045127.CSP.anterior"), completos);
        std::filesystem::remove(carpeta.Ruta() / "045127.CSP.anterior");
    }
}

TEST_F(Infograf, TellsWhatATopologyPointsToInVainAndLabelsThatPartRows)
{
    const std::string dañado = "El archivo 1.POL está dañado o fuera de fecha: lo escrito no "
                               "cuenta con todo lo que dibuja";
    constexpr int kAjeno = 2000000000;
    const struct {
        const char* motivo;
        int tramo;
        int rotulo;
        const char* hoja;
        std::string entrada;
        std::string observacion;
    } casos[] = {
        {"all is there", 0, 0, "HOJA", "1", ""},
        {"a stretch that isn't there", kAjeno, 0, "HOJA", "1", dañado},
        {"a label that isn't there", 0, kAjeno, "HOJA", "1", dañado},
        {"a tab in a sheet's name", 0, 0, "06\t29", "1",
         "En ortos.BIN hay rótulos con un tabulador o un fin de línea, 1, que parten las filas "
         "donde se escriben. Corríjalos en el dibujo"},
        {"a sheet's name that is too long", 0, 0, "HOJA 123456", "1",
         "En 045127.CSP hay registros con algún dato que no cabe en su columna, 3, desde la línea "
         "2. Va cortado, o corre lo que va detrás"},
        {"an entry with a point, and a drawing of that name", 0, 0, "HOJA", "1.bis",
         "De la entrada 1.bis se ha leído 1.BIN: lo que va tras el último punto se toma por "
         "extensión"},
    };
    carpeta.Pon("1.bis.BIN", "");
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        ASSERT_TRUE(
            GrabaHojas(carpeta, {{caso.hoja, {{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}}}}));
        CDibujoPrueba dibujo(carpeta);
        const int marco = dibujo.Cuadrado(0, 0, 100);
        const int rotulo = dibujo.Rotulo("125101", "1", 10, 10);
        dibujo.pol = {{kParcela, 44, caso.rotulo != 0 ? caso.rotulo : rotulo, {marco}}};
        if (caso.tramo != 0)
            dibujo.pol[0].tramos.push_back(caso.tramo);
        dibujo.par = {{kParcela, 44, rotulo, {marco}}};
        // Its text goes on behind the record's last column, which moves nothing.
        dibujo.sub = {{kParcela, 44, dibujo.Rotulo("1", "100-ab", 10, 10), {marco}}};
        dibujo.Graba();
        carpeta.Pon("poligonos.txt", "TREN 045127\r\nP" + caso.entrada + "\r\n");
        Ejecuta();
        EXPECT_EQ(Cajas(), Textos{});
        const Textos dicho = Observaciones();
        EXPECT_EQ(dicho.empty() ? "" : dicho[0], caso.observacion);
    }
}

TEST_F(InfografDeMuestra, AListThatNamesNoPolygonIsToldAndWhatWasThereStays)
{
    for (const char* lista : {"TREN 045127\r\n", "TREN 045127\r\n\r\nP  \r\n"}) {
        SCOPED_TRACE(lista);
        Ejecuta();
        ASSERT_EQ(Registros(), completos);
        const std::string entera = carpeta.Lee("poligonos.txt");
        carpeta.Pon("poligonos.txt", lista);
        Ejecuta();
        ASSERT_FALSE(aplicacion.guion.escritos.observaciones.empty());
        EXPECT_EQ(ansi::AUtf8(aplicacion.guion.escritos.observaciones[0]),
                  ansi::AUtf8(Formatea(observaciones::kSinPoligonos, carpeta.En("poligonos.txt"))));
        EXPECT_EQ(Registros("045127.CSP.anterior"), completos);
        carpeta.Pon("poligonos.txt", entera);
        std::filesystem::remove(carpeta.Ruta() / "045127.CSP.anterior");
    }
}

TEST_F(InfografDeMuestra, AStopLeavesWhatWasWritten)
{
    std::size_t anterior = 0;
    for (const int vez : {3, 20, 60}) {
        SCOPED_TRACE(vez);
        aplicacion.guion.atendidos = 0;
        aplicacion.guion.alAtender = [vez](CDialog& dialogo, int cuantas) {
            if (cuantas == vez)
                dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
        };
        Ejecuta();
        const Textos registros = Registros();
        EXPECT_GE(registros.size(), anterior);
        ASSERT_LT(registros.size(), completos.size());
        EXPECT_TRUE(std::equal(registros.begin(), registros.end(), completos.begin()));
        ASSERT_EQ(aplicacion.guion.cajas.size(), 1U) << "the question, and no closing box";
        const auto& dicho = aplicacion.guion.escritos.observaciones;
        EXPECT_EQ(std::count(dicho.begin(), dicho.end(), CString(observaciones::kDetenido)), 1);
        EXPECT_FALSE(Registros("045127.CSP.anterior").empty()) << "what was there before";
        EXPECT_EQ(carpeta.Lee("045127.ERR"), "");
        anterior = registros.size();
    }
    EXPECT_GT(anterior, 30U);
}

TEST_F(InfografDeMuestra, NoOutputFallsOnAnInput)
{
    for (const char* lista : {"045127.CSP", "045127.ERR"}) {
        SCOPED_TRACE(lista);
        std::filesystem::remove(carpeta.Ruta() / "045127.CSP");
        carpeta.Pon(lista, "TREN 045127\r\nP001\r\n");
        CVexaAInfografDlg dialogo;
        dialogo.Create(IDD_VEXA_A_INFOGRAF, nullptr);
        dialogo.GetDlgItem(IDC_TREN)->SetWindowText(carpeta.En(lista));
        dialogo.Pulsa(*dialogo.GetDlgItem(IDOK));
        EXPECT_EQ(Cajas().back(), std::string("Imposible crear el archivo ") + lista);
        EXPECT_EQ(carpeta.Lee(lista), "TREN 045127\r\nP001\r\n");
    }
}

TEST_F(InfografDeMuestra, TellsWhatItHasKeptWhereItCannotGoOn)
{
    carpeta.Pon("045127.ERR", "E101: de la vuelta");
    std::filesystem::remove(carpeta.Ruta() / "045127.CSP");
    std::filesystem::create_directory(carpeta.Ruta() / "045127.CSP");
    Ejecuta();
    EXPECT_EQ(Cajas(), Textos{"Imposible crear el archivo 045127.CSP"});
    const Textos dicho = Observaciones();
    ASSERT_EQ(dicho.size(), 1U);
    EXPECT_EQ(dicho[0], "Lo que había en 045127.ERR queda en " +
                            ansi::AUtf8(carpeta.En("045127.ERR.anterior")));
}

TEST_F(InfografDeMuestra, TellsWhatItCannotOpenOrCreate)
{
    const struct {
        const char* motivo;
        const char* lista; ///< null: there is none
        const char* carpetaEnMedio;
        const char* caja; ///< empty: none
        const char* csp;  ///< null: a folder is in its way
    } casos[] = {
        {"no list", nullptr, "", "El archivo poligonos.txt no existe", "antes"},
        {"no log", "TREN 045127\r\n", "045127.ERR", "Imposible crear el archivo 045127.ERR",
         "antes"},
        {"no records", "TREN 045127\r\n", "045127.CSP", "Imposible crear el archivo 045127.CSP",
         nullptr},
        {"a list of its first line only", "TREN 045127\r\n", "", "", ""},
        {"an empty entry", "TREN 045127\r\n\r\n", "", "El archivo .BIN no existe", ""},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        for (const char* nombre : {"045127.ERR", "045127.CSP", "poligonos.txt"})
            std::filesystem::remove_all(carpeta.Ruta() / nombre);
        if (caso.csp != nullptr)
            carpeta.Pon("045127.CSP", "antes");
        if (caso.lista != nullptr)
            carpeta.Pon("poligonos.txt", caso.lista);
        if (*caso.carpetaEnMedio != '\0')
            std::filesystem::create_directory(carpeta.Ruta() / caso.carpetaEnMedio);
        Ejecuta();
        EXPECT_EQ(Cajas(), *caso.caja != '\0' ? Textos{caso.caja} : Textos{});
        if (caso.csp != nullptr)
            EXPECT_EQ(carpeta.Lee("045127.CSP"), caso.csp);
        else
            EXPECT_EQ(carpeta.Lee("045127.ERR"), "") << "the log that was created stays";
    }
}
