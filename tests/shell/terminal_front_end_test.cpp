#include "platform/terminal/terminal_front_end.h"

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "platform/dialog.h"
#include "platform/html_help.h"
#include "platform/system.h"
#include "resources/program_resources.h"
#include "tests/support/files.h"
#include "tests/support/interruption.h"
#include "vexa_libs/cversion_app.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

// The tests' own standard input is no terminal, so nothing here waits for anybody.

TEST(FrontalTerminal, PrintsABoxWhereAScriptLooksForIt)
{
    const struct {
        const char* motivo;
        const char* texto;
        UINT flags;
        int respuesta;
        const char* salida;
        const char* errores;
    } casos[] = {
        {"a message", "Número 1.\n\nFin\n"_ansi, MB_OK, IDOK, "[Título]\nNúmero 1.\n\nFin\n\n", ""},
        {"an error", "no existe", MB_ICONERROR, IDOK, "", "[Título]\nno existe\n\n"},
        {"a name in UTF-8 passes", "El archivo Peñuela.txt", MB_ICONERROR, IDOK, "",
         "[Título]\nEl archivo Peñuela.txt\n\n"},
        {"a question", "¿ Sí ?"_ansi, MB_YESNO | MB_ICONQUESTION, IDYES,
         "[Título]\n¿ Sí ? (s/n) \n\n", ""},
        {"whether to try again", "¿ Otra vez ?"_ansi, MB_RETRYCANCEL | MB_ICONWARNING, IDRETRY,
         "[Título]\n¿ Otra vez ? (s/n) \n\n", ""},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        CFrontalTerminal frontal;
        EXPECT_EQ(frontal.Caja(caso.texto, "Título"_ansi, caso.flags), caso.respuesta);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), caso.salida);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), caso.errores);
    }
}

TEST(FrontalTerminal, PrintsTheHelpThatStandsBesideTheHelpFile)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("campiva.txt", "El manual.\n");
    carpeta.Pon("Ayuda IDC.txt", ".topic 7\r\nM\xF3"
                                 "dulos.\r\n");
    const CString fichero = carpeta.En("campiva.chm");
    int fallidos = 0;
    const auto visto = [&](const auto& accion) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        CFrontalTerminal frontal;
        accion(frontal);
        fallidos += frontal.Guion().fallidos;
        const std::string errores = testing::internal::GetCapturedStderr();
        return testing::internal::GetCapturedStdout() + "|" + errores;
    };
    const auto control = [&](const CString& donde, UINT id) {
        return visto([&](CFrontalTerminal& frontal) {
            frontal.MuestraAyudaControl(donde + "::Ayuda IDC.txt", {id, {}, 0});
        });
    };
    EXPECT_EQ(visto([&](CFrontalTerminal& f) { f.MuestraAyuda(fichero); }), "El manual.\n|");
    EXPECT_EQ(control(fichero, 7), "Módulos.\n|");
    EXPECT_EQ(fallidos, 0);
    EXPECT_EQ(control(fichero, 8), "|La ayuda no dice nada del control 8.\n");
    EXPECT_EQ(control("no_hay/campiva.chm", 7),
              "|No se encuentra la ayuda en \"no_hay/Ayuda IDC.txt\".\n");
    EXPECT_EQ(visto([](CFrontalTerminal& f) { f.MuestraAyuda("no_hay/campiva.chm"); }),
              "|No se encuentra la ayuda en \"no_hay/campiva.txt\".\n");
    EXPECT_EQ(fallidos, 3);
}

TEST(FrontalTerminal, ACtrlCIsForTheRunOrForTheBoxOfItsMoment)
{
    if (!PuedeInterrumpir())
        GTEST_SKIP();
    const CCarpetaPrueba carpeta;
    CFrontalTerminal frontal;
    CVersionApp aplicacion;
    aplicacion.Arranca(frontal, RecursosDelPrograma(), {}, {});
    testing::internal::CaptureStdout();
    for (const bool conCaja : {true, false}) {
        CVexaAInfografDlg dialogo;
        dialogo.Create(IDD_VEXA_A_INFOGRAF, nullptr);
        sistema::VigilaSenales(true); // a run begins: from here on it is noted
        Interrumpe();
        if (conCaja)
            frontal.Caja("¿ Sí ?"_ansi, "Título"_ansi, MB_YESNO);
        dialogo.AtiendeUno();
        sistema::OlvidaSenales();
        EXPECT_EQ(dialogo.Terminado(), !conCaja);
    }
    testing::internal::GetCapturedStdout();
}
