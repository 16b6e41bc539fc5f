#include "platform/system.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif
#include <unistd.h>

#include "platform/fault_point.h"

namespace sistema {
namespace {

constexpr int kSenales[] = {SIGINT, SIGTERM, SIGHUP};

// A signal handler reaches nothing else.
volatile std::sig_atomic_t g_interrupcion = 0; // one that nobody looked at yet
volatile std::sig_atomic_t g_final = 0; // the signal by which the process is to end, 0 for none

void AlLlegar(int numero)
{
    if (g_final != 0) {
        std::signal(numero, SIG_DFL);
        std::raise(numero);
    } else if (numero != SIGINT || g_interrupcion != 0) {
        g_final = numero;
    } else {
        g_interrupcion = 1;
    }
}

/// Puts one handler in the place of the other; a signal that has neither keeps what it has.
void CambiaManejador(void (*antes)(int), void (*ahora)(int))
{
    for (const int senal : kSenales) {
        struct sigaction actual = {};
        if (sigaction(senal, nullptr, &actual) == 0 && actual.sa_handler == antes)
            std::signal(senal, ahora);
    }
}

/// Passes over the signals that are meant for a program in front of this one while it lives.
class CSinSenales {
public:
    CSinSenales()
        : m_interrupcion(std::signal(SIGINT, SIG_IGN)), m_tuberia(std::signal(SIGPIPE, SIG_IGN))
    {
    }
    CSinSenales(const CSinSenales&) = delete;
    CSinSenales& operator=(const CSinSenales&) = delete;
    ~CSinSenales()
    {
        std::signal(SIGINT, m_interrupcion);
        std::signal(SIGPIPE, m_tuberia);
    }

private:
    void (*m_interrupcion)(int);
    void (*m_tuberia)(int);
};

/// Makes a call that gives -1 and an error number on failure; one that a signal interrupted again.
template <class F>
auto Llama(Llamada cual, Error& error, F llamada) -> decltype(llamada())
{
    error.clear();
    for (;;) {
        if (const int tropiezo = Tropiezo(cual); tropiezo != 0)
            errno = tropiezo;
        else if (const auto resultado = llamada(); resultado != -1)
            return resultado;
        if (errno == EINTR)
            continue;
        error = Error(errno, std::generic_category());
        return -1;
    }
}

CEstado::Tipo TipoDe(mode_t modo)
{
    if (S_ISREG(modo))
        return CEstado::Tipo::Regular;
    if (S_ISDIR(modo))
        return CEstado::Tipo::Carpeta;
    return S_ISLNK(modo) ? CEstado::Tipo::Enlace : CEstado::Tipo::Otro;
}

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
            datos.st_mode & 07777U};
}

/// Rights beyond owner, group and all others, where the file system has such.
void CopiaListaDeAcceso(int fichero, const std::filesystem::path& modelo, Error& error)
{
#ifdef __linux__
    constexpr const char* kLista = "system.posix_acl_access";
    char lista[4096];
    const auto largo = getxattr(modelo.c_str(), kLista, lista, sizeof lista);
    if (largo > 0)
        Llama(Llamada::Derechos, error, [&] {
            return fsetxattr(fichero, kLista, lista, static_cast<std::size_t>(largo), 0);
        });
#endif
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

int Abre(const std::filesystem::path& ruta, Modo modo, Error& error)
{
    constexpr mode_t kPermisos = 0666;
    int como = O_CLOEXEC;
    switch (modo) {
    case Modo::Leer:
        como |= O_RDONLY;
        break;
    case Modo::EnSitio:
        como |= O_WRONLY | O_CREAT;
        break;
    case Modo::Cambiar:
        como |= O_RDWR;
        break;
    case Modo::Tomar:
        como |= O_RDWR | O_CREAT | O_NOFOLLOW;
        break;
    }
    return Llama(Llamada::Abrir, error, [&] { return open(ruta.c_str(), como, kPermisos); });
}

int CreaAnonimo(Error& error)
{
    Error sinCarpeta;
    std::string nombre =
        (std::filesystem::temp_directory_path(sinCarpeta) / "campivaXXXXXX").string();
    const int fichero =
        Llama(Llamada::Abrir, error, [&] { return mkostemp(nombre.data(), O_CLOEXEC); });
    if (fichero != kCerrado)
        unlink(nombre.c_str());
    return fichero;
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

void Escribe(int fichero, std::string_view bytes, Error& error)
{
    error.clear();
    while (!bytes.empty() && !error) {
        const auto escritos = Llama(Llamada::Escribir, error,
                                    [&] { return write(fichero, bytes.data(), bytes.size()); });
        if (escritos > 0)
            bytes.remove_prefix(static_cast<std::size_t>(escritos));
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

bool PuedeEscribir(const std::filesystem::path& ruta)
{
    Error error;
    return Llama(Llamada::Mirar, error, [&] { return access(ruta.c_str(), W_OK); }) == 0;
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

bool Bloquea(int fichero, Error& error)
{
    const int hecho =
        Llama(Llamada::Bloquear, error, [&] { return flock(fichero, LOCK_EX | LOCK_NB); });
    const bool deOtro = error == std::errc::operation_would_block;
    if (deOtro || error == std::errc::operation_not_supported ||
        error == std::errc::no_lock_available)
        error.clear(); // some shares know no locks; there nobody can be kept out
    return hecho == 0 || (!deOtro && !error);
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

void CreaCarpetas(const std::filesystem::path& carpeta, Error& error)
{
    Llama(Llamada::Crear, error, [] { return 0; });
    if (!error)
        std::filesystem::create_directories(carpeta, error);
}

const bool kSeReemplazaAbierto = true;

void Avisa(std::string_view texto) noexcept
{
    [[maybe_unused]] const auto escritos = write(STDERR_FILENO, texto.data(), texto.size());
}

bool EsTerminal(std::FILE* fichero)
{
    return isatty(fileno(fichero)) == 1;
}

std::optional<std::size_t> AnchoTerminal(std::FILE* fichero)
{
    winsize medidas = {};
    if (ioctl(fileno(fichero), TIOCGWINSZ, &medidas) != 0 || medidas.ws_col == 0)
        return {};
    return medidas.ws_col;
}

bool Pagina(std::string_view texto)
{
    const char* paginador = std::getenv("PAGER");
    if (paginador == nullptr || *paginador == '\0')
        return false;
    std::FILE* entrada = popen(paginador, "w");
    if (entrada == nullptr)
        return false;
    const CSinSenales mientras; // he who leaves it early or presses Ctrl-C means the pager
    std::fwrite(texto.data(), 1, texto.size(), entrada);
    constexpr int kNoExiste = 127; // the shell's word for it
    const int estado = pclose(entrada);
    return !WIFEXITED(estado) || WEXITSTATUS(estado) != kNoExiste;
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

void VigilaSenales()
{
    CambiaManejador(SIG_DFL, AlLlegar);
}

bool HuboInterrupcion()
{
    const bool hubo = g_interrupcion != 0;
    g_interrupcion = 0;
    return hubo;
}

bool HayQueAcabar()
{
    return g_final != 0;
}

void OlvidaSenales()
{
    CambiaManejador(AlLlegar, SIG_DFL);
    g_interrupcion = 0; // one that came too late stops nothing later
    if (g_final != 0)
        std::raise(g_final);
}

bool EsperaLinea()
{
    // A read would be taken up again behind a signal, this is not.
    pollfd entrada = {STDIN_FILENO, POLLIN, 0};
    while (!HayQueAcabar())
        if (poll(&entrada, 1, -1) >= 0 || errno != EINTR)
            return true;
    return false;
}

} // namespace sistema
