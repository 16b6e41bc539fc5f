#include "platform/system.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <pwd.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace sistema {
namespace {

// A signal handler reaches nothing else.
volatile std::sig_atomic_t g_interrupcion = 0; // one that nobody looked at yet
volatile std::sig_atomic_t g_final = 0; // the signal by which the process is to end, 0 for none
volatile std::sig_atomic_t g_seContesta = 1; // whether to stop can be asked

struct CSenal {
    int numero;
    bool seVigila = false; // it is noted, and doesn't act as usual
};
CSenal g_senales[] = {{SIGINT}, {SIGTERM}, {SIGHUP}};

bool g_aguanta = false;                  // a pipe that breaks ends nothing
void (*g_conTuberiaRota)(int) = SIG_DFL; // what it did before

void AlLlegar(int numero)
{
    if (g_final == SIGHUP && numero == SIGHUP)
        return; // a terminal that closes sends one, and its shell another
    if (g_final != 0) {
        std::signal(numero, SIG_DFL);
        std::raise(numero);
    } else if (numero != SIGINT || g_interrupcion != 0 || g_seContesta == 0) {
        g_final = numero;
    } else {
        g_interrupcion = 1;
    }
}

} // namespace

void EscribeError(std::string_view texto) noexcept
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
    std::string paginador;
    if (const char* suyo = std::getenv("PAGER"); suyo != nullptr)
        paginador = suyo;
    else // of somebody who never chose one: what the system has
        for (const char* usual : {"pager", "less"})
            if (paginador.empty() && !BuscaPrograma(usual).empty())
                paginador = usual;
    std::FILE* entrada = paginador.empty() ? nullptr : popen(paginador.c_str(), "w");
    if (entrada == nullptr)
        return false;
    // He who leaves it early or presses Ctrl-C means the pager.
    auto* const conInterrupcion = std::signal(SIGINT, SIG_IGN);
    auto* const conTuberiaRota = std::signal(SIGPIPE, SIG_IGN);
    std::fwrite(texto.data(), 1, texto.size(), entrada);
    constexpr int kNoExiste = 127; // the shell's word for it
    const int estado = pclose(entrada);
    std::signal(SIGINT, conInterrupcion);
    std::signal(SIGPIPE, conTuberiaRota);
    return !WIFEXITED(estado) || WEXITSTATUS(estado) != kNoExiste;
}

void PreparaFlujos()
{
    for (const int flujo : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(flujo, F_GETFD) == -1)
            open("/dev/null", O_RDWR); // takes the lowest number that is free, which is this one
    std::signal(SIGXFSZ, SIG_IGN);     // a write past the user's limit fails, and can be told
}

void DejaConsola() {} // there a program lives on without a terminal, if it wants to

void Imprime(std::FILE* fichero, std::string_view texto)
{
    std::fwrite(texto.data(), 1, texto.size(), fichero);
    std::fflush(fichero);
}

void SalDeLaCarpetaDelPrograma() {} // menus start a program in its user's home

std::vector<std::string> Argumentos(int argc, const char* const* argv)
{
    return {argv, argv + argc};
}

int LeeByte()
{
    return std::getc(stdin);
}

std::filesystem::path FicheroPrograma()
{
    static const std::filesystem::path suyo = [] {
        std::string ruta(PATH_MAX, '\0'); // the system tells no longer one
        const ssize_t largo = readlink("/proc/self/exe", ruta.data(), ruta.size());
        ruta.resize(static_cast<std::size_t>(std::max<ssize_t>(largo, 0)));
        return std::filesystem::path(std::move(ruta));
    }();
    return suyo;
}

std::filesystem::path BuscaPrograma(std::string_view nombre)
{
    const auto sirve = [](const std::filesystem::path& ruta) {
        std::error_code error; // what stands in the folder that somebody works in isn't ours
        return ruta.is_absolute() && std::filesystem::is_regular_file(ruta, error) &&
               access(ruta.c_str(), X_OK) == 0;
    };
    if (auto junto = FicheroPrograma().parent_path() / nombre; sirve(junto))
        return junto;
    const char* const path = std::getenv("PATH");
    std::string_view quedan = path != nullptr ? path : "";
    while (!quedan.empty()) {
        const std::string_view carpeta = quedan.substr(0, quedan.find(':'));
        quedan.remove_prefix(std::min(carpeta.size() + 1, quedan.size()));
        if (auto ruta = std::filesystem::path(carpeta) / nombre; sirve(ruta))
            return ruta;
    }
    return {};
}

std::filesystem::path CarpetaAjustes()
{
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg != nullptr && *xdg == '/') // a relative path there is to be passed over
        return xdg;
    const char* casa = std::getenv("HOME");
    if (casa == nullptr || *casa == '\0') { // or the settings would go where somebody works
        const passwd* const suyo = getpwuid(getuid());
        casa = suyo == nullptr ? "." : suyo->pw_dir;
    }
    return std::filesystem::path(casa) / ".config";
}

void VigilaSenales(bool seContesta)
{
    g_seContesta = seContesta ? 1 : 0;
    for (CSenal& senal : g_senales) {
        struct sigaction actual = {};
        if (!senal.seVigila && sigaction(senal.numero, nullptr, &actual) == 0 &&
            actual.sa_handler == SIG_DFL)
            senal.seVigila = std::signal(senal.numero, AlLlegar) != SIG_ERR;
    }
}

bool HuboInterrupcion()
{
    if (g_interrupcion == 0)
        return false;
    g_interrupcion = 0; // not before it was seen, lest one that comes in between be lost
    return true;
}

void PideAcabar()
{
    std::raise(SIGTERM);
}

bool HayQueAcabar()
{
    return g_final != 0;
}

void OlvidaSenales()
{
    for (CSenal& senal : g_senales)
        if (std::exchange(senal.seVigila, false))
            std::signal(senal.numero, SIG_DFL);
    g_interrupcion = 0; // one that came too late stops nothing later
    if (g_final != 0)
        std::raise(g_final);
}

void AguantaTuberiaRota()
{
    if (!std::exchange(g_aguanta, true))
        g_conTuberiaRota = std::signal(SIGPIPE, SIG_IGN);
}

void SueltaTuberiaRota()
{
    if (std::exchange(g_aguanta, false))
        std::signal(SIGPIPE, g_conTuberiaRota);
}

bool EsperaLinea()
{
    // A read would be taken up again behind a signal, this is not; one that came just before is
    // seen at the next look.
    constexpr int kUnRato = 100; // milliseconds
    pollfd entrada = {STDIN_FILENO, POLLIN, 0};
    while (!HayQueAcabar()) {
        const int listos = poll(&entrada, 1, kUnRato);
        if (listos > 0 || (listos < 0 && errno != EINTR))
            return true;
        if (g_interrupcion != 0) // at the question whether to stop it is the second one
            g_final = SIGINT;
    }
    return false;
}

} // namespace sistema
