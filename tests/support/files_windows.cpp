#include "tests/support/files_windows.h"

#include <stdexcept>

#include <windows.h>

namespace {

// Below the user's own, where no test could do harm, and away from what he stores.
std::wstring ClaveDe(const std::wstring& nombre)
{
    return L"Software\\CampivaPrueba\\" + nombre;
}

} // namespace

void EmpiezaRegistroPropio(const std::wstring& nombre)
{
    const std::wstring clave = ClaveDe(nombre);
    HKEY propia = nullptr;
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    if (RegCreateKeyExW(HKEY_CURRENT_USER, clave.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &propia, nullptr) != ERROR_SUCCESS ||
        RegOverridePredefKey(HKEY_CURRENT_USER, propia) != ERROR_SUCCESS)
        throw std::runtime_error("no registry of the test's own");
    RegCloseKey(propia);
}

void AcabaRegistroPropio(const std::wstring& nombre)
{
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, ClaveDe(nombre).c_str());
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\CampivaPrueba"); // if it was the last one
}
