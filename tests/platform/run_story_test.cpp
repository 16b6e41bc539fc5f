#include "platform/run_story.h"

#include <gtest/gtest.h>

#include "platform/front_end.h"
#include "tests/support/files.h"

namespace {

using namespace std::chrono_literals;

TEST(RelatoProceso, ForetellsAPhaseByItsOwnPace)
{
    constexpr struct {
        const char* motivo;
        std::chrono::milliseconds fase;  ///< its beginning, counted from that of the run
        std::chrono::milliseconds ahora; ///< the same
        int hecho;
        const char* texto;
    } kCasos[] = {
        {"half is done", 0s, 10s, 50, "0:10, quedan 0:10 de esta fase"},
        {"what is left is rounded up", 0s, 10s, 99, "0:10, quedan 0:01 de esta fase"},
        {"earlier phases don't count", 60s, 70s, 20, "1:10, quedan 0:40 de esta fase"},
        {"hours", 0s, 3723s, 50, "1:02:03, quedan 1:02:03 de esta fase"},
        {"too early to tell", 60s, 61s, 50, "1:01"},
        {"nothing done yet", 0s, 10s, 0, "0:10"},
        {"a full bar leaves nothing", 0s, 10s, 100, "0:10"},
        {"a long wait for the first per cent", 0s, 30min, 1, "30:00, quedan 49:30:00 de esta fase"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        const CRelatoProceso::Reloj::time_point inicio(1h);
        CRelatoProceso relato({});
        relato.Avanza(inicio, caso.fase > 0s ? 1 : 0);
        relato.Avanza(inicio + caso.fase, 0);
        relato.Avanza(inicio + caso.ahora, caso.hecho);
        EXPECT_EQ(relato.Texto(), caso.texto);
    }
}

TEST(RelatoProceso, TimeInABoxIsNotTheRuns)
{
    const CRelatoProceso::Reloj::time_point inicio(1h);
    CRelatoProceso relato({});
    relato.Avanza(inicio, 0);
    relato.Descuenta(20s);
    relato.Avanza(inicio + 30s, 50);
    EXPECT_EQ(relato.Texto(), "0:10, quedan 0:10 de esta fase");
}

TEST(RelatoProceso, ForgetsARunWhenAnotherIsAskedFor)
{
    const CCarpetaPrueba carpeta;
    CRelatoProceso relato("platform_test"); // any program that is there
    const std::string antes = relato.Texto();
    EXPECT_NE(antes, "");
    relato.Avanza(CRelatoProceso::Reloj::time_point(1h), 0);
    CEscritos escritos;
    escritos.log = carpeta.Pon("a.ERR", "un aviso\n");
    escritos.salidas = {carpeta.Pon("a.txt", "")};
    escritos.observaciones = {"algo"};
    relato.Termina(CRelatoProceso::Reloj::time_point(1h), escritos);
    EXPECT_EQ(relato.Texto(), "algo");
    EXPECT_EQ(relato.Log(), escritos.log);
    EXPECT_FALSE(relato.Carpeta().IsEmpty());
    EXPECT_EQ(relato.DeInforme(), escritos.log);
    relato.Olvida();
    EXPECT_EQ(relato.Texto(), antes);
    EXPECT_TRUE(relato.Log().IsEmpty());
    EXPECT_TRUE(relato.Carpeta().IsEmpty());
    EXPECT_TRUE(relato.DeInforme().IsEmpty());
}

TEST(Observaciones, StandInAsManyBoxesAsTheyNeed)
{
    const std::string corta(40, 'a');
    const std::string larga(250, 'b');
    const std::string sinFin(5000, 'c');
    const struct {
        const char* motivo;
        std::vector<CString> observaciones;
        std::vector<CString> cajas;
    } kCasos[] = {
        {"nothing to tell", {}, {}},
        {"one", {corta}, {corta}},
        {"a paragraph each", {corta, larga}, {corta + "\n\n" + larga}},
        {"as many as a screen takes",
         {larga, larga, larga, corta, corta},
         {larga + "\n\n" + larga + "\n\n" + larga + "\n\n" + corta + "\n\n" + corta}},
        {"one more",
         {larga, larga, larga, corta, corta, corta},
         {larga + "\n\n" + larga + "\n\n" + larga + "\n\n" + corta + "\n\n" + corta, corta}},
        {"one that fills a screen stands alone", {corta, sinFin, corta}, {corta, sinFin, corta}},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(CajasDeObservaciones(caso.observaciones), caso.cajas);
    }
}

} // namespace
