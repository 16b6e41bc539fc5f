#include "platform/system_files.h"

#include <algorithm>
#include <cwchar>
#include <limits>
#include <memory>
#include <string>

#include <fcntl.h>
#include <io.h>

#include <windows.h>

#include <aclapi.h>

#include "platform/ansi.h"
#include "platform/fault_point.h"

namespace sistema {
namespace {

struct CCierraManija {
    void operator()(HANDLE manija) const { CloseHandle(manija); }
};
using Manija = std::unique_ptr<void, CCierraManija>; // null where it isn't open

struct CSueltaMemoria {
    void operator()(void* memoria) const { LocalFree(memoria); }
};
using Descriptor = std::unique_ptr<void, CSueltaMemoria>; // what the system tells of rights

/// What is open here may be read, renamed and deleted by others. That two programs don't write one
/// file is for `Bloquea`, which can tell it from other faults.
constexpr DWORD kDeTodos = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The system's reason; where the library would take it for another one, the nearest that is right.
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

std::wstring Completa(const std::wstring& ruta)
{
    std::wstring entera(GetFullPathNameW(ruta.c_str(), 0, nullptr, nullptr), L'\0');
    const auto largo =
        GetFullPathNameW(ruta.c_str(), static_cast<DWORD>(entera.size()), entera.data(), nullptr);
    if (largo == 0 || largo >= entera.size())
        return ruta;
    entera.resize(largo);
    return entera;
}

constexpr std::wstring_view kLarga = L"\\\\?\\"; // in front of a path: it may have any length
constexpr std::wstring_view kLargaDeRed = L"\\\\?\\UNC\\";

/// The path as the system takes it however long it is.
std::wstring Larga(const std::filesystem::path& ruta)
{
    constexpr std::size_t kCabe = 240; // a folder's may have less than a file's
    constexpr std::wstring_view kRed = L"\\\\";
    std::wstring entera = Completa(ruta.native());
    if (entera.size() < kCabe)
        return ruta.native();
    if (entera.starts_with(kLarga) || entera.starts_with(L"\\\\.\\"))
        return entera;
    if (entera.starts_with(kRed))
        return entera.replace(0, kRed.size(), kLargaDeRed);
    return entera.insert(0, kLarga);
}

std::wstring SinPrefijo(std::wstring ruta)
{
    if (ruta.starts_with(kLargaDeRed))
        return ruta.replace(0, kLargaDeRed.size(), L"\\\\");
    if (ruta.starts_with(kLarga))
        ruta.erase(0, kLarga.size());
    return ruta;
}

struct CApertura {
    DWORD acceso;
    DWORD comparte = kDeTodos;
    DWORD siNoEsta = OPEN_EXISTING;
    DWORD atributos = FILE_ATTRIBUTE_NORMAL;
};

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

/// Number for an open file, which has it from here on.
int Numera(Manija manija, Error& error)
{
    const int fichero =
        _open_osfhandle(reinterpret_cast<std::intptr_t>(manija.get()), _O_BINARY | _O_NOINHERIT);
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

// Owners are texts of any length to the system; here a sum stands for each.
std::uint32_t Suma(PSID dueño)
{
    std::uint32_t suma = 2166136261U;
    const auto* bytes = static_cast<const unsigned char*>(dueño);
    for (DWORD i = 0; i < GetLengthSid(dueño); ++i)
        suma = (suma ^ bytes[i]) * 16777619U;
    return suma;
}

std::uint32_t DueñoDe(HANDLE manija)
{
    PSID dueño = nullptr;
    PSECURITY_DESCRIPTOR todo = nullptr;
    if (GetSecurityInfo(manija, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &dueño, nullptr,
                        nullptr, nullptr, &todo) != ERROR_SUCCESS)
        return 0;
    const Descriptor descriptor(todo);
    return dueño != nullptr ? Suma(dueño) : 0;
}

bool EsEnlace(HANDLE manija)
{
    FILE_ATTRIBUTE_TAG_INFO marca = {};
    return GetFileInformationByHandleEx(manija, FileAttributeTagInfo, &marca, sizeof marca) != 0 &&
           (marca.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           marca.ReparseTag == IO_REPARSE_TAG_SYMLINK;
}

constexpr std::uint64_t Junta(DWORD alto, DWORD bajo)
{
    return (std::uint64_t{alto} << 32U) | bajo;
}

bool LeeEstado(HANDLE manija, CEstado& estado)
{
    if (GetFileType(manija) != FILE_TYPE_DISK) {
        estado.tipo = CEstado::Tipo::Otro;
        return true;
    }
    BY_HANDLE_FILE_INFORMATION datos = {};
    if (GetFileInformationByHandle(manija, &datos) == 0)
        return false;
    estado.tipo = CEstado::Tipo::Regular;
    if (EsEnlace(manija))
        estado.tipo = CEstado::Tipo::Enlace;
    else if ((datos.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        estado.tipo = CEstado::Tipo::Carpeta;
    if (estado.tipo == CEstado::Tipo::Regular)
        estado.largo = Junta(datos.nFileSizeHigh, datos.nFileSizeLow);
    estado.disco = datos.dwVolumeSerialNumber;
    estado.numero = Junta(datos.nFileIndexHigh, datos.nFileIndexLow);
    estado.dueño = DueñoDe(manija);
    return true;
}

CEstado Mirado(const std::filesystem::path& ruta, DWORD atributos, Error& error)
{
    CEstado estado;
    Llama(Llamada::Mirar, error, [&] {
        Manija manija;
        for (const DWORD dueño :
             {DWORD{READ_CONTROL}, DWORD{0}}) // who may not ask for it goes without
            if (manija == nullptr)
                manija = AbreManija(ruta, {.acceso = FILE_READ_ATTRIBUTES | dueño,
                                           .atributos = FILE_FLAG_BACKUP_SEMANTICS | atributos});
        return manija != nullptr && LeeEstado(manija.get(), estado);
    });
    constexpr DWORD kBorrandose = 303; // it goes when the last one who has it open closes it
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
        Es(error, kBorrandose))
        error.clear();
    return error ? CEstado() : estado;
}

/// Tells whether the file takes nothing from its folder's rights.
bool EstaProtegido(PSECURITY_DESCRIPTOR descriptor)
{
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD version = 0;
    return GetSecurityDescriptorControl(descriptor, &control, &version) != 0 &&
           (control & SE_DACL_PROTECTED) != 0;
}

/// Tells whether the file has rights of its own besides those that it takes from its folder.
bool TieneSuyos(PACL lista)
{
    for (DWORD i = 0; i < lista->AceCount; ++i) {
        void* derecho = nullptr;
        if (GetAce(lista, i, &derecho) != 0 &&
            (static_cast<ACE_HEADER*>(derecho)->AceFlags & INHERITED_ACE) == 0)
            return true;
    }
    return false;
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

const std::string_view kSeparadores = "\\/:";

std::filesystem::path Ruta(std::string_view nombre)
{
    const std::string utf8 = ansi::AUtf8(nombre);
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Nombre(const std::filesystem::path& ruta)
{
    // The library's own conversion raises an exception for half a pair of units, which the system
    // lets a name have.
    const std::wstring& ancho = ruta.native();
    const auto unidades = static_cast<int>(ancho.size());
    const auto convierte = [&](char* utf8, int largo) {
        return WideCharToMultiByte(CP_UTF8, 0, ancho.data(), unidades, utf8, largo, nullptr,
                                   nullptr);
    };
    std::string utf8(static_cast<std::size_t>(convierte(nullptr, 0)), ' ');
    convierte(utf8.data(), static_cast<int>(utf8.size()));
    return utf8;
}

std::filesystem::path Entera(const std::filesystem::path& ruta)
{
    return Completa(ruta.native());
}

std::filesystem::path EnteraSinPuntos(const std::filesystem::path& ruta)
{
    return Entera(ruta); // the system takes them out by the letters, too
}

int Abre(const std::filesystem::path& ruta, Modo modo, Error& error)
{
    CApertura como = {.acceso = GENERIC_READ | GENERIC_WRITE};
    if (modo == Modo::Leer)
        como.acceso = GENERIC_READ;
    if (modo == Modo::EnSitio)
        como.acceso = GENERIC_WRITE;
    if (modo == Modo::EnSitio || modo == Modo::Tomar)
        como.siNoEsta = OPEN_ALWAYS;
    if (modo == Modo::Tomar)
        como.atributos |= FILE_FLAG_OPEN_REPARSE_POINT;
    Manija manija;
    Llama(Llamada::Abrir, error, [&] {
        manija = AbreManija(ruta, como);
        return manija != nullptr;
    });
    if (error == std::errc::permission_denied) {
        Error alMirar;
        if (Mira(ruta, alMirar).tipo == CEstado::Tipo::Carpeta)
            error = std::make_error_code(std::errc::is_a_directory);
    }
    if (!error && modo == Modo::Tomar && EsEnlace(manija.get()))
        error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
    return error ? kCerrado : Numera(std::move(manija), error);
}

int CreaAnonimo(Error& error)
{
    wchar_t carpeta[MAX_PATH + 1] = {};
    wchar_t nombre[MAX_PATH + 1] = {};
    Manija manija;
    Llama(Llamada::Abrir, error, [&] {
        if (GetTempPathW(MAX_PATH, carpeta) == 0 ||
            GetTempFileNameW(carpeta, L"cam", 0, nombre) == 0)
            return false;
        manija =
            AbreManija(nombre, {.acceso = GENERIC_READ | GENERIC_WRITE,
                                .siNoEsta = CREATE_ALWAYS,
                                .atributos = FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE});
        return manija != nullptr;
    });
    return error ? kCerrado : Numera(std::move(manija), error);
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

CEstado Mira(const std::filesystem::path& ruta, Error& error)
{
    return Mirado(ruta, 0, error);
}

CEstado MiraEnlace(const std::filesystem::path& ruta, Error& error)
{
    return Mirado(ruta, FILE_FLAG_OPEN_REPARSE_POINT, error);
}

CEstado Mira(int fichero, Error& error)
{
    CEstado estado;
    Llama(Llamada::Mirar, error, [&] { return LeeEstado(ManijaDe(fichero), estado); });
    return error ? CEstado() : estado;
}

bool EsMio(const CEstado& estado)
{
    HANDLE abierto = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &abierto) == 0)
        return false;
    const Manija proceso(abierto);
    // What an administrator makes belongs to all of them.
    for (const TOKEN_INFORMATION_CLASS quien : {TokenUser, TokenOwner}) {
        alignas(TOKEN_USER) unsigned char datos[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
        DWORD largo = 0;
        if (GetTokenInformation(proceso.get(), quien, datos, sizeof datos, &largo) == 0)
            continue;
        const PSID yo = quien == TokenUser ? reinterpret_cast<TOKEN_USER*>(datos)->User.Sid
                                           : reinterpret_cast<TOKEN_OWNER*>(datos)->Owner;
        if (Suma(yo) == estado.dueño)
            return true;
    }
    return false;
}

std::filesystem::path LeeEnlace(const std::filesystem::path& ruta, Error& error)
{
    std::wstring destino(std::numeric_limits<std::int16_t>::max(), L'\0');
    Llama(Llamada::Mirar, error, [&] {
        const Manija manija = AbreManija(
            ruta, {.acceso = FILE_READ_ATTRIBUTES, .atributos = FILE_FLAG_BACKUP_SEMANTICS});
        if (manija == nullptr)
            return false;
        const DWORD largo = GetFinalPathNameByHandleW(
            manija.get(), destino.data(), static_cast<DWORD>(destino.size()), FILE_NAME_NORMALIZED);
        destino.resize(std::min<std::size_t>(largo, destino.size()));
        return largo != 0;
    });
    return error ? std::filesystem::path() : std::filesystem::path(SinPrefijo(destino));
}

void PuedeEscribir(const std::filesystem::path& ruta, Error& error)
{
    Llama(Llamada::Mirar, error,
          [&] { return AbreManija(ruta, {.acceso = GENERIC_WRITE}) != nullptr; });
    if (Es(error, ERROR_SHARING_VIOLATION))
        error.clear(); // opening it will tell who has it
}

bool PuedeReemplazar(const std::filesystem::path& ruta, const CEstado& /*destino*/,
                     const CEstado& /*carpeta*/)
{
    Error error;
    return Llama(Llamada::Mirar, error,
                 [&] { return AbreManija(ruta, {.acceso = DELETE, .comparte = 0}) != nullptr; });
}

void CopiaDerechos(int fichero, const std::filesystem::path& modelo, Error& error)
{
    // A new file has the rights that its folder gives, as the model has unless somebody gave it
    // others. The owner is whoever makes it, as everywhere on this system.
    PACL lista = nullptr;
    PSECURITY_DESCRIPTOR todo = nullptr;
    const auto lee = [&] {
        const DWORD codigo =
            GetNamedSecurityInfoW(Larga(modelo).data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                  nullptr, nullptr, &lista, nullptr, &todo);
        SetLastError(codigo);
        return codigo == ERROR_SUCCESS;
    };
    if (!Llama(Llamada::Mirar, error, lee))
        return;
    const Descriptor descriptor(todo);
    const bool protegido = EstaProtegido(todo);
    if (lista == nullptr || (!protegido && !TieneSuyos(lista)))
        return;
    const SECURITY_INFORMATION que =
        DACL_SECURITY_INFORMATION | (protegido ? PROTECTED_DACL_SECURITY_INFORMATION : DWORD{0});
    Llama(Llamada::Derechos, error, [&] {
        HANDLE suya = ReOpenFile(ManijaDe(fichero), READ_CONTROL | WRITE_DAC, kDeTodos, 0);
        if (suya == INVALID_HANDLE_VALUE)
            return false;
        const Manija manija(suya);
        const DWORD codigo =
            SetSecurityInfo(suya, SE_FILE_OBJECT, que, nullptr, nullptr, lista, nullptr);
        SetLastError(codigo);
        return codigo == ERROR_SUCCESS;
    });
}

bool Bloquea(int fichero, Error& error)
{
    // Nobody can read what is locked, so it is a byte that no file reaches.
    OVERLAPPED donde = {};
    donde.OffsetHigh = 0x40000000;
    Llama(Llamada::Bloquear, error, [&] {
        return LockFileEx(ManijaDe(fichero), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0,
                          1, 0, &donde) != 0;
    });
    const bool deOtro = error == kDeOtro || Es(error, ERROR_IO_PENDING);
    if (deOtro || error == std::errc::function_not_supported)
        error.clear(); // some shares know no locks; there nobody can be kept out
    return !deOtro && !error;
}

void Renombra(const std::filesystem::path& antes, const std::filesystem::path& ahora, Error& error)
{
    constexpr DWORD kComo = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    Llama(Llamada::Renombrar, error,
          [&] { return MoveFileExW(Larga(antes).c_str(), Larga(ahora).c_str(), kComo) != 0; });
    if (Es(error, ERROR_ACCESS_DENIED) && EstaAbierto(ahora))
        error = Fallo(ERROR_SHARING_VIOLATION); // the reason that a person can do something about
}

void Borra(const std::filesystem::path& ruta, Error& error)
{
    Llama(Llamada::Borrar, error, [&] { return DeleteFileW(Larga(ruta).c_str()) != 0; });
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
        if (busca == INVALID_HANDLE_VALUE)
            return GetLastError() == ERROR_FILE_NOT_FOUND;
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

void CreaCarpetas(const std::filesystem::path& carpeta, Error& error)
{
    const int tropiezo = Tropiezo(Llamada::Crear);
    error = Error(tropiezo, std::generic_category());
    if (tropiezo == 0)
        std::filesystem::create_directories(carpeta, error);
}

const bool kSeReemplazaAbierto = false;

} // namespace sistema
