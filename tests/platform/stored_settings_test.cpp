// What the stored settings promise wherever they live; what a file of them or the registry looks
// like stands in a test of its own.

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "platform/files/cfile.h"
#include "tests/support/scripted_front_end.h"

using AjustesGuardados = ConAplicacion;

TEST_F(AjustesGuardados, ComeBackAsTheyWereStored)
{
    EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "por defecto"), CString("por defecto"));
    const std::string larga(40000, 'r'); // as long as no path is
    for (const char* valor :
         {"", "  con blancos  ", "a=b;[c]", "C:\\peña\\日本.txt", larga.c_str()}) {
        EXPECT_NE(aplicacion.WriteProfileString("Uno", "Clave", valor), 0);
        EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"), CString(valor));
    }
    EXPECT_NE(aplicacion.WriteProfileInt("Dos", "Clave", -7), 0);
    EXPECT_NE(aplicacion.WriteProfileInt("Uno", "Clave2", 3), 0);
    EXPECT_EQ(aplicacion.GetProfileInt("Dos", "Clave", 1), -7);
    EXPECT_EQ(aplicacion.GetProfileInt("Dos", "Clave2", 1), 1) << "a key of another section";
}

TEST_F(AjustesGuardados, ANumberIsTakenWholeOrNotAtAll)
{
    constexpr int kDefecto = 77;
    constexpr struct {
        const char* texto;
        int valor;
    } kCasos[] = {
        {"0", 0},
        {"-7", -7},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"2147483648", kDefecto},
        {"", kDefecto},
        {"x", kDefecto},
        {"5x", kDefecto},
        {"5 ; nota", 5},
        {"5x ; nota", kDefecto},
        {" 5", kDefecto},
        {"1.5", kDefecto},
        {"0x10", kDefecto},
    };
    for (const auto& caso : kCasos) {
        aplicacion.WriteProfileString("Uno", "Clave", caso.texto);
        EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", kDefecto), caso.valor) << caso.texto;
    }
}

TEST_F(AjustesGuardados, SeveralValuesComeInTheOrderOfTheirKeys)
{
    aplicacion.WriteProfileString("Uno", "Clave", "a");
    aplicacion.WriteProfileString("Uno", "Vacia", "");
    aplicacion.WriteProfileString("Dos", "Otra", "b");
    const CString claves[] = {"Vacia", "Otra", "Clave"};
    const std::vector<std::optional<CString>> esperados = {CString(), std::nullopt, CString("a")};
    EXPECT_EQ(aplicacion.LeeAjustes("Uno", claves), esperados);
    EXPECT_TRUE(aplicacion.LeeAjustes("Uno", {}).empty());
}

TEST_F(AjustesGuardados, WithoutACompanyTheStoreIsNotEvenLookedAt)
{
    aplicacion.WriteProfileInt("Uno", "Clave", 1);
    aplicacion.SetRegistryKey("");
    EXPECT_EQ(aplicacion.WriteProfileInt("Uno", "Clave", 2), 0);
    EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", 8), 8);
    const CString claves[] = {"Clave"};
    EXPECT_EQ(aplicacion.LeeAjustes("Uno", claves), std::vector<std::optional<CString>>(1));
    aplicacion.SetRegistryKey("VexaSoft");
    EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", 8), 1);
}
