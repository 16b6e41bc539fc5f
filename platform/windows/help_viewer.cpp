#include "platform/windows/help_viewer.h"

#include <bit>
#include <cstddef>
#include <utility>

#include "platform/html_help.h"

namespace {

constexpr const wchar_t* kClase = L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr const wchar_t* kFichero = L"hhctrl.ocx";
constexpr WORD kEntrada = 14;
constexpr UINT kCierraTodas = 18;

/// The record that the viewer takes for a popup.
struct CGlobo {
    int largo;
    HINSTANCE programa;
    UINT tema;
    const char* texto;
    PuntoDelSistema punto;
    COLORREF letras;
    COLORREF fondo;
    RECT margenes;
    const char* letra;
};
// With addresses of 32 bits all fields stand one behind the other, 52 bytes. With 64 the viewer
// has been compiled with the same alignment as this.
static_assert(sizeof(CGlobo) == (sizeof(void*) == 4 ? 52 : 72));
static_assert(offsetof(CGlobo, fondo) == (sizeof(void*) == 4 ? 28 : 44));

/// The library that is registered for the viewer; empty where none is.
std::wstring Registrado()
{
    constexpr std::size_t kCaracteres = 260;
    std::wstring ruta(kCaracteres, L'\0');
    auto bytes = static_cast<DWORD>(ruta.size() * sizeof(wchar_t));
    if (RegGetValueW(HKEY_CLASSES_ROOT, kClase, nullptr, RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ,
                     nullptr, ruta.data(), &bytes) != ERROR_SUCCESS)
        return {};
    ruta.resize(std::min(ruta.find(L'\0'), ruta.size()));
    return ruta;
}

/// Loads the library of a path, or of a name where the system keeps its own: not what lies in the
/// folder that somebody works in.
HMODULE CargaDelSistema(const wchar_t* biblioteca)
{
    return LoadLibraryExW(biblioteca, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

/// A name for the viewer, which knows the system's code page only. One that has other letters is
/// called by its short name.
std::string AlVisor(std::wstring fichero)
{
    const auto convierte = [&](char* destino, int largo, BOOL* falta) {
        return WideCharToMultiByte(CP_ACP, 0, fichero.c_str(), -1, destino, largo, nullptr, falta);
    };
    BOOL falta = FALSE;
    const bool conUtf8 = GetACP() == CP_UTF8; // which lacks nothing, and takes no such question
    int largo = convierte(nullptr, 0, conUtf8 ? nullptr : &falta);
    if (falta != FALSE) {
        std::wstring corto(GetShortPathNameW(fichero.c_str(), nullptr, 0), L'\0');
        corto.resize(
            GetShortPathNameW(fichero.c_str(), corto.data(), static_cast<DWORD>(corto.size())));
        if (!corto.empty())
            fichero = corto;
        largo = convierte(nullptr, 0, nullptr);
    }
    std::string texto(static_cast<std::size_t>(largo), '\0');
    convierte(texto.data(), largo, nullptr);
    texto.resize(texto.empty() ? 0 : texto.size() - 1); // the closing zero
    return texto;
}

} // namespace

bool EstaBloqueado(const std::filesystem::path& fichero)
{
    // Who loads it down has the system note beside it where it came from.
    const std::wstring nota = fichero.native() + L":Zone.Identifier";
    return GetFileAttributesW(nota.c_str()) != INVALID_FILE_ATTRIBUTES ||
           fichero.native().starts_with(LR"(\\)") ||
           GetDriveTypeW(fichero.root_path().c_str()) == DRIVE_REMOTE;
}

CVisorAyuda::~CVisorAyuda()
{
    if (m_funcion != nullptr)
        m_funcion(nullptr, nullptr, kCierraTodas, 0);
}

bool CVisorAyuda::Carga()
{
    if (!std::exchange(m_buscado, true)) {
        HMODULE modulo = nullptr;
        if (const std::wstring ruta = Registrado(); !ruta.empty())
            modulo = CargaDelSistema(ruta.c_str());
        if (modulo == nullptr)
            modulo = CargaDelSistema(kFichero);
        if (modulo != nullptr)
            m_funcion = std::bit_cast<Funcion>(GetProcAddress(modulo, MAKEINTRESOURCEA(kEntrada)));
    }
    return m_funcion != nullptr;
}

bool CVisorAyuda::MuestraTema(HWND ventana, const std::wstring& fichero)
{
    return Carga() && m_funcion(ventana, AlVisor(fichero).c_str(), HH_DISPLAY_TOPIC, 0) != nullptr;
}

bool CVisorAyuda::MuestraGlobo(HWND control, const std::wstring& fichero,
                               const std::wstring& interior, const HH_POPUP& popup)
{
    constexpr LONG kSuyo = -1; // the viewer's own
    CGlobo globo = {};
    globo.largo = sizeof globo;
    globo.tema = popup.idString;
    globo.punto = {popup.pt.x, popup.pt.y};
    globo.letras = static_cast<COLORREF>(kSuyo);
    globo.fondo = popup.clrBackground;
    globo.margenes = {kSuyo, kSuyo, kSuyo, kSuyo};
    const std::string temas = AlVisor(fichero) + "::" + AlVisor(interior);
    return Carga() && m_funcion(control, temas.c_str(), HH_DISPLAY_TEXT_POPUP,
                                reinterpret_cast<DWORD_PTR>(&globo)) != nullptr;
}
