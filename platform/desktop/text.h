#pragma once

#include <string_view>

#include <wx/string.h>

#include "platform/ansi.h"
#include "platform/cstring.h"

// The way between the program's texts and those of the windows.

inline wxString AWx(std::string_view texto)
{
    return wxString::FromUTF8(ansi::AUtf8(texto));
}

/// A text that the user typed or picked. It stays in UTF-8, as names of files do.
inline CString DeWx(const wxString& texto)
{
    const auto utf8 = texto.utf8_str();
    return std::string_view(utf8.data(), utf8.length());
}
