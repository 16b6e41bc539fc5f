#pragma once

#include <initializer_list>
#include <stdexcept>
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

void AnexaEntero(std::string& destino, const CForma& forma, int valor);
void AnexaReal(std::string& destino, const CForma& forma, double valor);
void AnexaTexto(std::string& destino, const CForma& forma, std::string_view valor);

/// A value for a form. A value of another kind than its form's is written in its own kind.
using CArgumento = std::variant<int, double, char, std::string_view>;

/// Appends the text with its forms replaced by the arguments, in order. "%%" is a per cent sign; a
/// form without an argument gives nothing.
void AnexaFormato(std::string& destino, std::string_view texto,
                  std::initializer_list<CArgumento> argumentos);
