#pragma once

#include "platform/files/system_files.h"

/// Reads a whole piece of an open file, or what is left of it, into `n` bytes; with an error what
/// came before it. Gives what was read.
std::string_view LeeTrozo(int fichero, char* bytes, std::size_t n, std::uint64_t posicion,
                          sistema::Error& error);

/// Copies a whole file into another one, which has its content and length then, on the disk. Both
/// are open; the other is cut first.
void CopiaContenido(int desde, int hasta, sistema::Error& error);

/// Copies a file, with its rights, to a name that nothing has yet (`Modo::Crear`), where with an
/// error nothing is then, or into the file that stands there (`Modo::Cambiar`), which stays the
/// same one.
void CopiaFichero(const std::filesystem::path& desde, const std::filesystem::path& hasta,
                  sistema::Modo modo, sistema::Error& error);

/// What a target held, beside it.
struct CAnterior {
    std::filesystem::path ruta; ///< empty where it couldn't be kept
    bool esNuevo = false;       ///< it wasn't there before
};
/// Gives a file the name `TARGET.anterior` as well, with a number where one is there that holds
/// something else, as an older one stays; a copy where the disk gives no second names.
CAnterior GuardaComoAnterior(const std::filesystem::path& loQueTenia,
                             const std::filesystem::path& destino, sistema::Error& error);
