#pragma once

#include "platform/files/system_files.h"

/// Copies a whole file into another one, which has its content and length then, on the disk. Both
/// are open; the other is cut first.
void CopiaContenido(int desde, int hasta, sistema::Error& error);

/// Copies a file to a name that nothing has yet. With an error nothing is there.
void CopiaAUnoNuevo(const std::filesystem::path& desde, const std::filesystem::path& hasta,
                    sistema::Error& error);

/// Gives the file that stands at a name the content of another one; it stays the same file.
void CopiaDentro(const std::filesystem::path& desde, const std::filesystem::path& hasta,
                 sistema::Error& error);
