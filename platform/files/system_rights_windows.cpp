#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <string>

#include "platform/files/windows_handles.h"

#include <aclapi.h>

// What stands behind a name on Windows, whose it is and who may do what with it.

namespace sistema {
namespace {

struct CSueltaMemoria {
    void operator()(void* memoria) const { LocalFree(memoria); }
};
using Descriptor = std::unique_ptr<void, CSueltaMemoria>; // what the system tells of rights

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
    estado.nombres = datos.nNumberOfLinks;
    estado.escrito = static_cast<std::int64_t>(
        Junta(datos.ftLastWriteTime.dwHighDateTime, datos.ftLastWriteTime.dwLowDateTime));
    return true;
}

CEstado Mirado(const std::filesystem::path& ruta, DWORD atributos, Error& error)
{
    CEstado estado;
    error.clear();
    if (PasaPorDispositivo(ruta))
        return estado; // no file can stand there
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

/// Tells whether on the file's disk another one may take its place while it is open.
bool SabeReemplazarAbiertos(HANDLE manija)
{
    constexpr DWORD kSabe = 0x400; // FILE_SUPPORTS_POSIX_UNLINK_RENAME, for which headers are old
    DWORD disco = 0;
    return GetVolumeInformationByHandleW(manija, nullptr, 0, nullptr, nullptr, &disco, nullptr,
                                         0) != 0 &&
           (disco & kSabe) != 0;
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

} // namespace

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

std::string NombreDelDueño(const std::filesystem::path& ruta)
{
    PSID dueño = nullptr;
    PSECURITY_DESCRIPTOR todo = nullptr;
    wchar_t nombre[256] = {};
    wchar_t dominio[256] = {};
    DWORD largo = std::size(nombre);
    DWORD suyo = std::size(dominio);
    SID_NAME_USE clase = {};
    if (GetNamedSecurityInfoW(Larga(ruta).c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION,
                              &dueño, nullptr, nullptr, nullptr, &todo) != ERROR_SUCCESS)
        return "?";
    const Descriptor descriptor(todo);
    if (LookupAccountSidW(nullptr, dueño, nombre, &largo, dominio, &suyo, &clase) == 0)
        return "?";
    return Nombre(nombre);
}

bool SePuedeSeguir(const CEstado& /*enlace*/, const CEstado& /*carpeta*/)
{
    return true; // only who may administer the machine makes one
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
    return Llama(Llamada::Mirar, error, [&] {
        return Insiste([&] {
            Manija manija = AbreManija(ruta, {.acceso = DELETE});
            if (manija == nullptr)
                return false; // somebody has it who doesn't let it be renamed
            if (SabeReemplazarAbiertos(manija.get()))
                return true;
            manija.reset();
            return AbreManija(ruta, {.acceso = DELETE, .comparte = 0}) != nullptr;
        });
    });
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

} // namespace sistema
