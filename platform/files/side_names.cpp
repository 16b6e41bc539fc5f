#include "platform/files/side_names.h"

#include <algorithm>
#include <functional>
#include <random>

#include "platform/files/system_files.h"

namespace lado {
namespace {

constexpr std::string_view kDigitos = "0123456789abcdef";
constexpr std::string_view kAnteMarca = ".~";
constexpr std::size_t kLargoMarca = 12;

bool EsMarca(std::string_view texto)
{
    return texto.size() == kLargoMarca &&
           texto.find_first_not_of(kDigitos) == std::string_view::npos;
}

} // namespace

std::string Marca()
{
    std::random_device azar;
    std::string marca(kLargoMarca, ' ');
    std::ranges::generate(marca, [&] { return kDigitos[azar() % kDigitos.size()]; });
    return marca;
}

Ruta De(const Ruta& destino, std::string_view sufijo, std::string_view marca)
{
    // A name that leaves no room for the rest is cut, and a sum of it keeps it apart from others.
    constexpr std::size_t kNombreMasLargo = 200;
    // The whole path, since a system may drop dots and blanks at the end of a name.
    Ruta::string_type nombre = sistema::Entera(destino).filename().native();
    if (nombre.size() > kNombreMasLargo) {
        const std::size_t suma = std::hash<Ruta::string_type>()(nombre);
        nombre = nombre.substr(0, kNombreMasLargo) + Ruta(std::to_string(suma)).native();
    }
    Ruta ruta = destino.parent_path() / nombre;
    if (!marca.empty())
        ruta.concat(kAnteMarca).concat(marca);
    return ruta.concat(sufijo);
}

CPartes Parte(const Ruta& nombre)
{
    CPartes partes;
    partes.base = sistema::Nombre(nombre.filename());
    for (const std::string_view sufijo : {kCandado, kNuevo, kAntes, kConjunto})
        if (partes.base.ends_with(sufijo))
            partes.sufijo = sufijo;
    partes.base.resize(partes.base.size() - partes.sufijo.size());
    const std::size_t sinMarca =
        partes.base.size() - std::min(partes.base.size(), kAnteMarca.size() + kLargoMarca);
    const std::string_view final = std::string_view(partes.base).substr(sinMarca);
    if (!partes.sufijo.empty() && final.starts_with(kAnteMarca) &&
        EsMarca(final.substr(kAnteMarca.size()))) {
        partes.marca = final.substr(kAnteMarca.size());
        partes.base.resize(sinMarca);
    }
    return partes;
}

} // namespace lado
