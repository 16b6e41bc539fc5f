#include "platform/system.h"

#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sistema {
namespace {

volatile std::sig_atomic_t g_interrupcion = 0; // a signal handler reaches nothing else

void AlInterrumpir(int numero)
{
    if (g_interrupcion != 0) {
        std::signal(numero, SIG_DFL);
        std::raise(numero);
    }
    g_interrupcion = 1;
}

std::FILE* SinBufer(std::FILE* fichero)
{
    if (fichero != nullptr)
        std::setvbuf(fichero, nullptr, _IONBF, 0);
    return fichero;
}

} // namespace

const std::string_view kSeparadores = "/";

std::filesystem::path Ruta(std::string_view nombre)
{
    return {nombre};
}

std::string Nombre(const std::filesystem::path& ruta)
{
    return ruta.native();
}

std::FILE* AbreLectura(const std::filesystem::path& ruta)
{
    return SinBufer(std::fopen(ruta.c_str(), "rb"));
}

std::FILE* AbreEscritura(const std::filesystem::path& ruta)
{
    return SinBufer(std::fopen(ruta.c_str(), "wb"));
}

std::FILE* CreaNuevo(const std::filesystem::path& ruta)
{
    return SinBufer(std::fopen(ruta.c_str(), "wbx"));
}

bool PuedeEscribir(const std::filesystem::path& ruta)
{
    return access(ruta.c_str(), W_OK) == 0;
}

std::uint64_t Longitud(std::FILE* fichero)
{
    struct stat datos = {};
    if (fstat(fileno(fichero), &datos) != 0 || !S_ISREG(datos.st_mode))
        return 0;
    return static_cast<std::uint64_t>(datos.st_size);
}

bool Posiciona(std::FILE* fichero, std::uint64_t posicion)
{
    return fseeko(fichero, static_cast<off_t>(posicion), SEEK_SET) == 0;
}

void CopiaPermisos(std::FILE* fichero, const std::filesystem::path& modelo)
{
    struct stat datos = {};
    if (stat(modelo.c_str(), &datos) != 0)
        return;
    // Only an administrator may give a file away; where that fails the file stays the user's own.
    // The owner goes first, as a change of owner can take permissions away.
    [[maybe_unused]] const int dueño = fchown(fileno(fichero), datos.st_uid, datos.st_gid);
    [[maybe_unused]] const int permisos = fchmod(fileno(fichero), datos.st_mode & 07777U);
}

bool Asegura(std::FILE* fichero)
{
    return fsync(fileno(fichero)) == 0;
}

bool EsTerminal(std::FILE* fichero)
{
    return isatty(fileno(fichero)) == 1;
}

void AbreFlujosCerrados()
{
    for (const int flujo : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(flujo, F_GETFD) == -1)
            open("/dev/null", O_RDWR); // takes the lowest number that is free, which is this one
}

std::filesystem::path FicheroPrograma()
{
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::filesystem::path CarpetaAjustes()
{
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg != nullptr && *xdg == '/') // a relative path there is to be passed over
        return xdg;
    const char* casa = std::getenv("HOME");
    return std::filesystem::path(casa != nullptr ? casa : ".") / ".config";
}

void VigilaInterrupcion()
{
    std::signal(SIGINT, AlInterrumpir);
}

bool HuboInterrupcion()
{
    const bool hubo = g_interrupcion != 0;
    g_interrupcion = 0;
    return hubo;
}

void OlvidaInterrupcion()
{
    std::signal(SIGINT, SIG_DFL);
    g_interrupcion = 0; // one that came too late stops nothing later
}

} // namespace sistema
