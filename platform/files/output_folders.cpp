#include "platform/files/output_folders.h"

#include "platform/files/cfile_exception.h"

std::filesystem::path CarpetaDe(const std::filesystem::path& ruta)
{
    return ruta.has_parent_path() ? ruta.parent_path() : std::filesystem::path(".");
}

void AseguraCarpetas(const std::set<std::filesystem::path>& carpetas)
{
    for (const std::filesystem::path& carpeta : carpetas) {
        sistema::Error error;
        sistema::AseguraCarpeta(carpeta, error);
        if (error)
            throw CFileException(sistema::Nombre(sistema::EnteraSinPuntos(carpeta)), error);
    }
}
