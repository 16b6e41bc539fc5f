#pragma once

#include <filesystem>

#include "platform/files/system_files.h"

// Files of a system that doesn't tell capitals from small letters in names, on one that does.

/// Finds the file that a name means. In this order: the file itself; the only file of its folder
/// whose name has the same letters, in the code page or in UTF-8; the only one whose letters differ
/// in their case alone; else the name as it was. Where the name itself isn't there, the whole
/// folder is listed.
/// \param[out] error  clear, unless the file or the folder couldn't be looked at: then the
///                    system's reason. A folder that is missing or forbidden leaves it clear:
///                    whoever opens the file will be told.
std::filesystem::path SinMayusculas(const std::filesystem::path& ruta, sistema::Error& error);
