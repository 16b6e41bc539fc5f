#pragma once

#include "platform/windows/win32.h"

#include <string>
#include <string_view>

#include "platform/cstring.h"
#include "platform/files/system_files.h"

// The way between the program's texts and those of the windows.

/// A text of the program, code page 1252 or UTF-8, as the system takes it.
inline std::wstring AAncho(std::string_view texto)
{
    return sistema::Ruta(texto).native();
}

/// A text that the user typed or picked. It stays in UTF-8, as names of files do.
inline CString DeAncho(const std::wstring& texto)
{
    return sistema::Nombre(texto);
}

inline std::wstring TextoDe(HWND ventana)
{
    std::wstring texto(static_cast<std::size_t>(GetWindowTextLengthW(ventana)) + 1, L'\0');
    texto.resize(static_cast<std::size_t>(
        GetWindowTextW(ventana, texto.data(), static_cast<int>(texto.size()))));
    return texto;
}

/// Sets a window's text, unless it is the same: the caret would jump under the user's hands.
inline bool PonTexto(HWND ventana, const std::wstring& texto)
{
    if (TextoDe(ventana) == texto)
        return false;
    SetWindowTextW(ventana, texto.c_str());
    return true;
}

/// Pixels that a text takes in the font that a window has now.
inline SIZE Mide(HWND ventana, std::wstring_view texto, TEXTMETRICW* letra = nullptr)
{
    SIZE lados = {};
    HDC lienzo = GetDC(ventana);
    SelectObject(lienzo, reinterpret_cast<HGDIOBJ>(SendMessageW(ventana, WM_GETFONT, 0, 0)));
    GetTextExtentPoint32W(lienzo, texto.data(), static_cast<int>(texto.size()), &lados);
    if (letra != nullptr)
        GetTextMetricsW(lienzo, letra);
    ReleaseDC(ventana, lienzo);
    return lados;
}
