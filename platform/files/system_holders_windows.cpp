#include <string>
#include <vector>

#include "platform/files/windows_handles.h"

#include <restartmanager.h>

// Who has a file open on Windows.

namespace sistema {
namespace {

/// A question to the system's manager of restarts, which knows the programs of this machine.
class CPregunta {
public:
    CPregunta()
    {
        wchar_t clave[CCH_RM_SESSION_KEY + 1] = {};
        m_hay = RmStartSession(&m_numero, 0, clave) == ERROR_SUCCESS;
    }
    CPregunta(const CPregunta&) = delete;
    CPregunta& operator=(const CPregunta&) = delete;
    ~CPregunta()
    {
        if (m_hay)
            RmEndSession(m_numero);
    }

    std::vector<RM_PROCESS_INFO> QuienTiene(const std::wstring& ruta) const
    {
        constexpr UINT kComoMucho = 16; // no box names more
        const wchar_t* suya = ruta.c_str();
        if (!m_hay || RmRegisterResources(m_numero, 1, &suya, 0, nullptr, 0, nullptr) != 0)
            return {};
        std::vector<RM_PROCESS_INFO> programas(kComoMucho);
        UINT hay = 0;
        UINT dados = kComoMucho;
        DWORD porQue = 0;
        if (RmGetList(m_numero, &hay, &dados, programas.data(), &porQue) != ERROR_SUCCESS)
            return {};
        programas.resize(dados);
        return programas;
    }

private:
    DWORD m_numero = 0;
    bool m_hay = false;
};

} // namespace

std::string ProgramasQueTienen(const std::filesystem::path& ruta)
{
    std::string nombres;
    for (const RM_PROCESS_INFO& programa : CPregunta().QuienTiene(Entera(ruta).native()))
        nombres += (nombres.empty() ? "" : ", ") + Nombre(programa.strAppName);
    return nombres;
}

} // namespace sistema
