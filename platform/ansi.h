#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Text inside the program is code page 1252, one byte a character; sources and everything outside
// the program are UTF-8. What crosses that border stands here.

namespace ansi {

/// Unicode values of the bytes 0x80 to 0x9F; the five bytes that the code page leaves open stand
/// for the control character of the same value.
inline constexpr char16_t kAltos[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// The code page's byte for a Unicode value; none for one that it lacks.
constexpr std::optional<char> ByteDe(char32_t valor)
{
    for (unsigned i = 0; i < 32; ++i)
        if (valor == char32_t{kAltos[i]})
            return static_cast<char>(0x80U + i);
    const bool igual = valor < 0x80 || (valor >= 0xA0 && valor <= 0xFF);
    return igual ? std::optional(static_cast<char>(static_cast<unsigned char>(valor)))
                 : std::nullopt;
}

/// A text literal of the sources, turned into the code page at compile time, which a letter that it
/// lacks stops.
template <std::size_t N>
struct CLiteral {
    char bytes[N]{};
    constexpr CLiteral(const char (&utf8)[N])
    {
        std::size_t fin = 0;
        for (std::size_t i = 0; i + 1 < N;) {
            const auto c = static_cast<unsigned char>(utf8[i++]);
            const int siguen = c < 0x80 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
            char32_t valor = siguen == 0 ? c : c & (0x3FU >> static_cast<unsigned>(siguen));
            for (int k = 0; k < siguen; ++k)
                valor = (valor << 6U) | (static_cast<unsigned char>(utf8[i++]) & 0x3FU);
            const std::optional<char> byte = siguen == 0 ? static_cast<char>(c) : ByteDe(valor);
            if (!byte)
                throw "this character is not in code page 1252";
            bytes[fin++] = *byte;
        }
    }
};

/// What some editors put before all of a text in UTF-8.
inline constexpr std::string_view kMarcaUtf8 = "\xEF\xBB\xBF";

/// What a person sees of a text of the program: a sequence of bytes that is valid UTF-8 passes as
/// it is (names of files come in that way), any other byte from 0x80 is taken as code page 1252.
std::string AUtf8(std::string_view texto);

/// Looks whether lines of a text, which should be in code page 1252, are in another one: they have
/// letters beyond ASCII, and each of them is UTF-8, or one of them is a letter in DOS's pages only.
class CMiraPagina {
public:
    void Toma(std::string_view linea);
    void TomaConAltos(std::string_view linea); ///< one that surely has such letters
    int EnUtf8() const { return m_enUtf8; }
    int DeDos() const { return m_deDos; }
    /// Tells whether all that have such letters are in UTF-8, and there are some.
    bool TodasEnUtf8() const { return m_enUtf8 > 0 && !m_hayOtras; }

private:
    int m_enUtf8 = 0;
    int m_deDos = 0;
    bool m_hayOtras = false;
};

} // namespace ansi

/// "Año"_ansi: the literal in code page 1252, with static storage and a closing zero.
template <ansi::CLiteral L>
constexpr const char* operator""_ansi()
{
    return L.bytes;
}
