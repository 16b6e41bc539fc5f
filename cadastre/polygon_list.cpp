#include "cadastre/polygon_list.h"

#include <algorithm>
#include <string_view>

#include "cadastre/exchange_format.h"
#include "platform/plain_texts.h"

namespace {

constexpr CLectura kLeeGerLista = {5, 3, 0};
constexpr CLectura kLeeMunLista = {8, 3, 0};
constexpr CLectura kLeeNombreSalida = {5, 6, 0}; // both numbers once more, as text

} // namespace

CCabeceraLista LeeCabeceraLista(const CString& primera)
{
    const CLineaFija linea(primera);
    return {static_cast<short>(linea.Entero(kLeeGerLista)),
            static_cast<short>(linea.Entero(kLeeMunLista)), linea.Texto(kLeeNombreSalida)};
}

CString EntradaDeLista(const CString& linea)
{
    return linea.Mid(1);
}

int EntradasConNombre(const std::vector<CString>& entradas)
{
    return static_cast<int>(std::ranges::count_if(
        entradas, [](std::string_view entrada) { return !EstaEnBlanco(entrada); }));
}

int EntradasDeMas(std::vector<CString> entradas)
{
    std::erase_if(entradas, [](const CString& entrada) { return entrada.IsEmpty(); });
    std::sort(entradas.begin(), entradas.end());
    return static_cast<int>(entradas.end() - std::unique(entradas.begin(), entradas.end()));
}

CCadena FicheroDeLista(const CString& carpeta, const CString& nombre, const char* extension)
{
    CCadena ruta = nombre;
    ruta.CambiaPath(carpeta);
    ruta.CambiaExtension(extension);
    return ruta;
}
