#pragma once

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

// Texts as their files have them, byte by byte: nothing here asks which code page they are in.

/// The text without the blanks and line ends behind it.
constexpr std::string_view SinCola(std::string_view texto)
{
    return texto.substr(0, texto.find_last_not_of(" \r\n") + 1);
}

/// The text without blanks at either end.
constexpr std::string_view SinBlancos(std::string_view texto, std::string_view blancos = " \t\r\n")
{
    texto = texto.substr(0, texto.find_last_not_of(blancos) + 1);
    return texto.substr(std::min(texto.find_first_not_of(blancos), texto.size()));
}

/// Tells whether what was read as a line is several, each ended by a carriage return alone.
constexpr bool SonVariasLineas(std::string_view linea)
{
    const std::size_t retorno = linea.find('\r');
    return retorno != std::string_view::npos &&
           linea.find_first_not_of('\r', retorno) != std::string_view::npos;
}

/// A number's text without the note that a person wrote behind it.
constexpr std::string_view SinNota(std::string_view texto)
{
    texto = texto.substr(0, texto.find_first_of(";#"));
    return texto.substr(0, texto.find_last_not_of(" \t") + 1);
}

/// The number that the whole text is; none where it is none, or doesn't fit.
template <class T>
std::optional<T> NumeroDe(std::string_view texto)
{
    T valor{};
    const char* const fin = texto.data() + texto.size();
    const auto [hasta, error] = std::from_chars(texto.data(), fin, valor);
    return error == std::errc() && hasta == fin ? std::optional(valor) : std::nullopt;
}

/// The text with its plain letters as capitals. Extensions of files and names of settings have no
/// others.
inline std::string EnMayusculas(std::string texto)
{
    for (char& c : texto)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return texto;
}
