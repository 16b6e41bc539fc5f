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

std::atomic<bool> g_interrupcion = false; // the handler runs on a thread of its own

BOOL WINAPI AlInterrumpir(DWORD suceso)
{
    if (suceso != CTRL_C_EVENT || g_interrupcion.exchange(true))
        return FALSE;
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

void VigilaInterrupcion()
{
    SetConsoleCtrlHandler(AlInterrumpir, TRUE);
}

bool HuboInterrupcion()
{
    return g_interrupcion.exchange(false);
}

void OlvidaInterrupcion()
{
    SetConsoleCtrlHandler(AlInterrumpir, FALSE);
}

} // namespace sistema
