#include "platform/files/content_copy.h"

#include <string>

#include "platform/files/side_names.h"

void CopiaContenido(int desde, int hasta, sistema::Error& error)
{
    char trozo[64 * 1024];
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
    const int fuente = sistema::Abre(desde, sistema::Modo::LeerEse, error);
    const bool esNueva = modo == sistema::Modo::Crear;
    const sistema::Modo como = esNueva ? sistema::Modo::CrearPrivado : modo;
    const int copia = error ? sistema::kCerrado : sistema::Abre(hasta, como, error);
    sistema::Error ajeno;
    if (!error && esNueva)
        sistema::CopiaDerechos(copia, desde, ajeno); // or it stays private
    if (!error)
        CopiaContenido(fuente, copia, error);
    if (error && copia != sistema::kCerrado && esNueva)
        sistema::Borra(hasta, ajeno);
    for (const int fichero : {fuente, copia})
        if (fichero != sistema::kCerrado)
            sistema::Cierra(fichero, ajeno);
}

std::filesystem::path GuardaComoAnterior(const std::filesystem::path& loQueTenia,
                                         const std::filesystem::path& destino,
                                         sistema::Error& error)
{
    constexpr int kIntentos = 1000;
    for (int i = 1; i <= kIntentos; ++i) {
        const std::string numero = i > 1 ? "." + std::to_string(i) : "";
        std::filesystem::path anterior = lado::De(destino, std::string(lado::kAnterior) + numero);
        sistema::Enlaza(loQueTenia, anterior, error);
        if (error && error != std::errc::file_exists)
            CopiaFichero(loQueTenia, anterior, sistema::Modo::Crear, error);
        if (!error)
            return anterior;
        if (error != std::errc::file_exists)
            break;
    }
    return {};
}
