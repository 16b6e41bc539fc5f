#include "platform/windows/win32.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"

namespace {

constexpr const wchar_t* kSeccion = L"Software\\VexaSoft\\Campiva\\Uno";

void Pon(DWORD tipo, const void* bytes, std::size_t largo)
{
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kSeccion, L"Clave", tipo, bytes,
                              static_cast<DWORD>(largo)),
              ERROR_SUCCESS);
}

void PonTexto(DWORD tipo, const std::wstring& texto)
{
    Pon(tipo, texto.c_str(), (texto.size() + 1) * sizeof(wchar_t));
}

/// Form and bytes of a value, as texts: "4: 7 0 0 0".
std::string Almacenado(const wchar_t* clave)
{
    DWORD tipo = 0;
    std::uint8_t bytes[256];
    DWORD largo = sizeof bytes;
    if (RegGetValueW(HKEY_CURRENT_USER, kSeccion, clave, RRF_RT_ANY, &tipo, bytes, &largo) !=
        ERROR_SUCCESS)
        return "(nothing)";
    std::string todo = std::to_string(tipo) + ":";
    for (DWORD i = 0; i < largo; ++i)
        todo += " " + std::to_string(bytes[i]);
    return todo;
}

} // namespace

TEST(AjustesRegistro, NumbersAndTextsAreStoredInTheSystemsForms)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    ASSERT_NE(aplicacion.WriteProfileInt("Uno", "Numero", 7), 0);
    ASSERT_NE(aplicacion.WriteProfileInt("Uno", "Menos", -2), 0);
    ASSERT_NE(aplicacion.WriteProfileString("Uno", "Texto", "7"), 0);
    ASSERT_NE(aplicacion.WriteProfileString("Uno", "Letra", "ñ"), 0);
    ASSERT_NE(aplicacion.WriteProfileString("Uno", "Vacio", ""), 0);
    EXPECT_EQ(Almacenado(L"Numero"), "4: 7 0 0 0");
    EXPECT_EQ(Almacenado(L"Menos"), "4: 254 255 255 255");
    EXPECT_EQ(Almacenado(L"Texto"), "1: 55 0 0 0") << "a text of digits is a text";
    EXPECT_EQ(Almacenado(L"Letra"), "1: 241 0 0 0");
    EXPECT_EQ(Almacenado(L"Vacio"), "1: 0 0");
}

TEST(AjustesRegistro, ComeBackAsTheyWereStored)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "por defecto"), CString("por defecto"));
    for (const char* valor : {"", "  con blancos  ", "a=b;[c]", "C:\\peña\\日本.txt"}) {
        EXPECT_NE(aplicacion.WriteProfileString("Uno", "Clave", valor), 0);
        EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"), CString(valor));
    }
    const std::string larga(40000, 'r'); // as long as no path is
    EXPECT_NE(aplicacion.WriteProfileString("Uno", "Clave", larga.c_str()), 0);
    EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"), CString(larga));
    EXPECT_EQ(aplicacion.GetProfileInt("Dos", "Clave", 8), 8) << "a key of another section";
}

TEST(AjustesRegistro, EitherFormOfANumberIsRead)
{
    constexpr int kDefecto = 77;
    const struct {
        const char* motivo;
        const wchar_t* texto;
        int numero;
    } casos[] = {
        {"digits", L"7", 7},
        {"below zero", L"-2147483648", -2147483647 - 1},
        {"too large", L"2147483648", kDefecto},
        {"no number", L"5x", kDefecto},
        {"nothing", L"", kDefecto},
    };
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    for (const auto& caso : casos)
        for (const DWORD tipo : {REG_SZ, REG_EXPAND_SZ}) {
            SCOPED_TRACE(caso.motivo);
            PonTexto(tipo, caso.texto);
            EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", kDefecto), caso.numero);
        }
    for (const std::int32_t numero : {0, 7, -1}) {
        Pon(REG_DWORD, &numero, sizeof numero);
        EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", kDefecto), numero);
        EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"),
                  CString(std::to_string(numero)));
    }
}

TEST(AjustesRegistro, WhatAnotherHandWroteIsTakenAsFarAsItGoes)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    Pon(REG_SZ, L"abc", 3 * sizeof(wchar_t));
    EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"), CString("abc")) << "no zero";
    Pon(REG_SZ, L"ab\0cd", 6 * sizeof(wchar_t));
    EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"), CString("ab")) << "a zero inside";
    PonTexto(REG_EXPAND_SZ, L"%TEMP%\\a.txt");
    EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"), CString("%TEMP%\\a.txt"));
    const std::int64_t largo = 7;
    Pon(REG_QWORD, &largo, sizeof largo);
    EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", 8), 8) << "another kind";
    Pon(REG_BINARY, "7", 1);
    EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"), CString("x")) << "another kind";
}
