#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
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

/// Tells whether there is nothing else in a text.
constexpr bool EstaEnBlanco(std::string_view texto, std::string_view blancos = " ")
{
    return texto.find_first_not_of(blancos) == std::string_view::npos;
}

/// Tells whether one of eight bytes is beyond ASCII.
inline bool HayAltoEnOcho(const void* bytes)
{
    std::uint64_t ocho = 0;
    std::memcpy(&ocho, bytes, sizeof ocho);
    return (ocho & 0x8080808080808080U) != 0;
}

/// What stands somewhere among the bytes of a text.
struct CBytesVistos {
    bool altos = false;     ///< one beyond ASCII
    bool controles = false; ///< one below the blank
};

/// Looks at many bytes at a time, as a compiler does with those of a block: for who looks at each
/// line of a file.
inline CBytesVistos MiraBytes(std::string_view texto)
{
    constexpr std::size_t kBloque = 16;
    constexpr unsigned char kAlto = 0x80;
    std::array<unsigned char, kBloque> bits = {};
    std::array<unsigned char, kBloque> bajos = {};
    const auto toma = [&](const char* bytes, std::size_t cuantos) {
        for (std::size_t i = 0; i < cuantos; ++i) {
            const auto c = static_cast<unsigned char>(bytes[i]);
            bits[i] |= c;
            bajos[i] |= c < ' ' ? kAlto : 0;
        }
    };
    std::size_t i = 0;
    for (; i + kBloque <= texto.size(); i += kBloque)
        toma(texto.data() + i, kBloque);
    if (i > 0)
        toma(texto.data() + texto.size() - kBloque, kBloque); // the last, some once more
    else
        toma(texto.data(), texto.size());
    const auto hayAlto = [](const std::array<unsigned char, kBloque>& bytes) {
        return HayAltoEnOcho(bytes.data()) || HayAltoEnOcho(bytes.data() + kBloque / 2);
    };
    return {hayAlto(bits), hayAlto(bajos)};
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
