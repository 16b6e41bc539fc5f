#include "platform/child_processes.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <limits>
#include <string_view>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/prctl.h>
#endif

#include "platform/system.h"

// Other programs, started and waited for.

namespace {

using sistema::Error;

Error Fallo(int numero)
{
    return {numero, std::generic_category()};
}

std::vector<char*> Punteros(std::vector<std::string>& textos)
{
    std::vector<char*> punteros;
    punteros.reserve(textos.size() + 1);
    for (std::string& texto : textos)
        punteros.push_back(texto.data());
    punteros.push_back(nullptr);
    return punteros;
}

/// The variables of this process with others in their place.
std::vector<std::string> Entorno(const std::vector<std::pair<std::string, std::string>>& suyas)
{
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view texto = *variable;
        const std::string_view nombre = texto.substr(0, texto.find('='));
        if (std::ranges::none_of(suyas, [&](const auto& suya) { return suya.first == nombre; }))
            variables.emplace_back(texto);
    }
    for (const auto& [nombre, valor] : suyas)
        variables.emplace_back(nombre).append("=").append(valor);
    return variables;
}

/// Who was started with the ends of children ignored would never hear of one.
void QuiereFines()
{
    struct sigaction actual = {};
    if (sigaction(SIGCHLD, nullptr, &actual) == 0 && actual.sa_handler == SIG_IGN)
        std::signal(SIGCHLD, SIG_DFL);
}

/// One of the child's streams: what is open, or a file to be opened.
struct CFlujo {
    int cual;
    int abierto = sistema::kCerrado;
    const char* fichero = nullptr;
    int como = 0;
};

/// What is done with streams, folder and signals between the start of a process and its program.
struct CPreparacion {
    std::vector<CFlujo> flujos;
    const char* carpeta = nullptr;
    /// A terminal sends its Ctrl-C to a whole group. A child of another group hears of it once,
    /// from this process; who hears twice takes it for impatience and leaves all as it stands.
    bool seAparta = false;
    /// What this process alone looks after is asked to end where this process is no more.
    bool acabaConmigo = false;
};

/// Signals act as usual in the child, those that this process notes or bears as well. What it was
/// started to ignore stays ignored.
void PonSenalesUsuales()
{
    for (int senal = 1; senal < NSIG; ++senal) {
        struct sigaction actual = {};
        const bool seAguanta = senal == SIGPIPE || senal == SIGXFSZ;
        if (sigaction(senal, nullptr, &actual) == 0 && actual.sa_handler != SIG_DFL &&
            (seAguanta || actual.sa_handler != SIG_IGN))
            std::signal(senal, SIG_DFL);
    }
}

bool DisponeFlujos(const std::vector<CFlujo>& flujos)
{
    constexpr mode_t kDeTodos = 0666;
    return std::ranges::all_of(flujos, [](const CFlujo& flujo) {
        const bool seAbre = flujo.fichero != nullptr;
        const int abierto = seAbre ? open(flujo.fichero, flujo.como, kDeTodos) : flujo.abierto;
        if (abierto == sistema::kCerrado || dup2(abierto, flujo.cual) == -1)
            return false;
        if (seAbre && abierto != flujo.cual)
            close(abierto);
        return true;
    });
}

/// Waits for the child's program, or the reason why there is none. True for the latter.
bool LeeAviso(int tuberia, int& fallo)
{
    ssize_t leidos = 0;
    do
        leidos = read(tuberia, &fallo, sizeof fallo);
    while (leidos == -1 && errno == EINTR);
    return leidos > 0;
}

/// The child's part, in which nothing may ask for memory. False with the reason in `errno`.
bool Dispone(const CPreparacion& asi, [[maybe_unused]] pid_t padre)
{
    PonSenalesUsuales();
#ifdef __linux__
    // The second question is for who ended before the first.
    if (asi.acabaConmigo && (prctl(PR_SET_PDEATHSIG, SIGTERM) != 0 || getppid() != padre))
        return false;
#endif
    if ((asi.seAparta && setpgid(0, 0) != 0) || !DisponeFlujos(asi.flujos) ||
        (asi.carpeta != nullptr && chdir(asi.carpeta) != 0))
        return false;
    sigset_t ninguna;
    sigemptyset(&ninguna);
    return sigprocmask(SIG_SETMASK, &ninguna, nullptr) == 0;
}

