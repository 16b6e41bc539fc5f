#pragma once

#include <filesystem>
#include <set>

// The folders in which the outputs of a run stand.

/// Folder of a file; "." for a name alone.
std::filesystem::path CarpetaDe(const std::filesystem::path& ruta);

/// Brings to the disk which names the folders hold. Raises CFileException at the first one where
/// that fails; those behind it are left as they are.
void AseguraCarpetas(const std::set<std::filesystem::path>& carpetas);
