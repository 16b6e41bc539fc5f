#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "platform/files/windows_handles.h"

#include <fcntl.h>
#include <io.h>

// Files on Windows: their content, and what befalls them as a whole.

namespace sistema {
namespace {

/// FILE_RENAME_INFO as systems have it whose headers don't know `como` yet.
struct CCambioDeNombre {
    DWORD como = 0;
    HANDLE carpeta = nullptr;
    DWORD largo = 0;        ///< of the name, in bytes
    wchar_t nombre[1] = {}; ///< whole path of what it is to be
};

/// Number for an open file, which has it from here on.
CAbierto Numera(Manija manija, Error& error)
{
    CAbierto fichero(
        _open_osfhandle(reinterpret_cast<std::intptr_t>(manija.get()), _O_BINARY | _O_NOINHERIT));
    if (fichero == kCerrado)
        error = std::make_error_code(std::errc::too_many_files_open);
    else
        static_cast<void>(manija.release());
    return fichero;
}

/// Tells whether somebody has the file open, so that no other file can take its place.
bool EstaAbierto(const std::filesystem::path& ruta)
{
    return AbreManija(ruta, {.acceso = DELETE, .comparte = 0}) == nullptr &&
           GetLastError() == ERROR_SHARING_VIOLATION;
}

/// Puts a file in the other's place though that one is open, if all who have it open let it be
/// renamed and the disk can do that.
bool RenombraSobreAbierto(const std::filesystem::path& antes, const std::filesystem::path& ahora)
{
    const Manija manija = AbreManija(
        antes, {.acceso = DELETE | GENERIC_WRITE, .atributos = FILE_FLAG_OPEN_REPARSE_POINT});
    if (manija == nullptr)
        return false;
    const std::wstring destino = Larga(Entera(ahora));
    const std::size_t largo = destino.size() * sizeof(wchar_t);
    std::vector<unsigned char> datos(sizeof(CCambioDeNombre) + largo);
    auto* const cambio = new (datos.data()) CCambioDeNombre;
    cambio->como = FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS;
    cambio->largo = static_cast<DWORD>(largo);
    std::memcpy(cambio->nombre, destino.data(), largo);
    constexpr auto kCambiaNombre = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22); // FileRenameInfoEx
    return SetFileInformationByHandle(manija.get(), kCambiaNombre, datos.data(),
                                      static_cast<DWORD>(datos.size())) != 0 &&
           FlushFileBuffers(manija.get()) != 0;
}

/// Reads at the handle's place or, with `donde`, at that one. The end of the file is no failure.
std::size_t LeeManija(int fichero, char* bytes, std::size_t n, OVERLAPPED* donde, Error& error)
{
    constexpr std::size_t kDeUnaVez = std::size_t{1} << 30U;
    DWORD leidos = 0;
    Llama(Llamada::Leer, error, [&] {
        return ReadFile(ManijaDe(fichero), bytes, static_cast<DWORD>(std::min(n, kDeUnaVez)),
                        &leidos, donde) != 0 ||
               GetLastError() == ERROR_HANDLE_EOF || GetLastError() == ERROR_BROKEN_PIPE;
    });
    return error ? 0 : leidos;
}

} // namespace

CAbierto Abre(const std::filesystem::path& ruta, Modo modo, Error& error)
{
    CApertura como = {.acceso = GENERIC_READ | GENERIC_WRITE};
    if (modo == Modo::Leer || modo == Modo::LeerEse)
        como.acceso = GENERIC_READ;
    if (modo == Modo::EnSitio)
        como.acceso = GENERIC_WRITE;
    if (modo == Modo::EnSitio || modo == Modo::Tomar)
        como.siNoEsta = OPEN_ALWAYS;
    if (modo == Modo::Crear || modo == Modo::CrearSinOtros || modo == Modo::CrearPrivado)
        como.siNoEsta = CREATE_NEW;
    const bool sinEnlaces = modo != Modo::Leer && modo != Modo::EnSitio;
    if (sinEnlaces)
        como.atributos |= FILE_FLAG_OPEN_REPARSE_POINT;
    Manija manija;
    Llama(Llamada::Abrir, error, [&] {
        if (PasaPorDispositivo(ruta)) {
            SetLastError(ERROR_INVALID_NAME);
            return false;
        }
        return Insiste([&] {
            manija = AbreManija(ruta, como);
            return manija != nullptr;
        });
    });
    if (error == std::errc::permission_denied) {
        Error alMirar;
        if (Mira(ruta, alMirar).tipo == CEstado::Tipo::Carpeta)
            error = std::make_error_code(std::errc::is_a_directory);
    }
    if (!error && sinEnlaces && EsEnlace(manija.get()))
        error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
    return error ? CAbierto() : Numera(std::move(manija), error);
}

