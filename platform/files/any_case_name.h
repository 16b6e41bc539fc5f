#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/files/system_files.h"

/// Finds files whose names differ from those asked for in the case of their letters. It lists a
/// folder once, when the first file isn't found there under its own name.
class CNombresEnDisco {
public:
    /// The path of the file in the same folder whose name has the same letters, in the code page or
    /// in UTF-8, or else differs in their case alone, where there is just one; the path itself
    /// where there is none or several, and where a file has it. With an error where the folder
    /// can't be looked at.
    std::filesystem::path Busca(const std::filesystem::path& ruta, sistema::Error& error);

private:
    using CListado = std::unordered_map<std::string, std::vector<std::filesystem::path>>;

    const CListado& Listado(const std::filesystem::path& carpeta, sistema::Error& error);

    std::map<std::filesystem::path, CListado> m_carpetas; // by the letters of their names, small
};
