#include "platform/settings.h"

#include <windows.h>

#include "platform/ansi.h"

namespace {

std::wstring Ancho(const std::string& utf8)
{
    const int largo = static_cast<int>(utf8.size());
    std::wstring texto(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), largo, nullptr, 0)),
        L' ');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), largo, texto.data(),
                        static_cast<int>(texto.size()));
    return texto;
}

std::string Utf8(const std::wstring& texto)
{
    const int largo = static_cast<int>(texto.size());
    std::string utf8(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, texto.data(), largo,
                                                                  nullptr, 0, nullptr, nullptr)),
                     ' ');
    WideCharToMultiByte(CP_UTF8, 0, texto.data(), largo, utf8.data(), static_cast<int>(utf8.size()),
                        nullptr, nullptr);
    return utf8;
}

std::wstring Seccion(const std::string& lugar, const CString& seccion)
{
    return Ancho(lugar + "\\" + ansi::AUtf8(seccion));
}

} // namespace

CAlmacenAjustes::CAlmacenAjustes(const CString& empresa, const CString& programa)
    : m_lugar("Software\\" + ansi::AUtf8(empresa) + "\\" + ansi::AUtf8(programa))
{
}

std::optional<CString> CAlmacenAjustes::Lee(const CString& seccion, const CString& clave) const
{
    const std::wstring donde = Seccion(m_lugar, seccion);
    const std::wstring nombre = Ancho(ansi::AUtf8(clave));
    DWORD bytes = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, donde.c_str(), nombre.c_str(), RRF_RT_REG_SZ, nullptr,
                     nullptr, &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    std::wstring valor(bytes / sizeof(wchar_t), L'\0');
    if (RegGetValueW(HKEY_CURRENT_USER, donde.c_str(), nombre.c_str(), RRF_RT_REG_SZ, nullptr,
                     valor.data(), &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    valor.resize(valor.find(L'\0')); // the value ends with a zero
    return CString(Utf8(valor));
}

bool CAlmacenAjustes::Escribe(const CString& seccion, const CString& clave, const CString& valor)
{
    const std::wstring texto = Ancho(ansi::AUtf8(valor));
    const auto bytes = static_cast<DWORD>((texto.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, Seccion(m_lugar, seccion).c_str(),
                           Ancho(ansi::AUtf8(clave)).c_str(), REG_SZ, texto.c_str(),
                           bytes) == ERROR_SUCCESS;
}
