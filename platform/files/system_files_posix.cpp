#include "platform/files/posix_calls.h"

#include <climits>
#include <cstdlib>
#include <limits>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/system.h"

namespace sistema {

const std::string_view kSeparadores = "/";

std::filesystem::path Ruta(std::string_view nombre)
{
    return {nombre};
}

std::string Nombre(const std::filesystem::path& ruta)
{
    return ruta.native();
}

std::filesystem::path Entera(const std::filesystem::path& ruta)
{
    Error error;
    const std::filesystem::path entera = std::filesystem::absolute(ruta, error);
    return error ? ruta : entera;
}

std::filesystem::path EnteraSinPuntos(const std::filesystem::path& ruta)
{
    return Entera(ruta).lexically_normal();
}

namespace {

constexpr int kCadaMs = 100; // a signal between the look for it and a wait interrupts nothing

/// Waits until a pipe or device can be read or written. False where the process is to end first,
/// with the error of a call that a signal interrupted.
bool Espera(int fichero, short para, Error& error)
{
    pollfd espera = {fichero, para, 0};
    const Llamada cual = para == POLLIN ? Llamada::Leer : Llamada::Escribir;
    int listos = 0;
    do {
        if (HayQueAcabar()) {
            error = std::make_error_code(std::errc::interrupted);
            return false;
        }
        listos = Llama(cual, error, [&] { return poll(&espera, 1, kCadaMs); });
    } while (listos == 0);
    return true;
}

/// Waits a little for a pipe's reader, after an attempt to open it. False where it isn't that which
/// is missing, or the process is to end.
bool EsperaLector(const std::filesystem::path& ruta, Error& error)
{
    Error alMirar;
    if (error != std::errc::no_such_device_or_address || !std::filesystem::is_fifo(ruta, alMirar))
        return false;
    if (HayQueAcabar()) {
        error = std::make_error_code(std::errc::interrupted);
        return false;
    }
    poll(nullptr, 0, kCadaMs);
    return true;
}

} // namespace

CAbierto Abre(const std::filesystem::path& ruta, Modo modo, Error& error)
{
    mode_t permisos = modo == Modo::CrearSinOtros ? 0644 : 0666;
    if (modo == Modo::CrearPrivado)
        permisos = 0600;
    int como = O_CLOEXEC;
    switch (modo) {
    case Modo::Leer:
        como |= O_RDONLY | O_NONBLOCK; // a pipe is waited for where a signal ends the wait
        break;
    case Modo::LeerEse:
        como |= O_RDONLY | O_NONBLOCK | O_NOFOLLOW;
        break;
    case Modo::EnSitio:
        como |= O_WRONLY | O_CREAT | O_NONBLOCK;
        break;
    case Modo::Cambiar:
        como |= O_RDWR | O_NOFOLLOW;
        break;
    case Modo::Tomar:
        como |= O_RDWR | O_NOFOLLOW | O_CREAT;
        break;
    case Modo::Crear:
    case Modo::CrearSinOtros:
    case Modo::CrearPrivado:
        como |= O_RDWR | O_NOFOLLOW | O_CREAT | O_EXCL;
        break;
    }
    int fichero = kCerrado;
    do
        fichero = Llama(Llamada::Abrir, error, [&] { return open(ruta.c_str(), como, permisos); });
    while (modo == Modo::EnSitio && EsperaLector(ruta, error));
    return CAbierto(fichero);
}

CAbierto CreaAnonimo(Error& error)
{
    Error sinCarpeta;
    std::string nombre =
        (std::filesystem::temp_directory_path(sinCarpeta) / "salidaXXXXXX").string();
    const int fichero =
        Llama(Llamada::Abrir, error, [&] { return mkostemp(nombre.data(), O_CLOEXEC); });
    if (fichero != kCerrado)
        unlink(nombre.c_str());
    return CAbierto(fichero);
}

std::size_t Lee(int fichero, char* bytes, std::size_t n, Error& error)
{
    const auto leidos = Llama(Llamada::Leer, error, [&] { return read(fichero, bytes, n); });
    return leidos > 0 ? static_cast<std::size_t>(leidos) : 0;
}

std::size_t LeeEn(int fichero, char* bytes, std::size_t n, std::uint64_t posicion, Error& error)
{
    error.clear();
    if (posicion > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()) - n)
        return 0; // no file reaches there
    const auto leidos = Llama(Llamada::Leer, error, [&] {
        return pread(fichero, bytes, n, static_cast<off_t>(posicion));
    });
    return leidos > 0 ? static_cast<std::size_t>(leidos) : 0;
}

bool EsperaDatos(int fichero, Error& error)
{
    return Espera(fichero, POLLIN, error);
}

