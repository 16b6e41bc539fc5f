// The program's part of the registry, for a test: puts what a file of settings says in its place,
// compares it with one, or writes one.
//   registry put FILE | registry compare FILE | registry show FILE

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <string>

#include <windows.h>

namespace {

constexpr const wchar_t* kEmpresa = L"Software\\VexaSoft";
constexpr const wchar_t* kPrograma = L"Software\\VexaSoft\\Campiva";

using Ajustes = std::map<std::wstring, std::wstring>; // "section\key", and the value

std::wstring AAncho(const std::string& utf8)
{
    const auto largo = static_cast<int>(utf8.size());
    std::wstring texto(utf8.size(), L'\0');
    texto.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), largo, texto.data(), largo)));
    return texto;
}

std::string AUtf8(const std::wstring& texto)
{
    const auto unidades = static_cast<int>(texto.size());
    std::string utf8(3 * texto.size(), '\0');
    utf8.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, texto.data(), unidades, utf8.data(),
                            static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

Ajustes DeFichero(const std::wstring& nombre)
{
    Ajustes ajustes;
    std::ifstream fichero(nombre.c_str());
    std::string seccion;
    for (std::string linea; std::getline(fichero, linea);) {
        if (linea.ends_with('\r'))
            linea.pop_back();
        const auto signo = linea.find('=');
        if (linea.starts_with('['))
            seccion = linea.substr(1, linea.find(']') - 1);
        else if (signo != std::string::npos)
            ajustes[AAncho(seccion + "\\" + linea.substr(0, signo))] =
                AAncho(linea.substr(signo + 1));
    }
    return ajustes;
}

void LeeSeccion(HKEY clave, const std::wstring& seccion, Ajustes& ajustes)
{
    for (DWORD i = 0;; ++i) {
        std::wstring nombre(256, L'\0');
        std::wstring texto(33000, L'\0');
        auto letras = static_cast<DWORD>(nombre.size());
        auto largo = static_cast<DWORD>(texto.size() * sizeof(wchar_t));
        DWORD tipo = 0;
        if (RegEnumValueW(clave, i, nombre.data(), &letras, nullptr, &tipo,
                          reinterpret_cast<BYTE*>(texto.data()), &largo) != ERROR_SUCCESS)
            return;
        nombre.resize(letras);
        std::int32_t numero = 0;
        std::memcpy(&numero, texto.data(), sizeof numero);
        if (tipo == REG_DWORD)
            texto = std::to_wstring(numero);
        texto.resize(texto.find(L'\0') == std::wstring::npos ? texto.size() : texto.find(L'\0'));
        ajustes[seccion + L"\\" + nombre] = texto;
    }
}

Ajustes DelRegistro()
{
    Ajustes ajustes;
    HKEY programa = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kPrograma, 0, KEY_READ, &programa) != ERROR_SUCCESS)
        return ajustes;
    wchar_t seccion[256];
    for (DWORD i = 0; RegEnumKeyW(programa, i, seccion, std::size(seccion)) == ERROR_SUCCESS; ++i) {
        HKEY clave = nullptr;
        if (RegOpenKeyExW(programa, seccion, 0, KEY_READ, &clave) != ERROR_SUCCESS)
            continue;
        LeeSeccion(clave, seccion, ajustes);
        RegCloseKey(clave);
    }
    RegCloseKey(programa);
    return ajustes;
}

int Pon(const Ajustes& ajustes)
{
    RegDeleteTreeW(HKEY_CURRENT_USER, kEmpresa);
    for (const auto& [nombre, valor] : ajustes) {
        const auto corte = nombre.find(L'\\');
        const std::wstring seccion = std::wstring(kPrograma) + L"\\" + nombre.substr(0, corte);
        // As texts, which a person could have written; the program knows both forms.
        if (RegSetKeyValueW(HKEY_CURRENT_USER, seccion.c_str(), nombre.c_str() + corte + 1, REG_SZ,
                            valor.c_str(),
                            static_cast<DWORD>((valor.size() + 1) * sizeof(wchar_t))) !=
            ERROR_SUCCESS)
            return 1;
    }
    return 0;
}

int Compara(const Ajustes& esperados)
{
    const Ajustes hay = DelRegistro();
    if (hay == esperados)
        return 0;
    for (const auto* lado : {&esperados, &hay})
        for (const auto& [nombre, valor] : *lado)
            std::cerr << (lado == &hay ? "there is  " : "expected  ") << AUtf8(nombre) << "="
                      << AUtf8(valor) << "\n";
    return 1;
}

void Muestra(const std::wstring& nombre)
{
    std::ofstream fichero(nombre.c_str(), std::ios::binary);
    std::wstring ultima;
    for (const auto& [lugar, valor] : DelRegistro()) {
        const auto corte = lugar.find(L'\\');
        if (const std::wstring seccion = lugar.substr(0, corte); seccion != ultima) {
            fichero << '[' << AUtf8(seccion) << "]\n";
            ultima = seccion;
        }
        fichero << AUtf8(lugar.substr(corte + 1)) << '=' << AUtf8(valor) << '\n';
    }
}

} // namespace

int wmain(int argc, wchar_t* argv[])
{
    if (argc != 3)
        return 2;
    const std::wstring orden = argv[1];
    if (orden == L"put")
        return Pon(DeFichero(argv[2]));
    if (orden == L"compare")
        return Compara(DeFichero(argv[2]));
    Muestra(argv[2]);
    return 0;
}
