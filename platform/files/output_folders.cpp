#include "platform/files/output_folders.h"

#include "platform/files/cfile_exception.h"

CReemplazo::Ruta CarpetaDe(const CReemplazo::Ruta& ruta)
{
    return ruta.has_parent_path() ? ruta.parent_path() : CReemplazo::Ruta(".");
}

void AseguraCarpetas(const std::set<CReemplazo::Ruta>& carpetas)
{
    for (const CReemplazo::Ruta& carpeta : carpetas) {
        sistema::Error error;
        sistema::AseguraCarpeta(carpeta, error);
        CFileException::Exige(error, sistema::Nombre(carpeta));
    }
}
