#include "platform/system.h"

#include <atomic>
#include <cstdlib>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <windows.h>

#include "platform/ansi.h"

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

std::FILE* Abre(const std::filesystem::path& ruta, const wchar_t* modo)
{
    std::FILE* fichero = _wfopen(ruta.c_str(), modo);
    if (fichero != nullptr)
        std::setvbuf(fichero, nullptr, _IONBF, 0);
    return fichero;
}

} // namespace

const std::string_view kSeparadores = "\\/:";

std::filesystem::path Ruta(std::string_view nombre)
{
    const std::string utf8 = ansi::AUtf8(nombre);
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Nombre(const std::filesystem::path& ruta)
{
    const std::u8string utf8 = ruta.u8string();
    return std::string(utf8.begin(), utf8.end());
}

std::FILE* AbreLectura(const std::filesystem::path& ruta)
{
    return Abre(ruta, L"rb");
}

std::FILE* AbreEscritura(const std::filesystem::path& ruta)
{
    return Abre(ruta, L"wb");
}

std::FILE* CreaNuevo(const std::filesystem::path& ruta)
{
    const int descriptor =
        _wopen(ruta.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY, _S_IREAD | _S_IWRITE);
    if (descriptor < 0)
        return nullptr;
    std::FILE* fichero = _wfdopen(descriptor, L"wb");
    if (fichero != nullptr)
        std::setvbuf(fichero, nullptr, _IONBF, 0);
    return fichero;
}

bool PuedeEscribir(const std::filesystem::path& ruta)
{
    constexpr int kEscribir = 2;
    return _waccess(ruta.c_str(), kEscribir) == 0;
}

std::uint64_t Longitud(std::FILE* fichero)
{
    const auto largo = _filelengthi64(_fileno(fichero));
    return largo < 0 ? 0 : static_cast<std::uint64_t>(largo);
}

bool Posiciona(std::FILE* fichero, std::uint64_t posicion)
{
    return _fseeki64(fichero, static_cast<long long>(posicion), SEEK_SET) == 0;
}

void CopiaPermisos(std::FILE*, const std::filesystem::path&)
{
    // A new file takes the permissions of its folder, which is what users of this system expect.
}

bool Asegura(std::FILE* fichero)
{
    return _commit(_fileno(fichero)) == 0;
}

bool EsTerminal(std::FILE* fichero)
{
    return _isatty(_fileno(fichero)) != 0;
}

std::optional<std::size_t> AnchoTerminal(std::FILE* fichero)
{
    const auto consola = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(fichero)));
    CONSOLE_SCREEN_BUFFER_INFO medidas = {};
    if (GetConsoleScreenBufferInfo(consola, &medidas) == 0)
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
