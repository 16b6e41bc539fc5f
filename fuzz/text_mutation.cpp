#include <algorithm>

#include "fuzz/mutation.h"

namespace {

using CLineas = std::vector<std::string>;

// Line types of the exchange file and of the list.
constexpr std::string_view kTipos[] = {"MD", "PJ", "TL", "PR", "SP", "SC",
                                       "30", "31", "32", "33", "TR", "  "};
// What stands in fields at the edges of what they can hold.
constexpr std::string_view kValores[] = {
    "0",     "1",     "-1",     "9",          "99999", "32767",      "32768",       "65535",
    "65536", "-0",    "000",    "2147483647", "1e9",   "4294967295", "-2147483648", "",
    " ",     "a",     "PR",     "C-",         "S",     "N",          "045",         "127",
    "\xD1",  "\xF1o", "=",      "\"",         "[",     "]",          "?",           "1003",
    "1010",  "1",     ".topic", "::",         "*",     "100",        "045127"};

CLineas Lineas(std::string_view texto)
{
    CLineas lineas;
    while (!texto.empty()) {
        const std::size_t fin = std::min(texto.find('\n'), texto.size() - 1) + 1;
        lineas.emplace_back(texto.substr(0, fin));
        texto.remove_prefix(fin);
    }
    return lineas;
}

/// What stands before the line's end.
std::size_t Largo(const std::string& linea)
{
    return std::min(linea.find_last_not_of("\r\n") + 1, linea.size());
}

struct CTramo {
    std::size_t desde;
    std::size_t cuantos;
};

/// A field of the line: between tabs, or some columns.
CTramo Campo(const std::string& linea, CAzar& azar)
{
    constexpr std::size_t kMasAncho = 12;
    const std::size_t largo = Largo(linea);
    std::size_t desde = azar.Hasta(largo + 1);
    if (linea.find('\t') == std::string::npos)
        return {desde, std::min(1 + azar.Hasta(kMasAncho), largo - desde)};
    desde = desde == 0 ? 0 : linea.rfind('\t', desde - 1) + 1;
    return {desde, std::min(linea.find('\t', desde), std::max(largo, desde)) - desde};
}

void MutaCampo(std::string& linea, const CLineas& lineas, CAzar& azar)
{
    const CTramo campo = Campo(linea, azar);
    std::string valor = linea.substr(campo.desde, campo.cuantos);
    switch (azar.Hasta(4)) {
    case 0:
        valor = azar.Uno(kValores);
        break;
    case 1: { // what stands there in another line
        const std::string& otra = azar.Uno(lineas);
        valor = campo.desde < Largo(otra) ? otra.substr(campo.desde, campo.cuantos) : "";
        break;
    }
    default:
        valor = MutaBytes(valor, std::max<std::size_t>(campo.cuantos, 1));
    }
    const bool justo = linea.find('\t') == std::string::npos && !azar.UnaDe(8);
    if (justo) // the columns behind it stay where they are
        valor.insert(0, campo.cuantos - std::min(campo.cuantos, valor.size()), ' ');
    linea.replace(campo.desde, campo.cuantos, valor);
}

void MutaLinea(std::string& linea, const CLineas& lineas, CAzar& azar)
{
    switch (azar.Hasta(8)) {
    case 0:
        linea.replace(0, std::min<std::size_t>(Largo(linea), 2), azar.Uno(kTipos));
        break;
    case 1: {
        const std::size_t largo = Largo(linea);
        const std::size_t corte = azar.Hasta(largo + 1);
        linea.erase(corte, largo - corte);
        break;
    }
    case 2:
        linea.erase(Largo(linea)); // runs on into the next one
        break;
    default:
        MutaCampo(linea, lineas, azar);
    }
}

} // namespace

std::string MutaTexto(std::string_view texto, CAzar& azar)
{
    constexpr std::size_t kCrece = 16;
    CLineas lineas = Lineas(texto);
    if (lineas.empty() || azar.UnaDe(12))
        return MutaBytes(std::string(texto), texto.size() + kCrece);
    if (azar.UnaDe(4))
        Baraja(lineas, azar);
    else
        MutaLinea(azar.Uno(lineas), CLineas(lineas), azar);
    std::string nuevo;
    for (const std::string& linea : lineas)
        nuevo += linea;
    return nuevo;
}
