#pragma once

#include <string>
#include <string_view>

// Texts as their files have them, byte by byte: nothing here asks which code page they are in.

/// The text without the blanks and line ends behind it.
constexpr std::string_view SinCola(std::string_view texto)
{
    return texto.substr(0, texto.find_last_not_of(" \r\n") + 1);
}

/// The text without blanks at either end.
constexpr std::string_view SinBlancos(std::string_view texto)
{
    constexpr std::string_view kBlancos = " \t\r\n";
    const std::size_t desde = texto.find_first_not_of(kBlancos);
    return desde == std::string_view::npos
               ? std::string_view()
               : texto.substr(desde, texto.find_last_not_of(kBlancos) + 1 - desde);
}

/// The text with its plain letters as capitals. Names of files have no others in their extensions.
inline std::string EnMayusculas(std::string texto)
{
    for (char& c : texto)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return texto;
}
