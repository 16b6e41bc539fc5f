#include "platform/windows/open_file.h"

namespace {

/// The editor that each system has. By its name alone one in the current folder would be taken.
std::wstring Bloc()
{
    std::wstring carpeta(MAX_PATH, L'\0');
    carpeta.resize(GetSystemDirectoryW(carpeta.data(), MAX_PATH));
    return carpeta + L"\\notepad.exe";
}

} // namespace

bool AbreConElSistema(HWND ventana, const std::wstring& ruta, bool esTexto)
{
    SHELLEXECUTEINFOW pide = {};
    pide.cbSize = sizeof pide;
    pide.fMask = SEE_MASK_FLAG_NO_UI | (esTexto ? SEE_MASK_CLASSNAME : 0U);
    pide.hwnd = ventana;
    pide.lpFile = ruta.c_str();
    pide.lpClass = L".txt";
    pide.nShow = SW_SHOWNORMAL;
    if (ShellExecuteExW(&pide) != 0)
        return true;
    const std::wstring entreComillas = L'"' + ruta + L'"';
    pide.fMask = SEE_MASK_FLAG_NO_UI;
    const std::wstring bloc = Bloc();
    pide.lpFile = bloc.c_str();
    pide.lpParameters = entreComillas.c_str();
    return esTexto && ShellExecuteExW(&pide) != 0;
}