CAbierto CreaAnonimo(Error& error)
{
    wchar_t carpeta[MAX_PATH + 1] = {};
    wchar_t nombre[MAX_PATH + 1] = {};
    Manija manija;
    Llama(Llamada::Abrir, error, [&] {
        const DWORD largo = GetTempPathW(MAX_PATH + 1, carpeta);
        if (largo > MAX_PATH) { // then there is nothing in it, which would be the current folder
            SetLastError(ERROR_FILENAME_EXCED_RANGE);
            return false;
        }
        if (largo == 0 || GetTempFileNameW(carpeta, L"sal", 0, nombre) == 0)
            return false;
        manija =
            AbreManija(nombre, {.acceso = GENERIC_READ | GENERIC_WRITE,
                                .siNoEsta = CREATE_ALWAYS,
                                .atributos = FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE});
        return manija != nullptr;
    });
    return error ? CAbierto() : Numera(std::move(manija), error);
}

std::size_t Lee(int fichero, char* bytes, std::size_t n, Error& error)
{
    return LeeManija(fichero, bytes, n, nullptr, error);
}

std::size_t LeeEn(int fichero, char* bytes, std::size_t n, std::uint64_t posicion, Error& error)
{
    error.clear();
    if (posicion > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) - n)
        return 0; // no file reaches there
    OVERLAPPED donde = {};
    donde.Offset = static_cast<DWORD>(posicion);
    donde.OffsetHigh = static_cast<DWORD>(posicion >> 32U);
    return LeeManija(fichero, bytes, n, &donde, error);
}

bool EsperaDatos(int /*fichero*/, Error& error)
{
    error.clear(); // a read waits, and no signal ends a process gently here
    return true;
}

void Escribe(int fichero, std::string_view bytes, Error& error)
{
    constexpr std::size_t kDeUnaVez = std::size_t{1} << 30U;
    error.clear();
    while (!bytes.empty() && !error) {
        DWORD escritos = 0;
        Llama(Llamada::Escribir, error, [&] {
            return WriteFile(ManijaDe(fichero), bytes.data(),
                             static_cast<DWORD>(std::min(bytes.size(), kDeUnaVez)), &escritos,
                             nullptr) != 0;
        });
        bytes.remove_prefix(escritos);
    }
}

void Recorta(int fichero, std::uint64_t largo, Error& error)
{
    HANDLE manija = ManijaDe(fichero);
    Llama(Llamada::Recortar, error, [&] {
        LARGE_INTEGER hasta = {};
        hasta.QuadPart = static_cast<LONGLONG>(largo);
        return SetFilePointerEx(manija, hasta, nullptr, FILE_BEGIN) != 0 &&
               SetEndOfFile(manija) != 0 && SetFilePointerEx(manija, {}, nullptr, FILE_BEGIN) != 0;
    });
}

void Asegura(int fichero, Error& error)
{
    HANDLE manija = ManijaDe(fichero);
    Llama(Llamada::Asegurar, error, [&] { return FlushFileBuffers(manija) != 0; });
    if (error && GetFileType(manija) != FILE_TYPE_DISK)
        error.clear(); // what has no disk below it
}

