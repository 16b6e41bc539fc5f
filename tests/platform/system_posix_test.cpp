#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <gtest/gtest.h>

#include "platform/front_end.h"
#include "platform/run_story.h"
#include "platform/system.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

/// An environment variable for the length of a test; null takes it away.
class CVariable {
public:
    CVariable(const char* nombre, const char* valor) : m_nombre(nombre)
    {
        const char* antes = std::getenv(nombre);
        m_habia = antes != nullptr;
        m_antes = m_habia ? antes : "";
        Pon(valor);
    }
    CVariable(const CVariable&) = delete;
    CVariable& operator=(const CVariable&) = delete;
    ~CVariable() { Pon(m_habia ? m_antes.c_str() : nullptr); }

private:
    void Pon(const char* valor)
    {
        if (valor != nullptr)
            setenv(m_nombre, valor, 1);
        else
            unsetenv(m_nombre);
    }

    const char* m_nombre;
    bool m_habia = false;
    std::string m_antes;
};

/// Puts a program there that anybody may run: the lines of a shell behind its first.
void PonPrograma(const CCarpetaPrueba& carpeta, const char* nombre, const std::string& lineas)
{
    carpeta.Pon(nombre, "#!/bin/sh\n" + lineas);
    fs::permissions(carpeta.Ruta() / nombre, fs::perms::owner_all);
}

/// Makes a page of the arguments that it gets, without their folders.
constexpr const char* kDiceSusArgumentos = "for a; do printf '%s ' \"${a##*/}\"; done > \"$2\"\n";

} // namespace

TEST(Sistema, FindsTheFolderOfTheSettings)
{
    constexpr struct {
        const char* motivo;
        const char* xdg;
        const char* casa;
        const char* carpeta;
    } kCasos[] = {
        {"told", "/ajustes", "/casa", "/ajustes"},
        {"not told", nullptr, "/casa", "/casa/.config"},
        {"told in vain", "", "/casa", "/casa/.config"},
        {"a relative path is to be passed over", "ajustes", "/casa", "/casa/.config"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        const CVariable xdg("XDG_CONFIG_HOME", caso.xdg);
        const CVariable casa("HOME", caso.casa);
        EXPECT_EQ(sistema::CarpetaAjustes(), caso.carpeta);
    }
    const CVariable xdg("XDG_CONFIG_HOME", nullptr);
    for (const char* nada : {static_cast<const char*>(nullptr), ""}) {
        const CVariable casa("HOME", nada);
        EXPECT_TRUE(sistema::CarpetaAjustes().is_absolute()) << "not in the municipality's folder";
    }
}

TEST(Sistema, NotesAnInterruptionAndTheWishToEndAndDiesOfOneMore)
{
    sistema::VigilaSenales(true);
    EXPECT_FALSE(sistema::HuboInterrupcion());
    for (int vez = 0; vez < 2; ++vez) {
        std::raise(SIGINT);
        EXPECT_TRUE(sistema::HuboInterrupcion());
        EXPECT_FALSE(sistema::HuboInterrupcion()) << "it is told once";
        EXPECT_FALSE(sistema::HayQueAcabar());
    }
    const auto llegan = [](std::initializer_list<int> senales, const auto& luego) {
        for (const int senal : senales)
            std::raise(senal);
        luego();
    };
    constexpr auto kNada = [] {};
    constexpr auto kAcaba = [] {
        std::fputs(sistema::HayQueAcabar() ? "hay que acabar" : "sigue", stderr);
        sistema::OlvidaSenales();
    };
    using testing::KilledBySignal;
    EXPECT_EXIT(llegan({SIGTERM}, kAcaba), KilledBySignal(SIGTERM), "hay que acabar");
    EXPECT_EXIT(llegan({SIGHUP}, kAcaba), KilledBySignal(SIGHUP), "hay que acabar");
    EXPECT_EXIT(llegan({SIGINT, SIGINT}, kAcaba), KilledBySignal(SIGINT), "hay que acabar");
    EXPECT_EXIT(llegan({SIGINT, SIGINT, SIGINT}, kNada), KilledBySignal(SIGINT), "");
    EXPECT_EXIT(llegan({SIGHUP, SIGHUP}, kAcaba), KilledBySignal(SIGHUP), "hay que acabar")
        << "a terminal's, and its shell's";
    EXPECT_EXIT(llegan({SIGHUP, SIGTERM}, kNada), KilledBySignal(SIGTERM), "");
    sistema::OlvidaSenales();
    for (const int senal : {SIGINT, SIGTERM, SIGHUP})
        EXPECT_EXIT(std::raise(senal), KilledBySignal(senal), "") << "as usual again";
}

TEST(Sistema, TakesAnInterruptionForTheEndWhereNobodyCanBeAsked)
{
    EXPECT_EXIT(
        {
            sistema::VigilaSenales(false);
            std::raise(SIGINT);
            if (sistema::HayQueAcabar() && !sistema::HuboInterrupcion())
                sistema::OlvidaSenales();
            std::_Exit(0);
        },
        testing::KilledBySignal(SIGINT), "");
}

TEST(Sistema, PassesOverASignalThatTheProcessWasStartedToPassOver)
{
    const auto antes = std::signal(SIGINT, SIG_IGN);
    for (const bool vigila : {true, false}) {
        vigila ? sistema::VigilaSenales(true) : sistema::OlvidaSenales();
        std::raise(SIGINT);
        std::raise(SIGINT);
        EXPECT_FALSE(sistema::HuboInterrupcion());
        EXPECT_FALSE(sistema::HayQueAcabar());
    }
    std::signal(SIGINT, antes);
}

TEST(System, RunsAProgramAndTellsWhatItCameTo)
{
    const std::filesystem::path sh = sistema::BuscaPrograma("sh");
    ASSERT_FALSE(sh.empty());
    EXPECT_EQ(sistema::Ejecuta(sh, {"-c", "exit 3"}), 3);
    EXPECT_EQ(sistema::Ejecuta(sh, {"-c", "test \"$1\" = 'a b' && ! read x", "sh", "a b"}), 0)
        << "arguments stay whole, and nothing is read";
    EXPECT_EQ(sistema::Ejecuta(sh, {"-c", "kill -9 $$"}), std::nullopt);
    EXPECT_EQ(sistema::Ejecuta("/no/hay", {}), std::nullopt);
}

TEST(System, LooksForAProgramInThePath)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("mio", "#!/bin/sh\n");
    const std::string path = "/no/hay::" + carpeta.Ruta().string();
    const CVariable variable("PATH", path.c_str());
    EXPECT_EQ(sistema::BuscaPrograma("mio"), "") << "nobody may run it";
    std::filesystem::permissions(carpeta.Ruta() / "mio", std::filesystem::perms::owner_all);
    EXPECT_EQ(sistema::BuscaPrograma("mio"), carpeta.Ruta() / "mio");
    EXPECT_EQ(sistema::BuscaPrograma("platform_test"),
              sistema::FicheroPrograma().parent_path() / "platform_test");
}

