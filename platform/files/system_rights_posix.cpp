#include "platform/files/posix_calls.h"

#include <pwd.h>
#include <sys/stat.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif
#include <unistd.h>

// What stands behind a name, whose it is and who may do what with it.

namespace sistema {
namespace {

CEstado::Tipo TipoDe(mode_t modo)
{
    if (S_ISREG(modo))
        return CEstado::Tipo::Regular;
    if (S_ISDIR(modo))
        return CEstado::Tipo::Carpeta;
    return S_ISLNK(modo) ? CEstado::Tipo::Enlace : CEstado::Tipo::Otro;
}

constexpr std::int64_t kNanosegundos = 1'000'000'000;

template <class F>
CEstado Mirado(Error& error, F mira)
{
    struct stat datos = {};
    Llama(Llamada::Mirar, error, [&] { return mira(datos); });
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory) {
        error.clear();
        return {};
    }
    if (error)
        return {};
    const CEstado::Tipo tipo = TipoDe(datos.st_mode);
    return {tipo,
            tipo == CEstado::Tipo::Regular ? static_cast<std::uint64_t>(datos.st_size) : 0,
            datos.st_dev,
            datos.st_ino,
            datos.st_uid,
            datos.st_mode & 07777U,
            datos.st_nlink,
            std::int64_t{datos.st_mtim.tv_sec} * kNanosegundos + datos.st_mtim.tv_nsec};
}

/// Rights beyond owner, group and all others, where the file system has such.
void CopiaListaDeAcceso(int fichero, const std::filesystem::path& modelo, Error& error)
{
#ifdef __linux__
    constexpr const char* kLista = "system.posix_acl_access";
    char lista[4096];
    const auto noHay = [](const Error& causa) {
        return causa == std::errc::no_message_available ||
               causa == std::errc::operation_not_supported;
    };
    const auto largo = Llama(Llamada::Derechos, error,
                             [&] { return getxattr(modelo.c_str(), kLista, lista, sizeof lista); });
    if (!error) {
        Llama(Llamada::Derechos, error, [&] {
            return fsetxattr(fichero, kLista, lista, static_cast<std::size_t>(largo), 0);
        });
    } else if (noHay(error)) { // nor is the folder's list to come with the new file
        Llama(Llamada::Derechos, error, [&] { return fremovexattr(fichero, kLista); });
        if (noHay(error))
            error.clear();
    }
#endif
}

} // namespace

CEstado Mira(const std::filesystem::path& ruta, Error& error)
{
    return Mirado(error, [&](struct stat& datos) { return stat(ruta.c_str(), &datos); });
}

CEstado MiraEnlace(const std::filesystem::path& ruta, Error& error)
{
    return Mirado(error, [&](struct stat& datos) { return lstat(ruta.c_str(), &datos); });
}

CEstado Mira(int fichero, Error& error)
{
    return Mirado(error, [&](struct stat& datos) { return fstat(fichero, &datos); });
}

bool EsMio(const CEstado& estado)
{
    return estado.dueño == geteuid();
}

std::string NombreDelDueño(const std::filesystem::path& ruta)
{
    struct stat datos = {};
    passwd usuario = {};
    passwd* hallado = nullptr;
    char textos[4096];
    if (lstat(ruta.c_str(), &datos) != 0)
        return "?";
    if (getpwuid_r(datos.st_uid, &usuario, textos, sizeof textos, &hallado) == 0 &&
        hallado != nullptr)
        return usuario.pw_name;
    return std::to_string(datos.st_uid);
}

bool SePuedeSeguir(const CEstado& enlace, const CEstado& carpeta)
{
    // As the system itself has it where it is told to protect links.
    const bool escribenTodos = (carpeta.permisos & S_IWOTH) != 0;
    return !carpeta.EsDeTodosConDueño() || !escribenTodos || EsMio(enlace) ||
           enlace.dueño == carpeta.dueño;
}

std::string ProgramasQueTienen(const std::filesystem::path& /*ruta*/)
{
    return {}; // here what is open can be replaced
}

void PuedeEscribir(const std::filesystem::path& ruta, Error& error)
{
    Llama(Llamada::Mirar, error, [&] { return access(ruta.c_str(), W_OK); });
}

bool PuedeReemplazar(const std::filesystem::path& /*ruta*/, const CEstado& destino,
                     const CEstado& carpeta)
{
    const bool pegajosa = carpeta.EsDeTodosConDueño();
    const uid_t yo = geteuid();
    return !pegajosa || yo == 0 || yo == destino.dueño || yo == carpeta.dueño;
}

void CopiaDerechos(int fichero, const std::filesystem::path& modelo, Error& error)
{
    struct stat suyos = {};
    struct stat mios = {};
    Llama(Llamada::Mirar, error, [&] { return stat(modelo.c_str(), &suyos); });
    if (!error)
        Llama(Llamada::Mirar, error, [&] { return fstat(fichero, &mios); });
    // The owner goes first, as a change of owner can take permissions away.
    if (!error && (suyos.st_uid != mios.st_uid || suyos.st_gid != mios.st_gid))
        Llama(Llamada::Derechos, error,
              [&] { return fchown(fichero, suyos.st_uid, suyos.st_gid); });
    if (!error)
        Llama(Llamada::Derechos, error, [&] { return fchmod(fichero, suyos.st_mode & 07777U); });
    if (!error)
        CopiaListaDeAcceso(fichero, modelo, error);
}

void AbreATodos(int fichero, const CEstado& estado)
{
    constexpr mode_t kTodos = 0666;
    if ((estado.permisos & kTodos) != kTodos)
        static_cast<void>(fchmod(fichero, kTodos));
}

} // namespace sistema
