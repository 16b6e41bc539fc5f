#include "fuzz/terminal.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <fcntl.h>
#include <poll.h>
#include <stdio_ext.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "fuzz/work_bench.h"

CFlujos::CFlujos(const CComo& como, std::string_view tecleado, const std::string& fichero)
{
    for (int flujo = 0; flujo < kFlujos; ++flujo)
        m_antes[flujo] = fcntl(flujo, F_DUPFD_CLOEXEC, kFlujos);
    if (como.teclado || como.pantalla)
        AbreTerminal(como.columnas);
    if (como.pantalla)
        for (const int flujo : {STDOUT_FILENO, STDERR_FILENO})
            Cambia(flujo, m_terminal);
    if (como.teclado) {
        constexpr std::size_t kDespedidas = 256; // more than there are questions in a row
        m_teclas.assign(tecleado).append(kDespedidas, '\x04');
        Cambia(STDIN_FILENO, m_terminal);
    } else {
        std::ofstream(fichero, std::ios::binary) << tecleado;
        const int entrada = open(fichero.c_str(), O_RDONLY | O_CLOEXEC);
        Cambia(STDIN_FILENO, entrada);
        close(entrada);
    }
    if (m_maestro != -1)
        m_persona = std::thread([this] { Teclea(); });
}

CFlujos::~CFlujos()
{
    for (int flujo = 0; flujo < kFlujos; ++flujo) {
        Cambia(flujo, m_antes[flujo]);
        close(m_antes[flujo]);
    }
    if (m_maestro == -1)
        return;
    close(m_terminal); // which nobody has any more, and so its other end comes to its own
    m_persona.join();
    close(m_maestro);
}

void CFlujos::AbreTerminal(int columnas)
{
    m_maestro = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    Exige(m_maestro != -1 && grantpt(m_maestro) == 0 && unlockpt(m_maestro) == 0,
          "the system has terminals");
    m_terminal = open(ptsname(m_maestro), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios como = {};
    Exige(tcgetattr(m_terminal, &como) == 0, "a terminal can be asked");
    como.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG | IEXTEN);
    como.c_iflag &= ~static_cast<tcflag_t>(IXON);
    tcsetattr(m_terminal, TCSANOW, &como);
    winsize medidas = {};
    medidas.ws_col = static_cast<unsigned short>(columnas);
    ioctl(m_terminal, TIOCSWINSZ, &medidas);
}

void CFlujos::Cambia(int flujo, int por)
{
    std::fflush(flujo == STDOUT_FILENO ? stdout : stderr);
    dup2(por, flujo);
    if (flujo != STDIN_FILENO)
        return;
    __fpurge(stdin); // what was read ahead belongs to the one before
    std::clearerr(stdin);
}

/// The life of the person: types as fast as it is taken, and reads what is shown, until the
/// terminal is closed.
void CFlujos::Teclea()
{
    std::string_view teclas = m_teclas;
    for (;;) {
        const short teclea = teclas.empty() ? short{0} : short{POLLOUT};
        pollfd extremo = {m_maestro, static_cast<short>(POLLIN | teclea), 0};
        poll(&extremo, 1, -1);
        char mostrado[4096];
        if ((extremo.revents & POLLIN) != 0 && read(m_maestro, mostrado, sizeof mostrado) > 0)
            continue;
        if ((extremo.revents & POLLHUP) != 0)
            return;
        const auto n = teclas.empty() ? 0 : write(m_maestro, teclas.data(), teclas.size());
        teclas.remove_prefix(n > 0 ? static_cast<std::size_t>(n) : 0);
    }
}
