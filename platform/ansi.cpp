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

bool EsUtf8(std::string_view texto)
{
    while (true) {
        while (texto.size() >= 8 && !HayAltoEnOcho(texto.data()))
            texto.remove_prefix(8);
        const auto* const alto = std::ranges::find_if(
            texto, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
        texto.remove_prefix(static_cast<std::size_t>(alto - texto.begin()));
        const std::size_t largo = LargoSecuencia(texto);
        if (largo == 0)
            return texto.empty();
        texto.remove_prefix(largo);
    }
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

void CMiraUtf8::Toma(std::string_view linea)
{
    if (MiraBytes(linea).altos)
        TomaConAltos(linea);
}

void CMiraUtf8::TomaConAltos(std::string_view linea)
{
    if (EsUtf8(linea))
        ++m_enUtf8;
    else
        m_hayOtras = true;
}

} // namespace ansi