pid_t Lanza(const std::filesystem::path& programa, std::vector<std::string> argumentos,
            std::vector<std::string> entorno, const CPreparacion& asi, Error& error)
{
    QuiereFines();
    argumentos.insert(argumentos.begin(), programa.native());
    const std::vector<char*> argv = Punteros(argumentos);
    const std::vector<char*> envp = Punteros(entorno);
    int aviso[2] = {}; // by which the child tells what it couldn't do; its program closes it
    error = Fallo(pipe2(aviso, O_CLOEXEC) == 0 ? 0 : errno);
    if (error)
        return 0;
    // One that came between would be noted where nobody looks for it.
    sigset_t todas, antes;
    sigfillset(&todas);
    pthread_sigmask(SIG_SETMASK, &todas, &antes);
    const pid_t padre = getpid();
    const pid_t hijo = fork();
    if (hijo == 0) {
        if (Dispone(asi, padre))
            execve(argv.front(), argv.data(), envp.data());
        [[maybe_unused]] const auto escritos = write(aviso[1], &errno, sizeof errno);
        _exit(EXIT_FAILURE);
    }
    int fallo = hijo == -1 ? errno : 0;
    pthread_sigmask(SIG_SETMASK, &antes, nullptr);
    close(aviso[1]);
    if (hijo != -1 && LeeAviso(aviso[0], fallo))
        waitpid(hijo, nullptr, 0);
    close(aviso[0]);
    error = Fallo(fallo);
    return hijo;
}

/// A pipe with a text in it, to be read.
sistema::CAbierto TuberiaCon(const std::string& texto, Error& error)
{
    int extremos[2] = {};
    if (texto.size() > PIPE_BUF) { // which each holds, so that nobody need read at once
        error = Fallo(EMSGSIZE);
        return {};
    }
    error = Fallo(pipe2(extremos, O_CLOEXEC) == 0 ? 0 : errno);
    if (error)
        return {};
    const sistema::CAbierto escribe(extremos[1]);
    if (write(escribe, texto.data(), texto.size()) != static_cast<ssize_t>(texto.size()))
        error = Fallo(EIO);
    return sistema::CAbierto(extremos[0]);
}

sigset_t FinDeHijo()
{
    sigset_t senal;
    sigemptyset(&senal);
    sigaddset(&senal, SIGCHLD);
    return senal;
}

} // namespace

const std::size_t CHijos::kComoMucho = std::numeric_limits<int>::max();

struct CHijos::CEstado {
    std::vector<pid_t> vivos;
    sigset_t antes = {};
};

CHijos::CHijos() : m_estado(std::make_unique<CEstado>())
{
    // Kept back, so that an end between a look and the wait for the next one ends that wait.
    const sigset_t fin = FinDeHijo();
    sigprocmask(SIG_BLOCK, &fin, &m_estado->antes);
}

CHijos::~CHijos()
{
    sigprocmask(SIG_SETMASK, &m_estado->antes, nullptr);
}

int CHijos::Empieza(const COrden& orden, Error& error)
{
    const sistema::CAbierto entrada = TuberiaCon(orden.entrada, error);
    if (error)
        return 0;
    const CPreparacion asi = {
        .flujos = {{STDIN_FILENO, entrada},
                   {STDOUT_FILENO, sistema::kCerrado, orden.dicho.c_str(),
                    O_WRONLY | O_CREAT | O_TRUNC},
                   {STDERR_FILENO, STDOUT_FILENO}},
        .carpeta = orden.carpeta.c_str(),
        .seAparta = true,
        .acabaConmigo = !orden.sobrevive,
    };
    const pid_t hijo = Lanza(orden.programa, orden.argumentos, Entorno(orden.entorno), asi, error);
    if (!error)
        m_estado->vivos.push_back(hijo);
    return hijo;
}

std::optional<CHijos::CFin> CHijos::Espera(std::chrono::milliseconds comoMucho)
{
    const sigset_t senal = FinDeHijo();
    const timespec plazo = {comoMucho.count() / 1000, comoMucho.count() % 1000 * 1000000};
    for (const bool segunda : {false, true}) {
        int estado = 0;
        const pid_t hijo = waitpid(-1, &estado, WNOHANG);
        if (hijo > 0) {
            std::erase(m_estado->vivos, hijo);
            return CFin{hijo,
                        WIFEXITED(estado) ? std::optional(WEXITSTATUS(estado)) : std::nullopt};
        }
        if (!segunda)
            sigtimedwait(&senal, nullptr, &plazo);
    }
    return std::nullopt;
}

void CHijos::PideAcabar()
{
    for (const pid_t hijo : m_estado->vivos)
        kill(hijo, SIGTERM);
}

std::optional<int> sistema::Ejecuta(const std::filesystem::path& programa,
                                    const std::vector<std::string>& argumentos)
{
    CPreparacion asi;
    for (const int flujo : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        asi.flujos.push_back({flujo, kCerrado, "/dev/null", O_RDWR});
    Error error;
    const pid_t hijo = Lanza(programa, argumentos, Entorno({}), asi, error);
    if (error)
        return std::nullopt;
    int estado = 0;
    while (waitpid(hijo, &estado, 0) == -1)
        if (errno != EINTR)
            return std::nullopt;
    return WIFEXITED(estado) ? std::optional(WEXITSTATUS(estado)) : std::nullopt;
}
