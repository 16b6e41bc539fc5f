#include "platform/files/content_copy.h"

#include <string>
#include <utility>

#include "platform/files/side_names.h"

namespace {

constexpr std::size_t kTrozo = std::size_t{64} * 1024;

/// Tells whether two files, neither of them a link, hold the same bytes; not where one can't be
/// read.
bool TienenLoMismo(const std::filesystem::path& uno, const std::filesystem::path& otro)
{
    sistema::Error error;
    const sistema::CEstado suyo = sistema::MiraEnlace(uno, error);
    const sistema::CEstado delOtro = error ? sistema::CEstado() : sistema::MiraEnlace(otro, error);
    if (error || !delOtro.EsRegular() || suyo.largo != delOtro.largo)
        return false;
    const sistema::CAbierto primero = sistema::Abre(uno, sistema::Modo::LeerEse, error);
    const sistema::CAbierto segundo =
        error ? sistema::CAbierto() : sistema::Abre(otro, sistema::Modo::LeerEse, error);
    bool iguales = !error;
    char trozos[2][kTrozo];
    for (std::uint64_t posicion = 0; iguales && posicion < suyo.largo; posicion += kTrozo) {
        const auto trozo = LeeTrozo(primero, trozos[0], kTrozo, posicion, error);
        iguales =
            !error && trozo == LeeTrozo(segundo, trozos[1], kTrozo, posicion, error) && !error;
    }
    return iguales;
}

} // namespace

std::string_view LeeTrozo(int fichero, char* bytes, std::size_t n, std::uint64_t posicion,
                          sistema::Error& error)
{
    std::size_t leidos = 0;
    for (std::size_t mas = 1; mas > 0 && leidos < n; leidos += mas)
        mas = sistema::LeeEn(fichero, bytes + leidos, n - leidos, posicion + leidos, error);
    return {bytes, leidos};
}

void CopiaContenido(int desde, int hasta, sistema::Error& error)
{
    char trozo[kTrozo];
    std::uint64_t posicion = 0;
    sistema::Recorta(hasta, 0, error);
    while (!error) {
        const std::size_t n = sistema::LeeEn(desde, trozo, sizeof trozo, posicion, error);
        if (n == 0)
            break;
        sistema::Escribe(hasta, {trozo, n}, error);
        posicion += n;
    }
    if (!error)
        sistema::Asegura(hasta, error);
}

void CopiaFichero(const std::filesystem::path& desde, const std::filesystem::path& hasta,
                  sistema::Modo modo, sistema::Error& error)
{
    const sistema::CAbierto fuente = sistema::Abre(desde, sistema::Modo::LeerEse, error);
    const bool esNueva = modo == sistema::Modo::Crear;
    const sistema::Modo como = esNueva ? sistema::Modo::CrearPrivado : modo;
    const sistema::CAbierto copia = error ? sistema::CAbierto() : sistema::Abre(hasta, como, error);
    sistema::Error ajeno;
    if (!error && esNueva)
        sistema::CopiaDerechos(copia, desde, ajeno); // or it stays private
    if (!error)
        CopiaContenido(fuente, copia, error);
    if (error && copia != sistema::kCerrado && esNueva)
        sistema::Borra(hasta, ajeno);
}

CAnterior GuardaComoAnterior(const std::filesystem::path& loQueTenia,
                             const std::filesystem::path& destino, sistema::Error& error)
{
    constexpr int kIntentos = 1000;
    for (int i = 1; i <= kIntentos; ++i) {
        const std::string numero = i > 1 ? "." + std::to_string(i) : "";
        std::filesystem::path anterior = lado::De(destino, std::string(lado::kAnterior) + numero);
        sistema::Enlaza(loQueTenia, anterior, error);
        if (error && error != std::errc::file_exists)
            CopiaFichero(loQueTenia, anterior, sistema::Modo::Crear, error);
        if (!error)
            return {std::move(anterior), true};
        if (error != std::errc::file_exists)
            break;
        if (TienenLoMismo(loQueTenia, anterior)) {
            error.clear();
            return {std::move(anterior), false};
        }
    }
    return {};
}
