#include "shell/campiva_app.h"

#include <gtest/gtest.h>

#include "platform/dialog.h"
#include "resources/program_resources.h"
#include "resources/resource_ids.h"
#include "shell/command_line.h"
#include "shell/exit_status.h"
#include "shell/start_up.h"
#include "tests/support/files.h"
#include "tests/support/interruption.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_libs/ccadena.h"

namespace {

constexpr CGuionMandatos kPersona{false, 9, 1};

} // namespace

TEST(Ruta, IsChosenByTheTokens)
{
    const struct {
        const char* motivo;
        const char* linea; ///< tokens between tabs
        Ruta ruta;
    } casos[] = {
        {"nothing", "", Ruta::Dialogos},
        {"seven tokens", "0\tb\tc\td\te\tf\tg", Ruta::Dialogos},
        {"an empty name among eight", "0\tb\tc\t\te\tf\tg\th", Ruta::Dialogos},
        {"an unknown selector plays no part in that", "2\tb\tc\td\te\tf\tg", Ruta::Dialogos},
        {"eight tokens", "0\tb\tc\td\te\tf\tg\th", Ruta::CatastroAVexa},
        {"an empty selector reads as 0", "\tb\tc\td\te\tf\tg\th", Ruta::CatastroAVexa},
        {"a word reads as 0", "x\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::CatastroAVexa},
        {"twelve tokens with 0", "0\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::CatastroAVexa},
        {"twelve with 1", "1\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::VexaACatastro},
        {"more are passed over", "1\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl\tm", Ruta::VexaACatastro},
        {"one of the last four missing", "1\tb\tc\td\te\tf\tg\th\ti\t\tk\tl", Ruta::Ninguna},
        {"eight with 1", "1\tb\tc\td\te\tf\tg\th", Ruta::Ninguna},
        {"twelve with 2", "2\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::Ninguna},
        {"a number with a tail", "1a\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::VexaACatastro},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CTokens tokens;
        CCadena(caso.linea).Leetira(kTokens, tokens.data());
        EXPECT_EQ(EligeRuta(tokens), caso.ruta);
    }
}

TEST(Mandato, HandsOverEveryArgumentAsItCame)
{
    const struct {
        const char* motivo;
        std::vector<std::string> argumentos;
    } casos[] = {
        {"nothing", {}},
        {"names with blanks and without", {"0", "a b", "c"}},
        {"tabs at all places of one", {"0", "\ta\t\tb\t", "c"}},
        {"an empty one and a tab alone", {"", "\t", "", "c"}},
        {"a control character that stands for nothing", {"\x1f\x01", "c"}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CTokens tokens = ParteMandato(UneArgumentos(caso.argumentos));
        for (std::size_t i = 0; i < kTokens; ++i)
            EXPECT_EQ(tokens[i], CString(i < caso.argumentos.size() ? caso.argumentos[i] : ""));
    }
}

TEST(Opciones, AreAnsweredAloneAndOthersAreTold)
{
    const struct {
        std::vector<std::string> argumentos;
        std::optional<int> estado;
    } casos[] = {
        {{"campiva", "--help"}, estado::kHecho},
        {{"campiva", "-h"}, estado::kHecho},
        {{"campiva", "--version"}, estado::kHecho},
        {{"campiva", "--nada"}, estado::kNadaPedido},
        {{"campiva", "--help", "0"}, estado::kNadaPedido},
        {{"campiva", "--"}, estado::kNadaPedido},
        {{"campiva", "-x"}, std::nullopt},
        {{"campiva", "0", "--help"}, std::nullopt},
        {{"campiva"}, std::nullopt},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.argumentos.back());
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        EXPECT_EQ(AtiendeOpcion(caso.argumentos), caso.estado);
        EXPECT_EQ(testing::internal::GetCapturedStdout().empty(), caso.estado != estado::kHecho);
        EXPECT_EQ(testing::internal::GetCapturedStderr().empty(),
                  caso.estado != estado::kNadaPedido);
    }
}

TEST(CampivaApp, EndsWithAStatusThatAScriptCanRead)
{
    const CCarpetaPrueba carpeta;
    const std::string buena(std::string_view(carpeta.Pon("a.txt", "PJ045127   00001LA ERA\r\n")));
    std::string tablas;
    for (const char* tabla : {"m", "t", "p", "s", "j", "c"})
        tablas += "\t" + std::string(std::string_view(carpeta.En(tabla)));
    const std::string lote = "0\t" + buena + tablas;
    const struct {
        const char* motivo;
        std::string linea;
        int estado;
        CGuionMandatos mandatos = kPersona;
        const char* detiene = nullptr; ///< the status line at which the user stops the run
        bool queja = false;            ///< a dialog that is shown tells an error in a box
    } casos[] = {
        {"a run", lote, estado::kHecho, {}},
        {"a run takes no commands", lote, estado::kHecho, {true, 0, 0}},
        {"a run with an error box", "0\t" + buena + "x" + tablas, estado::kHuboError, {}},
        {"a run that was stopped", lote, estado::kDetenido, {}, "Leyendo Base de datos"},
        {"a stop that came too late", lote, estado::kHecho, {}, "Grabando fichero de titulares"},
        {"no route", "5\t" + buena + tablas, estado::kNadaPedido, {}},
        {"a person saw what went wrong", "", estado::kHecho, kPersona, nullptr, true},
        {"a script that did all", "", estado::kHecho, {true, 5, 0}},
        {"a script that met an error box", "", estado::kHuboError, {true, 5, 0}, nullptr, true},
        {"a script with a command that failed", "", estado::kHuboError, {true, 5, 1}},
        {"a script without a command", "", estado::kNadaPedido, {true, 0, 0}},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CCampivaApp aplicacion;
        CGuion guion;
        guion.mandatos = caso.mandatos;
        bool detenido = false;
        guion.alAtender = [&](CDialog& dialogo, int) {
            if (caso.detiene == nullptr || detenido || guion.estados.empty() ||
                guion.estados.back() != caso.detiene)
                return;
            detenido = true;
            dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
        };
        guion.alMostrar = [&](CDialog& dialogo) {
            if (caso.queja)
                dialogo.MessageBox("no existe", "Error", MB_ICONERROR);
        };
        aplicacion.Arranca(guion, RecursosDelPrograma(), caso.linea, "/usr/bin/campiva.HLP");
        EXPECT_EQ(EstadoSalida(aplicacion), caso.estado);
        if (caso.estado == estado::kNadaPedido) {
            EXPECT_TRUE(guion.cajas.empty());
        }
        EXPECT_EQ(aplicacion.m_pszHelpFilePath, CString("/usr/bin/campiva.chm"));
    }
}

TEST(CampivaApp, TellsAScriptThatAStopCameFromOutsideInItsDialogsToo)
{
    if (!PuedeInterrumpir())
        GTEST_SKIP();
    const CCarpetaPrueba carpeta;
    CCampivaApp aplicacion;
    CGuion guion;
    guion.mandatos = {true, 3, 0};
    guion.alMostrar = [&](CDialog& dialogo) {
        if (CControl* entrada = dialogo.GetDlgItem(IDC_ENTRADA))
            entrada->SetWindowText(carpeta.Pon("a.txt", "PJ045127   00001LA ERA\r\n"));
        for (const UINT tabla : {IDC_MODULOS, IDC_TITULARES, IDC_PARCELAS, IDC_SUBPARCELAS,
                                 IDC_PARAJES, IDC_COTITULARES})
            if (CControl* salida = dialogo.GetDlgItem(tabla))
                salida->SetWindowText(carpeta.En(std::to_string(tabla)));
        dialogo.SendMessage(WM_COMMAND, IDOK, 0);
    };
    guion.alAtender = [](CDialog&, int vez) {
        if (vez == 1)
            Interrumpe();
    };
    aplicacion.Arranca(guion, RecursosDelPrograma(), {}, {});
    EXPECT_EQ(EstadoSalida(aplicacion), estado::kDetenido);
}
