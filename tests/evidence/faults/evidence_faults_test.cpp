#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <new>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "evidence/report/report.h"
#include "evidence/report/writing/batch_outputs.h"
#include "evidence/report/writing/csv.h"
#include "evidence/report/writing/geojson.h"
#include "evidence/report/writing/page_parts.h"
#include "evidence/show_drawing/show_drawing.h"
#include "generator/cadastre_lines.h"
#include "generator/drawing_files.h"
#include "platform/files/set_healing.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// Reports and printed drawings while, one after another, each call to the system fails, once or for
// good, and each allocation finds no memory. What comes out is what comes out of a clean run, or a
// fault is told and the outputs are what they were: never a page that says something else.

namespace fs = std::filesystem;

namespace {

using Que = CPlanDeFallos::Que;
using Alcance = CPlanDeFallos::Alcance;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kSinMemoria = "no hay memoria";

/// How a run came out.
struct CResultado {
    bool hecho = false; ///< it says so by its status
    std::string escrito;
    std::string quejas;
};

using CCorre = std::function<CResultado(const CCarpetaPrueba&, const CPlanDeFallos&)>;

/// What a report comes to that is made under a plan.
CResultado Haz(const CPlanDeFallos& plan, const std::function<informe::CResultado()>& hazlo)
{
    CResultado resultado;
    Plan() = plan;
    try {
        const informe::CResultado hecho = hazlo();
        Plan().que = Que::Nada;
        resultado.escrito = hecho.resumen;
        for (const std::string& queja : hecho.quejas)
            resultado.quejas += queja + "\n";
    } catch (const std::bad_alloc&) {
        Plan().que = Que::Nada;
        resultado.quejas = kSinMemoria;
    }
    resultado.hecho = resultado.quejas.empty();
    return resultado;
}

/// The report of a log in the folder, as its program makes it.
CCorre Informe(const char* registro, const char* geojson)
{
    return [=](const CCarpetaPrueba& c, const CPlanDeFallos& plan) {
        informe::COpciones opciones;
        opciones.csv = c.En("mensajes.csv");
        if (geojson != nullptr)
            opciones.geojson = c.En(geojson);
        return Haz(plan, [&] { return informe::HazInforme(c.En(registro), opciones, {"1", 0}); });
    };
}

/// The summary of a batch in the folder.
CResultado Resumen(const CCarpetaPrueba& c, const CPlanDeFallos& plan)
{
    informe::COpciones opciones;
    opciones.resumen = c.En("r");
    return Haz(plan, [&] { return informe::HazResumen(opciones, {"1", 0}); });
}

/// A drawing of the folder, printed.
CCorre Impreso(const char* nombre)
{
    return [=](const CCarpetaPrueba& c, const CPlanDeFallos& plan) {
        const std::vector<std::string> argumentos = {"show_drawing", c.En(nombre).GetString()};
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Plan() = plan;
        const int estado = EnseñaDibujo(argumentos);
        Plan().que = Que::Nada;
        CResultado resultado{estado == EXIT_SUCCESS, testing::internal::GetCapturedStdout(),
                             testing::internal::GetCapturedStderr()};
        if (!resultado.hecho)
            resultado.escrito.clear(); // of what it came to before, nothing is promised
        return resultado;
    };
}

/// What an output held before: something that the report may replace.
std::string DeAntes(std::string_view salida)
{
    if (salida.ends_with("resumen.csv"))
        return std::string(informe::kPrincipioHojaLote) + "antes";
    if (salida.ends_with(".csv"))
        return std::string(informe::kPrincipioMensajes) + "antes";
    if (salida.ends_with(".geojson"))
        return std::string(informe::CGeoJson::kPrincipio) + "antes";
    std::string pagina;
    informe::EscribeDocumento([&](std::string_view utf8) { pagina += utf8; }, "antes", "",
                              [](informe::CMarcas&) {});
    return pagina;
}

/// A municipality that went out and came back.
void PonMunicipio(const CCarpetaPrueba& c)
{
    CAplicacionPrueba aplicacion;
    const auto municipio = sintetico::Genera({.parcelas = 3, .poligonos = 1, .subparcelas = 1}, 7);
    const auto lineas = sintetico::LineasCatastro(municipio).Todas();
    sintetico::GrabaLineas(c.En("entrada.txt"), lineas);
    CCampivaAVexaDlg().EjecutaLote(c.En("entrada.txt"), c.En("Modulos.txt"), c.En("Titulares.txt"),
                                   c.En("Parcelas.txt"), c.En("Subparcelas.txt"),
                                   c.En("Parajes.txt"), c.En("Cotitulares.txt"), nullptr);
    ASSERT_TRUE(sintetico::GrabaDibujos(c.Ruta().string(), municipio));
    CVexaACampiva2Dlg().EjecutaLote(c.En("Modulos.txt"), c.En("Titulares.txt"),
                                    c.En("Parcelas.txt"), c.En("Subparcelas.txt"),
                                    c.En("Parajes.txt"), c.En("Cotitulares.txt"),
                                    c.En("poligonos.txt"), c.En("ortos.TOP"), 0, 1, 1, nullptr);
}

/// As where the way on took the way back's log, and kept it beside its own.
void GuardaRegistro(const CCarpetaPrueba& c)
{
    const fs::path guardado = c.Ruta() / "045127.ERR.anterior";
    fs::rename(c.Ruta() / "045127.ERR", guardado);
    c.Pon("045127.ERR", "");
    fs::last_write_time(guardado, fs::last_write_time(c.Ruta() / "045127.ERR"));
}

/// A batch over the municipality, out and back.
void PonLote(const CCarpetaPrueba& c)
{
    fs::create_directories(c.Ruta() / "r/salidas");
    c.Pon("r/trabajos.tsv",
          "# carpeta\t" + c.Ruta().string() + "\nida\t.\nvuelta\t.\tno_en_bd=1\n");
    c.Pon("r/trabajos.log", "0\t0\t0\t0.1\tida\t.\n1\t0\t0\t0.1\tvuelta\t.\tno_en_bd=1\n");
    c.Pon("r/estado.tsv", "");
    c.Pon("r/salidas/2.err", "dicho");
}

const struct CCaso {
    const char* nombre;
    std::vector<const char*> salidas;
    CCorre corre;
    void (*prepara)(const CCarpetaPrueba& c) = nullptr;
    bool enLaPagina = false; ///< what can't be read is told there, by its job
} kCasos[] = {
    {"WayOut", {"entrada.html", "mensajes.csv"}, Informe("entrada.ERR", nullptr)},
    {"WayBack",
     {"045127.html", "mensajes.csv", "045127.geojson"},
     Informe("045127.ERR", "045127.geojson")},
    {"KeptLog", {"045127.html", "mensajes.csv"}, Informe("045127.ERR", nullptr), GuardaRegistro},
    {"Summary", {"r/resumen.html", "r/resumen.csv"}, Resumen, PonLote, true},
    {"Drawing", {}, Impreso("001.BIN")},
    {"Topology", {}, Impreso("001.SUB")},
    {"Sheets", {}, Impreso("ortos.TOP")},
};

class FallosDeEvidencia : public testing::TestWithParam<std::size_t> {
protected:
    FallosDeEvidencia()
    {
        PonMunicipio(carpeta);
        if (caso.prepara != nullptr)
            caso.prepara(carpeta);
        Repon();
        antes = Salidas();
        limpio = caso.corre(carpeta, {});
        salidasLimpias = Salidas();
        EXPECT_TRUE(limpio.hecho) << limpio.quejas;
        EXPECT_FALSE(limpio.escrito.empty());
        EXPECT_TRUE(caso.salidas.empty() || salidasLimpias != antes);
    }

