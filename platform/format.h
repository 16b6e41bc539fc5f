#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

// The printf forms of messages and records: %d, %s, %c and %lf with the flags '-', '0' and blank, a
// width and a precision. Written here because the C library's result depends on the locale for real
// numbers, and because a wrong argument there is undefined.

/// One form, taken apart.
struct CForma {
    bool izquierda = false; ///< '-': padded on the right
    bool ceros = false;     ///< '0': a number is padded with zeros behind its sign
    bool hueco = false;     ///< ' ': a number that isn't negative keeps one blank before it
    short ancho = 0;        ///< least number of characters
    short precision = -1;   ///< most characters of a text, decimals of a real number; -1 for none
    char tipo = 0;          ///< 'd', 's', 'c' or 'f'; 0 for a form that isn't one of ours
};

/// Takes apart the form at the start of `texto`, which begins with '%', and removes it from there.
constexpr CForma AnalizaForma(std::string_view& texto)
{
    CForma forma;
    std::size_t i = 1;
    const auto en = [&](std::size_t k) { return k < texto.size() ? texto[k] : '\0'; };
    const auto numero = [&] {
        short valor = 0;
        for (; en(i) >= '0' && en(i) <= '9' && valor < 1000; ++i)
            valor = static_cast<short>(valor * 10 + (en(i) - '0'));
        return valor;
    };
    for (;; ++i) {
        if (en(i) == '-')
            forma.izquierda = true;
        else if (en(i) == '0')
            forma.ceros = true;
        else if (en(i) == ' ')
            forma.hueco = true;
        else
            break;
    }
    forma.ancho = numero();
    if (en(i) == '.') {
        ++i;
        forma.precision = numero();
    }
    if (en(i) == 'l')
        ++i;
    const char tipo = en(i);
    forma.tipo = tipo == 'd' || tipo == 's' || tipo == 'c' || tipo == 'f' ? tipo : '\0';
    texto.remove_prefix(i < texto.size() ? i + 1 : i);
    return forma;
}

// Most characters of a number that is wider than its form asks for.
inline constexpr std::size_t kEnteroMasLargo = 11; // "-2147483648"
inline constexpr std::size_t kRealMasLargo = 372;  // sign, 309 digits, point and 60 decimals

// Each puts a value in its form at `destino`, where there must be room for it, and gives its end.
char* PonEntero(char* destino, const CForma& forma, int valor);
char* PonReal(char* destino, const CForma& forma, double valor);
char* PonTexto(char* destino, const CForma& forma, std::string_view valor);

/// The same with a form that is known when the program is built: a number that isn't negative and
/// fits into its width, as nearly all do, is written in its place.
template <CForma F>
char* PonEntero(char* destino, int valor)
{
    constexpr int kPrimera = F.hueco ? 1 : 0; // where its first digit may stand
    if constexpr (!F.izquierda && F.ancho > kPrimera) {
        char* const fin = destino + F.ancho;
        char* cifra = fin;
        auto resto = static_cast<std::uint32_t>(valor);
        std::memset(destino, F.ceros ? '0' : ' ', static_cast<std::size_t>(F.ancho));
        if (F.hueco)
            *destino = ' ';
        if (resto < 10) { // as most are
            fin[-1] = static_cast<char>('0' + resto);
            return fin;
        }
        do {
            *--cifra = static_cast<char>('0' + resto % 10);
            resto /= 10;
        } while (resto != 0 && cifra > destino + kPrimera);
        if (valor >= 0 && resto == 0)
            return fin;
    }
    return PonEntero(destino, F, valor);
}
template <CForma F>
char* PonTexto(char* destino, std::string_view valor)
{
    if constexpr (F.precision >= 0)
        valor = valor.substr(0, static_cast<std::size_t>(F.precision));
    constexpr auto kAncho = static_cast<std::size_t>(F.ancho);
    if (valor.size() <= kAncho) {
        std::memset(destino, ' ', kAncho);
        char* const sitio = F.izquierda ? destino : destino + kAncho - valor.size();
        std::char_traits<char>::copy(sitio, valor.data(), valor.size());
        return destino + kAncho;
    }
    return PonTexto(destino, F, valor);
}

/// A value for a form. A value of another kind than its form's is written in its own kind.
using CArgumento = std::variant<int, double, char, std::string_view>;

/// Appends the text with its forms replaced by the arguments, in order. "%%" is a per cent sign; a
/// form without an argument gives nothing.
void AnexaFormato(std::string& destino, std::string_view texto,
                  std::initializer_list<CArgumento> argumentos);
/// The text alone.
template <class... T>
std::string Formatea(std::string_view texto, const T&... argumentos)
{
    std::string destino;
    AnexaFormato(destino, texto, {CArgumento(argumentos)...});
    return destino;
}
