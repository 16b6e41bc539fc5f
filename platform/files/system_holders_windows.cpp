#include <memory>
#include <string>
#include <vector>

#include "platform/files/windows_handles.h"

#include <restartmanager.h>

// Who has a file open on Windows.

namespace sistema {
namespace {

/// The answer of the system's manager of restarts, which knows the programs of this machine.
std::vector<RM_PROCESS_INFO> QuienTiene(const std::wstring& ruta)
{
    constexpr UINT kComoMucho = 16; // no box names more
    DWORD sesion = 0;
    wchar_t clave[CCH_RM_SESSION_KEY + 1] = {};
    if (RmStartSession(&sesion, 0, clave) != ERROR_SUCCESS)
        return {};
    const auto acaba = [](const DWORD* suya) { RmEndSession(*suya); };
    const std::unique_ptr<DWORD, decltype(acaba)> alSalir(&sesion, acaba);
    std::vector<RM_PROCESS_INFO> programas(kComoMucho);
    const wchar_t* suya = ruta.c_str();
    UINT hay = 0;
    UINT dados = kComoMucho;
    DWORD porQue = 0;
    if (RmRegisterResources(sesion, 1, &suya, 0, nullptr, 0, nullptr) != ERROR_SUCCESS ||
        RmGetList(sesion, &hay, &dados, programas.data(), &porQue) != ERROR_SUCCESS)
        return {};
    programas.resize(dados);
    return programas;
}

} // namespace

std::string ProgramasQueTienen(const std::filesystem::path& ruta)
{
    std::string nombres;
    for (const RM_PROCESS_INFO& programa : QuienTiene(Entera(ruta).native()))
        nombres += (nombres.empty() ? "" : ", ") + Nombre(programa.strAppName);
    return nombres;
}

} // namespace sistema
