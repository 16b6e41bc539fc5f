#pragma once

#include <memory>
#include <string>

#include <windows.h>

#include "platform/files/fault_point.h"
#include "platform/files/system_files.h"

// What the sources for Windows' files share: handles, paths as its calls take them, its reasons.

namespace sistema {

struct CCierraManija {
    void operator()(HANDLE manija) const { CloseHandle(manija); }
};
using Manija = std::unique_ptr<void, CCierraManija>; ///< null where it isn't open

/// What is open here may be read, renamed and deleted by others. That two programs don't write one
/// file is for `Bloquea`, which can tell it from other faults.
inline constexpr DWORD kDeTodos = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct CApertura {
    DWORD acceso;
    DWORD comparte = kDeTodos;
    DWORD siNoEsta = OPEN_EXISTING;
    DWORD atributos = FILE_ATTRIBUTE_NORMAL;
};
Manija AbreManija(const std::filesystem::path& ruta, const CApertura& como);
/// The handle of an open file.
HANDLE ManijaDe(int fichero);
/// Tells whether the handle is that of a link, not of what it leads to.
bool EsEnlace(HANDLE manija);

/// The path as the system takes it however long it is.
std::wstring Larga(const std::filesystem::path& ruta);
/// Tells whether the system takes a file's name for a device's, whatever its extension: what is
/// written there goes to a printer or a port.
bool PasaPorDispositivo(const std::filesystem::path& ruta);
/// The path without what stands in front of a long one.
std::wstring SinPrefijo(std::wstring ruta);

/// The system's reason by what it means here (windows_errors.cpp): nothing but a file that surely
/// isn't there is told as such.
Error Fallo(DWORD codigo);
/// The reason for which a path can't be reached, when the whole drive or share doesn't answer.
/// \param codigo  what a call said of the path; any but "not found" is given back
DWORD ConSuLugar(const std::filesystem::path& ruta, DWORD codigo);
bool Es(const Error& error, DWORD codigo);

/// Makes a call, again where another program has the file open: scanners have each for a moment.
template <class F>
bool Insiste(F llamada)
{
    constexpr DWORD kUltima = 160; // thousandths of a second; twice that in all
    for (DWORD espera = 10; !llamada(); espera *= 2) {
        if (GetLastError() != ERROR_SHARING_VIOLATION || espera > kUltima)
            return false;
        Sleep(espera);
    }
    return true;
}

/// Makes a call that tells whether it went well.
template <class F>
bool Llama(Llamada cual, Error& error, F llamada)
{
    error.clear();
    if (const int tropiezo = Tropiezo(cual); tropiezo != 0)
        error = Error(tropiezo, std::generic_category());
    else if (!llamada())
        error = Fallo(GetLastError());
    return !error;
}

} // namespace sistema
