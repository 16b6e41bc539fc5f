#include "evidence/report/reading/text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/ansi.h"
#include "platform/format.h"
#include "platform/plain_texts.h"

namespace informe {
namespace {

constexpr std::int64_t kMetrosPorHectarea = 10'000;
constexpr std::string_view kNoEsCaracter = "\xEF\xBF\xBD";

/// Puts a point in front of every three digits of a number's whole part.
void PonPuntos(std::string& cifras)
{
    const std::size_t signo = cifras.starts_with('-') ? 1 : 0;
    for (std::size_t i = std::min(cifras.find(','), cifras.size()); i > signo + 3;) {
        i -= 3;
        cifras.insert(i, ".");
    }
}

} // namespace

std::string Miles(std::int64_t numero)
{
    std::string cifras = std::to_string(numero);
    PonPuntos(cifras);
    return cifras;
}

std::string Decimal(double numero, int decimales)
{
    constexpr double kMayor = 1e15; // past it nobody reads the decimals
    if (!std::isfinite(numero) || std::abs(numero) > kMayor)
        return "desmedido";
    std::string cifras = Formatea("%." + std::to_string(decimales) + "lf", numero);
    std::ranges::replace(cifras, '.', ',');
    PonPuntos(cifras);
    return cifras.find_first_of("123456789") == std::string::npos && cifras.starts_with('-')
               ? cifras.substr(1)
               : cifras;
}

std::string Fijo(double numero)
{
    return Formatea("%.2lf", numero);
}

std::string Superficie(std::int64_t metros)
{
    constexpr std::int64_t kCienHectareas = 100 * kMetrosPorHectarea;
    if (std::abs(metros) < kMetrosPorHectarea)
        return Miles(metros) + " m²";
    return Decimal(static_cast<double>(metros) / kMetrosPorHectarea,
                   std::abs(metros) < kCienHectareas ? 2 : 1) +
           " ha";
}

std::string Hectareas(std::int64_t metros)
{
    return Decimal(static_cast<double>(metros) / kMetrosPorHectarea, 4);
}

std::string Hexadecimal(std::uint32_t numero, int cifras)
{
    std::string texto(static_cast<std::size_t>(cifras), '0');
    for (auto cifra = texto.rbegin(); cifra != texto.rend(); ++cifra, numero /= 16)
        *cifra = "0123456789ABCDEF"[numero % 16];
    return texto;
}

std::string Texto(std::string_view texto)
{
    const std::string utf8 = ansi::AUtf8(texto);
    std::string limpio;
    limpio.reserve(utf8.size());
    for (const char c : utf8) {
        const bool esControl = static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
        if (esControl)
            limpio += c == '\t' ? std::string_view(" ") : kNoEsCaracter;
        else
            limpio += c;
    }
    return limpio;
}

std::string TextoSinBlancos(std::string_view texto)
{
    return std::string(SinBlancos(Texto(texto)));
}

} // namespace informe
