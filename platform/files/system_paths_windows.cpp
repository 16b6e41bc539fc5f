#include <algorithm>
#include <iterator>
#include <string>

#include "platform/ansi.h"
#include "platform/files/windows_handles.h"

// Names and paths on Windows.

namespace sistema {
namespace {

std::wstring Completa(const std::wstring& ruta)
{
    std::wstring entera(GetFullPathNameW(ruta.c_str(), 0, nullptr, nullptr), L'\0');
    const auto largo =
        GetFullPathNameW(ruta.c_str(), static_cast<DWORD>(entera.size()), entera.data(), nullptr);
    if (largo == 0 || largo >= entera.size())
        return ruta;
    entera.resize(largo);
    return entera;
}

constexpr std::wstring_view kLarga = L"\\\\?\\"; // in front of a path: it may have any length
constexpr std::wstring_view kLargaDeRed = L"\\\\?\\UNC\\";

} // namespace

std::wstring Larga(const std::filesystem::path& ruta)
{
    constexpr std::size_t kCabe = 240; // a folder's may have less than a file's
    constexpr std::wstring_view kRed = L"\\\\";
    std::wstring entera = Completa(ruta.native());
    if (entera.size() < kCabe)
        return ruta.native();
    if (entera.starts_with(kLarga) || entera.starts_with(L"\\\\.\\"))
        return entera;
    if (entera.starts_with(kRed))
        return entera.replace(0, kRed.size(), kLargaDeRed);
    return entera.insert(0, kLarga);
}

bool PasaPorDispositivo(const std::filesystem::path& ruta)
{
    const std::wstring nombre = ruta.filename().native();
    const std::size_t punto = nombre.find(L'.');
    if (punto == std::wstring::npos)
        return false; // who gives the bare name means the device
    const std::wstring base = nombre.substr(0, nombre.find_last_not_of(L' ', punto - 1) + 1);
    const auto es = [&](std::wstring_view dispositivo) {
        return CompareStringOrdinal(base.data(), static_cast<int>(base.size()), dispositivo.data(),
                                    static_cast<int>(dispositivo.size()), TRUE) == CSTR_EQUAL;
    };
    constexpr std::wstring_view kDispositivos[] = {L"CON", L"PRN", L"AUX", L"NUL"};
    if (std::any_of(std::begin(kDispositivos), std::end(kDispositivos), es))
        return true;
    const bool numerado = base.size() == 4 && std::wstring_view(L"123456789¹²³").find(base[3]) !=
                                                  std::wstring_view::npos;
    return numerado && (es(std::wstring(L"COM") + base[3]) || es(std::wstring(L"LPT") + base[3]));
}

std::wstring SinPrefijo(std::wstring ruta)
{
    if (ruta.starts_with(kLargaDeRed))
        return ruta.replace(0, kLargaDeRed.size(), L"\\\\");
    if (ruta.starts_with(kLarga))
        ruta.erase(0, kLarga.size());
    return ruta;
}

const std::string_view kSeparadores = "\\/:";

std::filesystem::path Ruta(std::string_view nombre)
{
    const std::string utf8 = ansi::AUtf8(nombre);
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

std::string Nombre(const std::filesystem::path& ruta)
{
    // The library's own conversion raises an exception for half a pair of units, which the system
    // lets a name have.
    const std::wstring& ancho = ruta.native();
    const auto unidades = static_cast<int>(ancho.size());
    const auto convierte = [&](char* utf8, int largo) {
        return WideCharToMultiByte(CP_UTF8, 0, ancho.data(), unidades, utf8, largo, nullptr,
                                   nullptr);
    };
    std::string utf8(static_cast<std::size_t>(convierte(nullptr, 0)), ' ');
    convierte(utf8.data(), static_cast<int>(utf8.size()));
    return utf8;
}

bool SonElMismoNombre(const std::filesystem::path& uno, const std::filesystem::path& otro)
{
    const auto sinFinal = [](std::wstring_view nombre) { // the system cuts these off
        return nombre.substr(0, nombre.find_last_not_of(L". ") + 1);
    };
    const std::wstring_view a = sinFinal(uno.native());
    const std::wstring_view b = sinFinal(otro.native());
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), TRUE) == CSTR_EQUAL;
}

std::filesystem::path Entera(const std::filesystem::path& ruta)
{
    return Completa(ruta.native());
}

std::filesystem::path EnteraSinPuntos(const std::filesystem::path& ruta)
{
    return Entera(ruta); // the system takes them out by the letters, too
}

} // namespace sistema