    void Repon() const
    {
        for (const char* salida : caso.salidas)
            carpeta.Pon(salida, DeAntes(salida));
    }
    std::string Salidas() const
    {
        std::string todas;
        for (const char* salida : caso.salidas)
            todas += carpeta.Lee(salida);
        return todas;
    }
    std::ptrdiff_t Restos() const
    {
        return std::count_if(fs::directory_iterator(carpeta.Ruta()), {}, [](const auto& fichero) {
            return fichero.path().string().find(".~") != std::string::npos;
        });
    }
    void Sana() const
    {
        std::vector<CString> nombres;
        for (const char* salida : caso.salidas)
            nombres.push_back(carpeta.En(salida));
        SanaConjuntos(nombres);
    }
    /// Carries the case out under the plan, and looks at what came of it.
    void Prueba(const CPlanDeFallos& plan, const char* razon)
    {
        Repon();
        const CResultado resultado = caso.corre(carpeta, plan);
        const bool siempre = plan.alcance == Alcance::YTodas;
        if (siempre && !resultado.hecho)
            Sana(); // nothing could be given back, nor what stands whole be put away
        const std::string salidas = Salidas();
        if (caso.enLaPagina && (salidas.find(razon) != std::string::npos ||
                                salidas.find("no se puede leer") != std::string::npos)) {
            ++fallados;
        } else if (resultado.hecho) {
            ++hechos;
            EXPECT_TRUE(resultado.escrito == limpio.escrito) << resultado.escrito;
            EXPECT_TRUE(salidas == salidasLimpias) << "another page";
        } else {
            ++fallados;
            EXPECT_THAT(resultado.quejas, HasSubstr(razon));
            EXPECT_EQ(resultado.escrito, "");
            EXPECT_TRUE(salidas == antes || (siempre && salidas == salidasLimpias))
                << "outputs under a fault";
        }
        if (Restos() == 0)
            return;
        EXPECT_TRUE(caso.corre(carpeta, {}).hecho);
        EXPECT_TRUE(Salidas() == salidasLimpias) << "the next one";
        EXPECT_EQ(Restos(), 0);
    }

