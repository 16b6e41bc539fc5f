#include "platform/files/windows_handles.h"

#include <io.h>

namespace sistema {

bool Es(const Error& error, DWORD codigo)
{
    return error == Error(static_cast<int>(codigo), std::system_category());
}

Manija AbreManija(const std::filesystem::path& ruta, const CApertura& como)
{
    HANDLE manija = CreateFileW(Larga(ruta).c_str(), como.acceso, como.comparte, nullptr,
                                como.siNoEsta, como.atributos, nullptr);
    if (manija != INVALID_HANDLE_VALUE)
        return Manija(manija);
    SetLastError(ConSuLugar(ruta, GetLastError()));
    return nullptr;
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
