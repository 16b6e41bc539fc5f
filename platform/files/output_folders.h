#pragma once

#include <set>

#include "platform/files/safe_replacement.h"

// The folders in which the outputs of a run stand.

/// Folder of a file; "." for a name alone.
CReemplazo::Ruta CarpetaDe(const CReemplazo::Ruta& ruta);

/// Brings to the disk which names the folders hold. Raises CFileException at the first one where
/// that fails; those behind it are left as they are.
void AseguraCarpetas(const std::set<CReemplazo::Ruta>& carpetas);
