#include "platform/system.h"

#include <atomic>
#include <cstdlib>
#include <string>

#include <io.h>

#include <windows.h>

namespace sistema {
namespace {

// The handler runs on a thread of its own.
std::atomic<bool> g_interrupcion = false; // one that nobody looked at yet
std::atomic<bool> g_final = false;        // the process is to end

BOOL WINAPI AlLlegar(DWORD suceso)
{
    if (suceso == CTRL_C_EVENT && !g_interrupcion.exchange(true))
        return TRUE;
    if (g_final.exchange(true))
        return FALSE;
    // The console closes, or the session: the process is ended when this returns, so it waits until
    // the run has come to its end by itself or the system loses its patience.
    if (suceso != CTRL_C_EVENT && suceso != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

HANDLE Consola(std::FILE* fichero)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(fichero)));
}

} // namespace

void Avisa(std::string_view texto) noexcept
{
    DWORD escritos = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), texto.data(), static_cast<DWORD>(texto.size()),
              &escritos, nullptr);
}

bool EsTerminal(std::FILE* fichero)
{
    DWORD modo = 0; // which NUL, a device like a terminal to the library, doesn't have
    return GetConsoleMode(Consola(fichero), &modo) != 0;
}

std::optional<std::size_t> AnchoTerminal(std::FILE* fichero)
{
    CONSOLE_SCREEN_BUFFER_INFO medidas = {};
    if (GetConsoleScreenBufferInfo(Consola(fichero), &medidas) == 0)
        return {};
    return static_cast<std::size_t>(medidas.srWindow.Right - medidas.srWindow.Left + 1);
}

bool Pagina(std::string_view)
{
    return false; // the console scrolls back by itself, and names no pager
}

void AbreFlujosCerrados() {} // a stream that is closed is no number that a file could get

std::filesystem::path FicheroPrograma()
{
    std::wstring ruta(MAX_PATH, L'\0');
    const DWORD largo = GetModuleFileNameW(nullptr, ruta.data(), static_cast<DWORD>(ruta.size()));
    ruta.resize(largo < ruta.size() ? largo : 0); // a path that long is cut and of no use
    return std::filesystem::path(ruta);
}

std::filesystem::path CarpetaAjustes()
{
    const wchar_t* carpeta = _wgetenv(L"APPDATA");
    return carpeta != nullptr ? std::filesystem::path(carpeta) : std::filesystem::path(".");
}

void VigilaSenales()
{
    SetConsoleCtrlHandler(AlLlegar, TRUE);
}

bool HuboInterrupcion()
{
    return g_interrupcion.exchange(false);
}

bool HayQueAcabar()
{
    return g_final;
}

void OlvidaSenales()
{
    SetConsoleCtrlHandler(AlLlegar, FALSE);
    g_interrupcion = false;                 // one that came too late stops nothing later
    constexpr UINT kPorCtrlC = 0xC000013AU; // what the system's own handler leaves
    if (g_final)
        ExitProcess(kPorCtrlC);
}

bool EsperaLinea()
{
    return true; // a signal doesn't end the wait; the system's own patience does
}

} // namespace sistema
