#include "platform/child_processes.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <limits>
#include <string_view>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

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

/// What is done with streams, folder and signals between the start of a process and its program.
class CPreparacion {
public:
    CPreparacion()
    {
        posix_spawn_file_actions_init(&m_flujos);
        posix_spawnattr_init(&m_senales);
        sigset_t ninguna;
        sigemptyset(&ninguna);
        posix_spawnattr_setsigmask(&m_senales, &ninguna);
        sigset_t usuales; // what this process bears is nothing to its child
        sigemptyset(&usuales);
        sigaddset(&usuales, SIGPIPE);
        sigaddset(&usuales, SIGXFSZ);
        posix_spawnattr_setsigdefault(&m_senales, &usuales);
        posix_spawnattr_setflags(&m_senales, kDeSenales);
        QuiereFines();
    }
    CPreparacion(const CPreparacion&) = delete;
    CPreparacion& operator=(const CPreparacion&) = delete;
    ~CPreparacion()
    {
        posix_spawn_file_actions_destroy(&m_flujos);
        posix_spawnattr_destroy(&m_senales);
    }
    void Abre(int flujo, const char* fichero, int como)
    {
        constexpr mode_t kDeTodos = 0666;
        posix_spawn_file_actions_addopen(&m_flujos, flujo, fichero, como, kDeTodos);
    }
    void Toma(int flujo, int abierto)
    {
        posix_spawn_file_actions_adddup2(&m_flujos, abierto, flujo);
    }
    void Ve(const std::filesystem::path& carpeta)
    {
        posix_spawn_file_actions_addchdir_np(&m_flujos, carpeta.c_str());
    }
    /// A terminal sends its Ctrl-C to a whole group. A child of another group hears of it once,
    /// from this process; who hears twice takes it for impatience and leaves all as it stands.
    void Aparta()
    {
        posix_spawnattr_setpgroup(&m_senales, 0);
        posix_spawnattr_setflags(&m_senales, kDeSenales | POSIX_SPAWN_SETPGROUP);
    }
    pid_t Empieza(std::vector<std::string> argumentos, std::vector<std::string> entorno,
                  Error& error) const
    {
        pid_t hijo = 0;
        const std::vector<char*> argv = Punteros(argumentos);
        const std::vector<char*> envp = Punteros(entorno);
        error = Fallo(
            posix_spawn(&hijo, argv.front(), &m_flujos, &m_senales, argv.data(), envp.data()));
        return hijo;
    }

private:
    static constexpr short kDeSenales = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;

    posix_spawn_file_actions_t m_flujos = {};
    posix_spawnattr_t m_senales = {};
};

/// A pipe with a text in it, to be read.
int TuberiaCon(const std::string& texto, Error& error)
{
    int extremos[2] = {};
    if (texto.size() > PIPE_BUF) { // which each holds, so that nobody need read at once
        error = Fallo(EMSGSIZE);
        return sistema::kCerrado;
    }
    error = Fallo(pipe2(extremos, O_CLOEXEC) == 0 ? 0 : errno);
    if (error)
        return sistema::kCerrado;
    if (write(extremos[1], texto.data(), texto.size()) != static_cast<ssize_t>(texto.size())) {
        error = Fallo(EIO);
        close(extremos[0]);
    }
    close(extremos[1]);
    return extremos[0];
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
    const int entrada = TuberiaCon(orden.entrada, error);
    if (error)
        return 0;
    CPreparacion preparacion;
    preparacion.Toma(STDIN_FILENO, entrada);
    preparacion.Abre(STDOUT_FILENO, orden.dicho.c_str(), O_WRONLY | O_CREAT | O_TRUNC);
    preparacion.Toma(STDERR_FILENO, STDOUT_FILENO);
    preparacion.Ve(orden.carpeta);
    preparacion.Aparta();
    std::vector<std::string> argumentos = {orden.programa.native()};
    argumentos.insert(argumentos.end(), orden.argumentos.begin(), orden.argumentos.end());
    const pid_t hijo = preparacion.Empieza(std::move(argumentos), Entorno(orden.entorno), error);
    close(entrada);
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
    CPreparacion preparacion;
    for (const int flujo : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        preparacion.Abre(flujo, "/dev/null", O_RDWR);
    std::vector<std::string> todos = {programa.native()};
    todos.insert(todos.end(), argumentos.begin(), argumentos.end());
    Error error;
    const pid_t hijo = preparacion.Empieza(std::move(todos), Entorno({}), error);
    if (error)
        return std::nullopt;
    int estado = 0;
    while (waitpid(hijo, &estado, 0) == -1)
        if (errno != EINTR)
            return std::nullopt;
    return WIFEXITED(estado) ? std::optional(WEXITSTATUS(estado)) : std::nullopt;
}
