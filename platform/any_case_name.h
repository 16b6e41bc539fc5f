#pragma once

#include <filesystem>

#include "platform/system_files.h"

// Files of a system that doesn't tell capitals from small letters in names, on one that does.

/// The file itself if it is there. Else the one file of its folder whose name has the same letters,
/// in the code page or in UTF-8; else the one whose letters differ in their case alone; else the
/// name as it was.
std::filesystem::path SinMayusculas(const std::filesystem::path& ruta, sistema::Error& error);
