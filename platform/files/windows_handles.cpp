#include "platform/files/windows_handles.h"

#include <cstdint>

#include <io.h>

namespace sistema {

Error Fallo(DWORD codigo)
{
    switch (codigo) {
    case ERROR_LOCK_VIOLATION:
        return kDeOtro;
    case ERROR_INVALID_FUNCTION: // how a file system says that it has no such thing
        codigo = ERROR_NOT_SUPPORTED;
        break;
    case ERROR_NETNAME_DELETED: // of a file that is open; it is no "not found"
        codigo = ERROR_UNEXP_NET_ERR;
        break;
    default:
        break;
    }
    return {static_cast<int>(codigo), std::system_category()};
}

bool Es(const Error& error, DWORD codigo)
{
    return error == Error(static_cast<int>(codigo), std::system_category());
}

Manija AbreManija(const std::filesystem::path& ruta, const CApertura& como)
{
    HANDLE manija = CreateFileW(Larga(ruta).c_str(), como.acceso, como.comparte, nullptr,
                                como.siNoEsta, como.atributos, nullptr);
    return Manija(manija == INVALID_HANDLE_VALUE ? nullptr : manija);
}

HANDLE ManijaDe(int fichero)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(fichero));
}

bool EsEnlace(HANDLE manija)
{
    FILE_ATTRIBUTE_TAG_INFO marca = {};
    return GetFileInformationByHandleEx(manija, FileAttributeTagInfo, &marca, sizeof marca) != 0 &&
           (marca.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           marca.ReparseTag == IO_REPARSE_TAG_SYMLINK;
}

} // namespace sistema
