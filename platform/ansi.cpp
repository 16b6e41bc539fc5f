#include "platform/ansi.h"

#include <algorithm>

#include "platform/plain_texts.h"

namespace ansi {
namespace {

/// Length of the valid UTF-8 sequence of several bytes at the start of the text, 0 if none is
/// there.
std::size_t LargoSecuencia(std::string_view texto)
{
    const auto byte = [&](std::size_t i) {
        return i < texto.size() ? static_cast<unsigned char>(texto[i]) : 0U;
    };
    const unsigned primero = byte(0);
    std::size_t largo = 0;
    if (primero >= 0xC2 && primero <= 0xDF)
        largo = 2;
    else if (primero >= 0xE0 && primero <= 0xEF)
        largo = 3;
    else if (primero >= 0xF0 && primero <= 0xF4)
        largo = 4;
    for (std::size_t i = 1; i < largo; ++i)
        if ((byte(i) & 0xC0U) != 0x80)
            return 0;
    const bool sobrelarga =
        (primero == 0xE0 && byte(1) < 0xA0) || (primero == 0xF0 && byte(1) < 0x90);
    const bool fuera = (primero == 0xED && byte(1) > 0x9F) || (primero == 0xF4 && byte(1) > 0x8F);
    return sobrelarga || fuera ? 0 : largo;
}

void AnexaValor(std::string& destino, unsigned valor)
{
    if (valor < 0x800) {
        destino += static_cast<char>(0xC0U | (valor >> 6U));
    } else {
        destino += static_cast<char>(0xE0U | (valor >> 12U));
        destino += static_cast<char>(0x80U | ((valor >> 6U) & 0x3FU));
    }
    destino += static_cast<char>(0x80U | (valor & 0x3FU));
}

/// Where the first byte beyond ASCII stands, from `desde` on; the text's size where there is none.
std::size_t BuscaAlto(std::string_view texto, std::size_t desde)
{
    while (desde + 8 <= texto.size() && !HayAltoEnOcho(&texto[desde]))
        desde += 8;
    while (desde < texto.size() && static_cast<unsigned char>(texto[desde]) < 0x80)
        ++desde;
    return desde;
}

bool EsLetra(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Tells whether a letter of DOS's pages, 437 and 850, stands beside another: É, ó, ú, ñ or Ñ,
/// where 1252 has the sign of a currency, or nothing.
bool EsLetraDeDos(std::string_view texto, std::size_t donde)
{
    const char c = texto[donde];
    return (c == '\x90' || (c >= '\xA2' && c <= '\xA5')) &&
           ((donde > 0 && EsLetra(texto[donde - 1])) ||
            (donde + 1 < texto.size() && EsLetra(texto[donde + 1])));
}

} // namespace

std::string AUtf8(std::string_view texto)
{
    std::string utf8;
    utf8.reserve(texto.size() + 8);
    while (!texto.empty()) {
        const auto c = static_cast<unsigned char>(texto.front());
        std::size_t tomados = 1;
        if (c < 0x80) {
            utf8 += texto.front();
        } else if (const std::size_t largo = LargoSecuencia(texto); largo > 0) {
            utf8.append(texto.substr(0, largo));
            tomados = largo;
        } else {
            AnexaValor(utf8, c < 0xA0 ? kAltos[c - 0x80U] : c);
        }
        texto.remove_prefix(tomados);
    }
    return utf8;
}

void CMiraPagina::Toma(std::string_view linea)
{
    if (MiraBytes(linea).altos)
        TomaConAltos(linea);
}

void CMiraPagina::TomaConAltos(std::string_view linea)
{
    bool enUtf8 = true;
    bool deDos = false;
    for (std::size_t i = BuscaAlto(linea, 0); i < linea.size();) {
        const std::size_t largo = LargoSecuencia(linea.substr(i));
        enUtf8 = enUtf8 && largo > 0;
        deDos = deDos || EsLetraDeDos(linea, i);
        i = BuscaAlto(linea, i + std::max<std::size_t>(largo, 1));
    }
    m_enUtf8 += enUtf8 ? 1 : 0;
    m_deDos += deDos ? 1 : 0;
    m_hayOtras = m_hayOtras || !enUtf8;
}

} // namespace ansi