    const CCaso& caso = kCasos[GetParam()];
    const CCarpetaPrueba carpeta;
    CResultado limpio;
    std::string salidasLimpias;
    std::string antes;
    int hechos = 0;
    int fallados = 0;
};

} // namespace

TEST(FallosDelEnsayo, AreOfTheCopyThatHasNoRoom)
{
    const CCarpetaPrueba carpeta;
    PonMunicipio(carpeta);
    informe::COpciones opciones;
    opciones.ensayo = true;
    for (const int error : {EDQUOT, ENOSPC, EIO}) {
        Plan() = {.que = Que::FallaLlamada, .error = error, .clase = sistema::Llamada::Escribir};
        const auto resultado = informe::HazInforme(carpeta.En("poligonos.txt"), opciones, {"1", 0});
        Plan() = {};
        ASSERT_EQ(resultado.quejas.size(), 1U);
        EXPECT_THAT(resultado.quejas.front(),
                    testing::MatchesRegex("Imposible escribir .*campiva-ensayo.*"));
    }
}

TEST_P(FallosDeEvidencia, WhatAnotherWritesToAnOutputMeanwhileStaysAndIsTold)
{
    if (caso.salidas.empty())
        return;
    const std::string salida = caso.salidas.back();
    caso.corre(carpeta, {});
    const long cuantas = Plan().llamadas;
    int dichos = 0;
    for (long en = 1; en <= cuantas && !HasFailure(); ++en) {
        SCOPED_TRACE(testing::Message() << "before call " << en << " of " << cuantas);
        Repon();
        CPlanDeFallos plan;
        plan.entretanto = [&] { carpeta.Pon(salida, "de otro"); };
        plan.entretantoEn = en;
        const CResultado resultado = caso.corre(carpeta, plan);
        const bool queda = fs::remove(carpeta.Ruta() / (salida + ".anterior"));
        EXPECT_EQ(resultado.quejas.find(salida + ".anterior") != std::string::npos, queda)
            << resultado.quejas;
        dichos += queda ? 1 : 0;
    }
    EXPECT_GT(dichos, 3);
}

TEST_P(FallosDeEvidencia, ASignalLeavesNothingHalfWritten)
{
    if (caso.salidas.empty())
        return;
    caso.corre(carpeta, {});
    const long cuantas = Plan().llamadas;
    for (long en = 1; en <= cuantas && !HasFailure(); en += kPasoDeMuertes) {
        SCOPED_TRACE(testing::Message() << "at call " << en << " of " << cuantas);
        Repon();
        CPlanDeFallos plan;
        plan.entretanto = [] { std::raise(SIGTERM); };
        plan.entretantoEn = en;
        EXPECT_EXIT(caso.corre(carpeta, plan), testing::KilledBySignal(SIGTERM), "");
        for (const auto& entrada : fs::recursive_directory_iterator(carpeta.Ruta()))
            EXPECT_THAT(entrada.path().filename().string(), Not(HasSubstr(".~")));
        EXPECT_THAT(Salidas(), AnyOf(antes, salidasLimpias));
    }
}

TEST_P(FallosDeEvidencia, ACallThatFailsIsToldAndChangesNothing)
{
    caso.corre(carpeta, {});
    const long cuantas = Plan().llamadas;
    ASSERT_GT(cuantas, 3);
    const std::pair<int, const char*> errores[] = {{EIO, "Error de entrada/salida"},
                                                   {EACCES, "Permiso denegado"}};
    for (const Alcance alcance : {Alcance::EsaSola, Alcance::YTodas})
        for (const auto& [error, razon] : errores)
            for (long en = 1; en <= cuantas && !HasFailure(); ++en) {
                SCOPED_TRACE(testing::Message()
                             << "call " << en << " of " << cuantas
                             << (alcance == Alcance::YTodas ? " and on" : "") << ": " << razon);
                Prueba({Que::FallaLlamada, en, alcance, error}, razon);
            }
    EXPECT_GT(fallados, hechos);
}

TEST_P(FallosDeEvidencia, WithoutMemoryNothingIsSaid)
{
    caso.corre(carpeta, {Que::FaltaMemoria, -1});
    const long cuantas = Plan().reservas;
    ASSERT_GT(cuantas, 20);
    for (const Alcance alcance : {Alcance::EsaSola, Alcance::YTodas})
        for (long en = 1; en <= cuantas && !HasFailure(); en += 1 + en / 200) {
            SCOPED_TRACE(testing::Message() << "allocation " << en << " of " << cuantas
                                            << (alcance == Alcance::YTodas ? " and on" : ""));
            Prueba({Que::FaltaMemoria, en, alcance}, kSinMemoria);
        }
    EXPECT_GT(fallados, hechos);
}

INSTANTIATE_TEST_SUITE_P(Each, FallosDeEvidencia, testing::Range<std::size_t>(0, std::size(kCasos)),
                         [](const auto& cual) { return kCasos[cual.param].nombre; });
