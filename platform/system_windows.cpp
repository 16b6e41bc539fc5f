#include "platform/system.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <memory>
#include <string>

#include <fcntl.h>
#include <io.h>

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include "platform/files/system_files.h"

namespace sistema {
namespace {

// The handler runs on a thread of its own.
std::atomic<bool> g_interrupcion = false; // one that nobody looked at yet
std::atomic<bool> g_final = false;        // the process is to end
std::atomic<bool> g_seContesta = true;    // whether to stop can be asked

BOOL WINAPI AlLlegar(DWORD suceso)
{
    if (suceso == CTRL_C_EVENT && g_seContesta && !g_interrupcion.exchange(true))
        return TRUE;
    if (g_final.exchange(true))
        return FALSE;
    // The console closes, or the session: the process is ended when this returns, so it waits until
    // the run has come to its end by itself or the system loses its patience.
    if (suceso != CTRL_C_EVENT && suceso != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

constexpr std::size_t kRutaMasLarga = 32768; // no path of the system is longer

HANDLE Consola(std::FILE* fichero)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(fichero)));
}

constexpr UINT kPorCtrlC = 0xC000013AU; // the status that the system's own handler leaves

/// Lines typed at the console. What reads bytes from it gets no letter that its code page lacks, so
/// they are read as the console has them.
class CLineaDeConsola {
public:
    /// Waits for a line. False at the end of the input and where Ctrl-C came in its place.
    bool Espera()
    {
        if (m_siguiente < m_bytes.size())
            return true;
        std::wstring trozo(kTrozo, L'\0');
        DWORD leidos = 0;
        SetLastError(ERROR_SUCCESS);
        if (ReadConsoleW(Consola(stdin), trozo.data(), kTrozo, &leidos, nullptr) == 0)
            leidos = 0;
        m_interrumpida = leidos == 0 && GetLastError() == ERROR_OPERATION_ABORTED;
        trozo.resize(leidos);
        constexpr wchar_t kFin = 0x1A; // Ctrl-Z at the beginning of a line
        if (trozo.empty() || trozo.front() == kFin)
            return false;
        m_bytes = Nombre(trozo);
        m_siguiente = 0;
        return true;
    }
    int Byte() { return Espera() ? static_cast<unsigned char>(m_bytes[m_siguiente++]) : EOF; }
    bool Interrumpida() const { return m_interrumpida; }

private:
    static constexpr DWORD kTrozo = 8192; // the console itself takes no longer line
    std::string m_bytes;
    std::size_t m_siguiente = 0;
    bool m_interrumpida = false;
};

CLineaDeConsola& Tecleado()
{
    static CLineaDeConsola linea;
    return linea;
}

/// Has the console take what is printed for UTF-8, and gives it back what it had at the end. It
/// shows each piece by itself, so the library gathers what else it would give it byte by byte.
void PonUtf8()
{
    constexpr std::size_t kTextoMasLargo = 16384; // of those that don't go by `Imprime`
    for (std::FILE* flujo : {stdout, stderr})
        if (EsTerminal(flujo))
            std::setvbuf(flujo, nullptr, _IOFBF, kTextoMasLargo);
    static const UINT kAntes = GetConsoleOutputCP();
    if (kAntes == 0 || SetConsoleOutputCP(CP_UTF8) == 0) // there is none
        return;
    std::atexit([] { SetConsoleOutputCP(kAntes); });
}

/// A program with windows has no console; where one starts it and nothing else takes what it
/// prints, that one shows it.
void PidePrestadaConsola()
{
    const HANDLE salida = GetStdHandle(STD_OUTPUT_HANDLE);
    const bool hay = salida != nullptr && salida != INVALID_HANDLE_VALUE;
    if (hay || AttachConsole(ATTACH_PARENT_PROCESS) == 0)
        return;
    for (std::FILE* flujo : {stdout, stderr})
        static_cast<void>(std::freopen("CONOUT$", "w+", flujo));
}

/// Tells whether the process stands in a folder that isn't its user's.
bool EstaEnCarpetaAjena()
{
    std::wstring sistema(MAX_PATH, L'\0');
    sistema.resize(GetSystemDirectoryW(sistema.data(), MAX_PATH));
    std::wstring windows(MAX_PATH, L'\0');
    windows.resize(GetSystemWindowsDirectoryW(windows.data(), MAX_PATH));
    std::error_code error;
    const std::filesystem::path aqui = std::filesystem::current_path(error);
    for (const std::filesystem::path& ajena :
         {FicheroPrograma().parent_path(), std::filesystem::path(sistema),
          std::filesystem::path(windows)})
        if (std::filesystem::equivalent(aqui, ajena, error))
            return true;
    return false;
}

} // namespace

void EscribeError(std::string_view texto) noexcept
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

void PreparaFlujos()
{
    PidePrestadaConsola();
    // A stream that is closed is no number that a file could get.
    for (std::FILE* flujo : {stdin, stdout, stderr})
        if (_fileno(flujo) >= 0)
            _setmode(_fileno(flujo), _O_BINARY);
    PonUtf8();
}

