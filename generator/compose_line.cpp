#include "generator/compose_line.h"

#include "platform/format.h"

namespace sintetico {

void PonEnLinea(std::string& linea, const CLectura& donde, std::string_view valor)
{
    const auto columna = static_cast<std::size_t>(donde.columna);
    const auto ancho = static_cast<std::size_t>(donde.ancho);
    if (linea.size() < columna + ancho)
        linea.resize(columna + ancho, ' ');
    linea.replace(columna, ancho, ancho, ' ');
    valor = valor.substr(0, ancho);
    linea.replace(columna, valor.size(), valor);
}

void PonEnLinea(std::string& linea, const CLectura& donde, int valor)
{
    std::string cifras(kEnteroMasLargo + static_cast<std::size_t>(donde.ancho), '0');
    const char* const fin =
        PonEntero(cifras.data(), {.ceros = true, .ancho = donde.ancho, .tipo = 'd'}, valor);
    PonEnLinea(linea, donde, std::string_view(cifras.data(), fin));
}

} // namespace sintetico
