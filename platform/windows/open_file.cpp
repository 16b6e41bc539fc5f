#include "platform/windows/open_file.h"

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
    pide.lpFile = L"notepad.exe";
    pide.lpParameters = entreComillas.c_str();
    return esTexto && ShellExecuteExW(&pide) != 0;
}