void AseguraCarpeta(const std::filesystem::path& /*carpeta*/, Error& error)
{
    error.clear(); // `Renombra` waits for the disk, and the system keeps its folders whole
}

void Cierra(int fichero, Error& error)
{
    error.clear();
    const int tropiezo = Tropiezo(Llamada::Cerrar);
    if (_close(fichero) != 0)
        error = Error(errno, std::generic_category());
    else if (tropiezo != 0)
        error = Error(tropiezo, std::generic_category());
}

Bloqueo Bloquea(int fichero, Error& error)
{
    // Nobody can read what is locked, so it is a byte that no file reaches.
    OVERLAPPED donde = {};
    donde.OffsetHigh = 0x40000000;
    const bool mio = Llama(Llamada::Bloquear, error, [&] {
        return LockFileEx(ManijaDe(fichero), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0,
                          1, 0, &donde) != 0;
    });
    if (mio)
        return Bloqueo::Mio;
    const bool noHay = error == std::errc::function_not_supported;
    if (noHay || error == kDeOtro || Es(error, ERROR_IO_PENDING))
        error.clear();
    return noHay ? Bloqueo::NoHay : Bloqueo::DeOtro;
}

void AbreATodos(int /*fichero*/, const CEstado& /*estado*/) {} // its folder's rights are the file's

void Renombra(const std::filesystem::path& antes, const std::filesystem::path& ahora, Error& error)
{
    constexpr DWORD kComo = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    Llama(Llamada::Renombrar, error, [&] {
        return Insiste([&] {
            if (MoveFileExW(Larga(antes).c_str(), Larga(ahora).c_str(), kComo) != 0)
                return true;
            const DWORD suyo = GetLastError();
            const bool ocupado = EstaAbierto(ahora);
            if (ocupado && RenombraSobreAbierto(antes, ahora))
                return true;
            SetLastError(ocupado ? ERROR_SHARING_VIOLATION : suyo);
            return false;
        });
    });
}

void Borra(const std::filesystem::path& ruta, Error& error)
{
    Llama(Llamada::Borrar, error,
          [&] { return Insiste([&] { return DeleteFileW(Larga(ruta).c_str()) != 0; }); });
}

void Enlaza(const std::filesystem::path& ruta, const std::filesystem::path& segunda, Error& error)
{
    Llama(Llamada::Enlazar, error, [&] {
        return CreateHardLinkW(Larga(segunda).c_str(), Larga(ruta).c_str(), nullptr) != 0;
    });
}

std::vector<std::filesystem::path> Lista(const std::filesystem::path& carpeta, Error& error)
{
    std::vector<std::filesystem::path> nombres;
    const std::filesystem::path todos = (carpeta.empty() ? L"." : carpeta) / L"*";
    Llama(Llamada::Listar, error, [&] {
        WIN32_FIND_DATAW datos = {};
        HANDLE busca = FindFirstFileW(Larga(todos).c_str(), &datos);
        if (busca == INVALID_HANDLE_VALUE) {
            SetLastError(ConSuLugar(todos, GetLastError()));
            return GetLastError() == ERROR_FILE_NOT_FOUND;
        }
        const std::unique_ptr<void, decltype(&FindClose)> cierra(busca, FindClose);
        do {
            const std::wstring_view nombre = datos.cFileName;
            if (nombre != L"." && nombre != L"..")
                nombres.emplace_back(nombre);
        } while (FindNextFileW(busca, &datos) != 0);
        return GetLastError() == ERROR_NO_MORE_FILES;
    });
    return nombres;
}

void CreaCarpeta(const std::filesystem::path& carpeta, Error& error)
{
    Llama(Llamada::Crear, error,
          [&] { return CreateDirectoryW(carpeta.c_str(), nullptr) != 0; }); // in the user's own
}

void CreaCarpetas(const std::filesystem::path& carpeta, Error& error)
{
    if (Llama(Llamada::Crear, error, [] { return true; }))
        std::filesystem::create_directories(carpeta, error);
}

const bool kSeReemplazaAbierto = false;

} // namespace sistema
