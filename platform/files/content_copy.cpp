#include "platform/files/content_copy.h"

namespace {

using Ruta = std::filesystem::path;
using sistema::Error;

/// Copies one file, opened for it, into the other, opened in a mode.
void CopiaAbriendo(const Ruta& desde, const Ruta& hasta, sistema::Modo modo, Error& error)
{
    const int fuente = sistema::Abre(desde, sistema::Modo::LeerEse, error);
    const int copia = error ? sistema::kCerrado : sistema::Abre(hasta, modo, error);
    if (!error)
        CopiaContenido(fuente, copia, error);
    Error ajeno;
    if (error && copia != sistema::kCerrado && modo == sistema::Modo::Crear)
        sistema::Borra(hasta, ajeno);
    for (const int fichero : {fuente, copia})
        if (fichero != sistema::kCerrado)
            sistema::Cierra(fichero, ajeno);
}

} // namespace

void CopiaContenido(int desde, int hasta, Error& error)
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

void CopiaAUnoNuevo(const Ruta& desde, const Ruta& hasta, Error& error)
{
    CopiaAbriendo(desde, hasta, sistema::Modo::Crear, error);
}

void CopiaDentro(const Ruta& desde, const Ruta& hasta, Error& error)
{
    CopiaAbriendo(desde, hasta, sistema::Modo::Cambiar, error);
}