void DejaConsola()
{
    for (std::FILE* flujo : {stdout, stderr})
        std::fflush(flujo);
    FreeConsole();
}

void Imprime(std::FILE* fichero, std::string_view texto)
{
    std::fflush(fichero); // what was printed before
    if (!EsTerminal(fichero)) {
        std::fwrite(texto.data(), 1, texto.size(), fichero);
        std::fflush(fichero);
        return;
    }
    constexpr std::size_t kDeUnaVez = 8192; // the console takes no longer text
    const std::wstring ancho = Ruta(texto).native();
    std::wstring_view queda = ancho;
    while (!queda.empty()) {
        const std::size_t trozo = std::min(queda.size(), kDeUnaVez);
        DWORD escritas = 0;
        if (WriteConsoleW(Consola(fichero), queda.data(), static_cast<DWORD>(trozo), &escritas,
                          nullptr) == 0)
            return;
        queda.remove_prefix(trozo);
    }
}

void SalDeLaCarpetaDelPrograma()
{
    wchar_t documentos[MAX_PATH] = {};
    if (!EstaEnCarpetaAjena() ||
        SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, documentos) != S_OK)
        return;
    std::error_code error; // where there is no such folder it stays
    std::filesystem::current_path(documentos, error);
}

std::vector<std::string> Argumentos(int argc, const char* const* argv)
{
    int n = 0;
    wchar_t** anchos = CommandLineToArgvW(GetCommandLineW(), &n);
    if (anchos == nullptr)
        return {argv, argv + argc};
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> suelta(anchos, LocalFree);
    std::vector<std::string> argumentos;
    for (int i = 0; i < n; ++i)
        argumentos.push_back(Nombre(anchos[i]));
    return argumentos;
}

int LeeByte()
{
    return EsTerminal(stdin) ? Tecleado().Byte() : std::getc(stdin);
}

std::filesystem::path FicheroPrograma()
{
    std::wstring ruta(kRutaMasLarga, L'\0');
    ruta.resize(GetModuleFileNameW(nullptr, ruta.data(), static_cast<DWORD>(ruta.size())));
    return std::filesystem::path(ruta);
}

std::filesystem::path BuscaPrograma(std::string_view nombre)
{
    // The system's own search would take what stands in the folder that somebody works in.
    const std::filesystem::path fichero = Ruta(std::string(nombre) + ".exe");
    const auto sirve = [](const std::filesystem::path& ruta) {
        std::error_code error;
        return ruta.is_absolute() && std::filesystem::is_regular_file(ruta, error);
    };
    if (auto junto = FicheroPrograma().parent_path() / fichero; sirve(junto))
        return junto;
    const wchar_t* const path = _wgetenv(L"PATH");
    std::wstring_view quedan = path != nullptr ? path : L"";
    while (!quedan.empty()) {
        std::wstring_view carpeta = quedan.substr(0, quedan.find(L';'));
        quedan.remove_prefix(std::min(carpeta.size() + 1, quedan.size()));
        if (carpeta.size() > 1 && carpeta.front() == L'"' && carpeta.back() == L'"')
            carpeta = carpeta.substr(1, carpeta.size() - 2);
        if (auto ruta = std::filesystem::path(carpeta) / fichero; sirve(ruta))
            return ruta;
    }
    return {};
}

std::filesystem::path CarpetaAjustes()
{
    const wchar_t* carpeta = _wgetenv(L"APPDATA");
    return carpeta != nullptr ? std::filesystem::path(carpeta) : std::filesystem::path(".");
}

void VigilaSenales(bool seContesta)
{
    g_seContesta = seContesta;
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED); // nobody types during a long run
    SetConsoleCtrlHandler(AlLlegar, TRUE);
}

bool HuboInterrupcion()
{
    return g_interrupcion.exchange(false);
}

void PideAcabar()
{
    g_final = true;
}

bool HayQueAcabar()
{
    return g_final;
}

void OlvidaSenales()
{
    SetConsoleCtrlHandler(AlLlegar, FALSE);
    SetThreadExecutionState(ES_CONTINUOUS);
    g_interrupcion = false; // one that came too late stops nothing later
    if (g_final)
        ExitProcess(kPorCtrlC);
}

void AguantaTuberiaRota() {} // there a write to such a pipe only fails

void SueltaTuberiaRota() {}

bool EsperaLinea()
{
    if (!EsTerminal(stdin) || Tecleado().Espera() || !Tecleado().Interrumpida())
        return !HayQueAcabar();
    // The handler runs on another thread and may be behind. At the question whether to stop it is
    // the second one.
    constexpr DWORD kUnMomento = 100;
    Sleep(kUnMomento);
    if (g_interrupcion)
        g_final = true;
    return !HayQueAcabar();
}

} // namespace sistema
