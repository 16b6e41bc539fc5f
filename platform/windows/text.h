#pragma once

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
