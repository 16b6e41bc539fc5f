#include "platform/windows/win32.h"

#include <cstdint>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "platform/settings.h"
#include "tests/support/scripted_front_end.h"

using AjustesRegistro = ConAplicacion;

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

TEST_F(AjustesRegistro, NumbersAndTextsAreStoredInTheSystemsForms)
{
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

TEST_F(AjustesRegistro, WhatIsStoredTogetherIsReadTogether)
{
    constexpr int kVeces = 300;
    const CString claves[] = {"Numero", "Texto"};
    CAlmacenAjustes almacen("VexaSoft", "Campiva");
    std::thread otro([] {
        CAlmacenAjustes suyo("VexaSoft", "Campiva");
        for (int i = 0; i <= kVeces; ++i) {
            const CAjuste ajustes[] = {{"Uno", "Numero", std::to_string(i), true},
                                       {"Uno", "Texto", std::to_string(i)}};
            suyo.Escribe(ajustes);
        }
    });
    std::vector<std::optional<CString>> valores;
    int mezcladas = 0;
    do {
        valores = almacen.Lee("Uno", claves);
        mezcladas += valores[0] == valores[1] ? 0 : 1;
    } while (valores[1] != CString(std::to_string(kVeces)));
    otro.join();
    EXPECT_EQ(mezcladas, 0);
}

TEST_F(AjustesRegistro, EitherFormOfANumberIsRead)
{
    for (const DWORD tipo : {REG_SZ, REG_EXPAND_SZ}) {
        PonTexto(tipo, L"-7");
        EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", 8), -7);
    }
    for (const std::int32_t numero : {0, 7, -1}) {
        Pon(REG_DWORD, &numero, sizeof numero);
        EXPECT_EQ(aplicacion.GetProfileInt("Uno", "Clave", 8), numero);
        EXPECT_EQ(aplicacion.GetProfileString("Uno", "Clave", "x"),
                  CString(std::to_string(numero)));
    }
}

TEST_F(AjustesRegistro, WhatAnotherHandWroteIsTakenAsFarAsItGoes)
{
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
