#include <filesystem>

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "platform/files/cfile.h"
#include "tests/support/scripted_front_end.h"

using Ajustes = ConAplicacion;

namespace {

constexpr const char* kFichero = "config/VexaSoft/Campiva.ini";

} // namespace

TEST_F(Ajustes, StandInSectionsInTheOrderInWhichTheyCame)
{
    aplicacion.WriteProfileString("Uno", "Clave", "peña.txt");
    aplicacion.WriteProfileString("Uno", "Ansi", "Ñ"_ansi);
    aplicacion.WriteProfileInt("Dos", "Clave", -7);
    aplicacion.WriteProfileInt("Uno", "Clave2", 3);
    EXPECT_EQ(carpeta.Lee(kFichero),
              "[Uno]\r\nClave=peña.txt\r\nAnsi=\xD1\r\nClave2=3\r\n\r\n[Dos]\r\nClave=-7\r\n");
}

TEST_F(Ajustes, AHandWrittenFileIsTakenAndKept)
{
    carpeta.Pon(kFichero, "; nota\n[Uno]\nClave=5\nMala=5x\nVacia=\n\n[Otra]\nClave=6\n");
    EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", 1), 5);
    EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Mala", 1), 1) << "no number";
    EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Vacia", 1), 1);
    EXPECT_EQ(aplicacion.GetProfileInt("Otra", "Clave", 1), 6);
    aplicacion.WriteProfileInt("Uno", "Nueva", 9);
    EXPECT_EQ(
        carpeta.Lee(kFichero),
        "; nota\r\n[Uno]\r\nClave=5\r\nMala=5x\r\nVacia=\r\nNueva=9\r\n\r\n[Otra]\r\nClave=6\r\n");
}

TEST_F(Ajustes, WhatAPersonWroteIsRead)
{
    constexpr struct {
        const char* motivo;
        const char* linea;
        const char* valor;
    } kCasos[] = {
        {"blanks around the sign", "Clave = 1", "1"},
        {"blanks and tabs around all", " \tClave\t=\t1 \t", "1"},
        {"small letters", "clave=1", "1"},
        {"blanks that belong to it", "Clave=\"  a \"", "  a "},
        {"a quote inside", "Clave=a\"b", "a\"b"},
        {"nothing", "Clave =", ""},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        carpeta.Pon(kFichero, "\xEF\xBB\xBF [ uno ]\n" + std::string(caso.linea) + "\n");
        EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"), CString(caso.valor));
        const std::string antes = carpeta.Lee(kFichero);
        EXPECT_NE(aplicacion.WriteProfileString("Uno", "Clave", caso.valor), 0);
        EXPECT_EQ(carpeta.Lee(kFichero), antes) << "its owner's line stays";
    }
}

TEST_F(Ajustes, ANoteBehindANumberStaysAsLongAsTheNumberDoes)
{
    constexpr const char* kTexto = "[Uno]\r\nClave=1\t; por la lista\r\nOtra=a.txt # b\r\n";
    carpeta.Pon(kFichero, kTexto);
    EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", 7), 1);
    aplicacion.WriteProfileInt("Uno", "Clave", 1);
    EXPECT_EQ(carpeta.Lee(kFichero), kTexto);
    aplicacion.WriteProfileInt("Uno", "Clave", 0);
    aplicacion.WriteProfileString("Uno", "Otra", "a.txt"); // of a name it is a part
    EXPECT_EQ(carpeta.Lee(kFichero), "[Uno]\r\nClave=0\r\nOtra=a.txt\r\n");
}

TEST_F(Ajustes, AStoreThatCannotBeReadOrHoldAValueLosesNone)
{
    aplicacion.WriteProfileString("Uno", "Clave", "a");
    const std::string antes = carpeta.Lee(kFichero);
    const CAjuste ajustes[] = {
        {"Uno", "Otra", "b"}, {"Uno", "Clave", "dos\nlíneas"}, {"Uno", "Tercera", "c"}};
    for (int vez = 0; vez < 2; ++vez) { // told again where nothing else is to be stored
        try {
            aplicacion.GuardaAjustes(ajustes);
            ADD_FAILURE() << "a value is lost without a word";
        } catch (const CFileException& fallo) {
            EXPECT_EQ(ansi::AUtf8(fallo.Detalle()),
                      "\nLo demás está guardado, pero Clave tiene un fin de línea");
        }
        EXPECT_EQ(carpeta.Lee(kFichero), antes + "Otra=b\r\nTercera=c\r\n");
    }
    for (const std::string marca : {"\xFF\xFE", "\xFE\xFF"}) {
        const std::string enUtf16 = marca + std::string("[\0U\0]\0\r\0\n\0", 10);
        carpeta.Pon(kFichero, enUtf16);
        EXPECT_THROW(aplicacion.GetProfileString("Uno", "Clave", "x"), CFileException);
        EXPECT_EQ(aplicacion.WriteProfileString("Uno", "Clave", "b"), 0);
        EXPECT_EQ(carpeta.Lee(kFichero), enUtf16);
    }
#ifdef __linux__
    std::filesystem::remove(carpeta.Ruta() / kFichero);
    std::filesystem::create_symlink("/proc/self/mem",
                                    carpeta.Ruta() / kFichero); // reads of it fail
    EXPECT_THROW(aplicacion.GetProfileString("Uno", "Clave", "x"), CFileException);
    EXPECT_EQ(aplicacion.WriteProfileString("Uno", "Clave", "b"), 0);
#endif
}

TEST_F(Ajustes, WithoutAPlaceNothingIsStoredAndNothingTold)
{
    carpeta.Pon("config", "a file where the folder should be");
    EXPECT_EQ(aplicacion.WriteProfileInt("Uno", "Clave", 1), 0);
    EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", 8), 8);
    EXPECT_TRUE(aplicacion.guion.cajas.empty());
}

TEST_F(Ajustes, AKeyIsFoundByItsWholeNameInItsSection)
{
    constexpr const char* kTexto = "Clave=fuera\r\n[Uno]\r\nClaveLarga=a\r\n;Clave=b\r\nClave=c\r\n"
                                   "Clave=d\r\n[Unos]\r\nOtra=e\r\n[Uno]\r\nOtra=f\r\n";
    carpeta.Pon(kFichero, kTexto);
    const auto lee = [&](const char* seccion, const char* clave) {
        return aplicacion.GetProfileString(seccion, clave, "nada");
    };
    EXPECT_EQ(lee("Uno", "Clave"), CString("c"));
    EXPECT_EQ(lee("Uno", "ClaveLarga"), CString("a"));
    EXPECT_EQ(lee("Unos", "Clave"), CString("nada"));
    EXPECT_EQ(lee("Uno", "Otra"), CString("nada")) << "the first section of a name is the one";
    EXPECT_EQ(lee("", "Clave"), CString("nada"));
    EXPECT_EQ(carpeta.Lee(kFichero), kTexto) << "reading changes nothing";
    aplicacion.WriteProfileString("Uno", "Clave", "c2");
    std::string despues = kTexto;
    despues.replace(despues.find("=c"), 2, "=c2");
    EXPECT_EQ(carpeta.Lee(kFichero), despues);
}

TEST_F(Ajustes, AFileThatCannotBeReplacedStaysAsItWas)
{
    std::filesystem::create_directories(carpeta.Ruta() / kFichero / "dentro");
    EXPECT_EQ(aplicacion.WriteProfileInt("Uno", "Clave", 1), 0);
    EXPECT_TRUE(std::filesystem::is_directory(carpeta.Ruta() / kFichero));
}