TEST(System, TakesNoProgramOfTheFolderThatSomebodyWorksIn)
{
    const CCarpetaPrueba carpeta;
    for (const char* nombre : {"mio", "bin/mio"})
        PonPrograma(carpeta, nombre, "");
    const CEnCarpeta aqui(carpeta.Ruta());
    for (const char* path : {"", ":", ".", "bin", "./bin", ":/no/hay:.:bin:"}) {
        const CVariable variable("PATH", path);
        EXPECT_EQ(sistema::BuscaPrograma("mio"), "") << path;
    }
}

TEST(RelatoProceso, OffersATrialBetweenRunsWhereItsProgramIsThere)
{
    const CCarpetaPrueba carpeta;
    const CVariable variable("PATH", carpeta.Ruta().c_str());
    EXPECT_FALSE(CRelatoProceso("informe", true).OfreceEnsayo()) << "there is no such program";
    PonPrograma(carpeta, "informe", kDiceSusArgumentos);
    EXPECT_FALSE(CRelatoProceso("informe").OfreceEnsayo()) << "not every run can be tried";
    CRelatoProceso relato("informe", true);
    EXPECT_TRUE(relato.OfreceEnsayo());
    EXPECT_EQ(relato.Ensayo({"--ensayo", "--con", "tabla", carpeta.En("lista.txt")}).hace(),
              carpeta.En("lista_ensayo.html"));
    EXPECT_EQ(carpeta.Lee("lista_ensayo.html"),
              "--html lista_ensayo.html --ensayo --con tabla -- lista.txt ");
    EXPECT_TRUE(relato.Ensayo({"--ensayo", ""}).hace().IsEmpty()) << "no list is named";
    relato.Avanza({}, 0);
    EXPECT_FALSE(relato.OfreceEnsayo());
    relato.Termina({}, {});
    EXPECT_TRUE(relato.OfreceEnsayo());
}

TEST(RelatoProceso, OffersTheReportWhereItsProgramIsThere)
{
    const CCarpetaPrueba carpeta;
    const auto termina = [&](const char* log) {
        CRelatoProceso relato("informe");
        relato.Termina({}, {carpeta.En(log), {carpeta.En("salida")}, {carpeta.En("entrada")}, {}});
        return relato;
    };
    carpeta.Pon("a.ERR", "");
    carpeta.Pon("salida", "");
    const CVariable variable("PATH", carpeta.Ruta().c_str());
    EXPECT_TRUE(termina("a.ERR").DeInforme().IsEmpty());
    PonPrograma(carpeta, "informe", kDiceSusArgumentos);
    EXPECT_TRUE(termina("no_hay.ERR").DeInforme().IsEmpty());
    const CRelatoProceso relato = termina("a.ERR");
    EXPECT_EQ(relato.DeInforme(), carpeta.En("a.ERR"));
    EXPECT_EQ(relato.Informe().hace(), carpeta.En("a.html"));
    EXPECT_EQ(carpeta.Lee("a.html"), "--html a.html --con entrada --escrito salida -- a.ERR ");
    for (const int estado : {0, 1, 2}) {
        PonPrograma(carpeta, "informe", "exit " + std::to_string(estado) + "\n");
        EXPECT_TRUE(relato.Informe().hace().IsEmpty()) << "the page that is there is another run's";
    }
    PonPrograma(carpeta, "informe", "echo \"$*\" > \"$2\"; exit 1\n");
    EXPECT_EQ(relato.Informe().hace(), carpeta.En("a.html")) << "written in the older one's place";
    CRelatoProceso otro("informe"); // a run that was stopped, with a page of another name
    otro.Termina({}, {carpeta.En("a.ERR"), {}, {}, {}, false, carpeta.En("otra.html")});
    EXPECT_EQ(otro.Informe().hace(), carpeta.En("otra.html"));
    EXPECT_THAT(carpeta.Lee("otra.html"), testing::HasSubstr(" --detenido -- "));
}