void Escribe(int fichero, std::string_view bytes, Error& error)
{
    error.clear();
    while (!bytes.empty() && !error) {
        const auto escritos = Llama(Llamada::Escribir, error,
                                    [&] { return write(fichero, bytes.data(), bytes.size()); });
        if (escritos > 0)
            bytes.remove_prefix(static_cast<std::size_t>(escritos));
        else if (error == std::errc::resource_unavailable_try_again) // a pipe that is full
            Espera(fichero, POLLOUT, error);
    }
}

void Recorta(int fichero, std::uint64_t largo, Error& error)
{
    const auto hasta = static_cast<off_t>(largo);
    if (Llama(Llamada::Recortar, error, [&] { return ftruncate(fichero, hasta); }) == 0)
        Llama(Llamada::Recortar, error, [&] { return lseek(fichero, 0, SEEK_SET); });
}

void Asegura(int fichero, Error& error)
{
    Llama(Llamada::Asegurar, error, [&] { return fsync(fichero); });
    if (error == std::errc::invalid_argument || error == std::errc::read_only_file_system)
        error.clear(); // what has no disk below it
}

void AseguraCarpeta(const std::filesystem::path& carpeta, Error& error)
{
    const char* nombre = carpeta.empty() ? "." : carpeta.c_str();
    const int abierta = Llama(Llamada::Abrir, error,
                              [&] { return open(nombre, O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (error == std::errc::permission_denied)
        error.clear(); // one that may be written and not looked at can't be waited for
    if (abierta == kCerrado)
        return;
    Asegura(abierta, error);
    Error alCerrar;
    Cierra(abierta, alCerrar);
    if (!error)
        error = alCerrar;
}

void Cierra(int fichero, Error& error)
{
    error.clear();
    const int tropiezo = Tropiezo(Llamada::Cerrar);
    const int fallo = close(fichero) != 0 ? errno : tropiezo;
    if (fallo != 0 && fallo != EINTR) // which has closed it all the same
        error = Error(fallo, std::generic_category());
}

bool SonElMismoNombre(const std::filesystem::path& uno, const std::filesystem::path& otro)
{
    return uno.native() == otro.native();
}

std::filesystem::path LeeEnlace(const std::filesystem::path& ruta, Error& error)
{
    char destino[PATH_MAX];
    const auto largo =
        Llama(Llamada::Mirar, error, [&] { return readlink(ruta.c_str(), destino, PATH_MAX); });
    if (error)
        return {};
    // An absolute one replaces the whole.
    return ruta.parent_path() / std::string_view(destino, static_cast<std::size_t>(largo));
}

Bloqueo Bloquea(int fichero, Error& error)
{
    Llama(Llamada::Bloquear, error, [&] { return flock(fichero, LOCK_EX | LOCK_NB); });
    if (!error)
        return Bloqueo::Mio;
    const bool noHay =
        error == std::errc::operation_not_supported || error == std::errc::no_lock_available;
    if (noHay || error == std::errc::operation_would_block)
        error.clear();
    return noHay ? Bloqueo::NoHay : Bloqueo::DeOtro;
}

void Renombra(const std::filesystem::path& antes, const std::filesystem::path& ahora, Error& error)
{
    Llama(Llamada::Renombrar, error, [&] { return rename(antes.c_str(), ahora.c_str()); });
}

void Borra(const std::filesystem::path& ruta, Error& error)
{
    Llama(Llamada::Borrar, error, [&] { return unlink(ruta.c_str()); });
}

void Enlaza(const std::filesystem::path& ruta, const std::filesystem::path& segunda, Error& error)
{
    Llama(Llamada::Enlazar, error, [&] { return link(ruta.c_str(), segunda.c_str()); });
}

std::vector<std::filesystem::path> Lista(const std::filesystem::path& carpeta, Error& error)
{
    // The standard library's own walk ends the program where it finds no memory.
    std::vector<std::filesystem::path> nombres;
    Llama(Llamada::Listar, error, [] { return 0; });
    if (error)
        return nombres;
    const std::unique_ptr<DIR, int (*)(DIR*)> abierta(
        opendir(carpeta.empty() ? "." : carpeta.c_str()), closedir);
    errno = abierta == nullptr ? errno : 0;
    while (abierta != nullptr) {
        const dirent* entrada = readdir(abierta.get());
        if (entrada == nullptr)
            break;
        const std::string_view nombre = entrada->d_name;
        if (nombre != "." && nombre != "..")
            nombres.emplace_back(nombre);
        errno = 0; // which tells the end from a failure
    }
    error = Error(errno, std::generic_category());
    return nombres;
}

void CreaCarpeta(const std::filesystem::path& carpeta, Error& error)
{
    Llama(Llamada::Crear, error, [&] { return mkdir(carpeta.c_str(), S_IRWXU); });
}

void CreaCarpetas(const std::filesystem::path& carpeta, Error& error)
{
    Llama(Llamada::Crear, error, [] { return 0; });
    if (!error)
        std::filesystem::create_directories(carpeta, error);
}

const bool kSeReemplazaAbierto = true;

} // namespace sistema
