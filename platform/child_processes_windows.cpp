#include "platform/child_processes.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

#include "platform/files/windows_handles.h"
#include "platform/system.h"

// Other programs on Windows, started and waited for.

namespace {

using sistema::Error;
using sistema::Manija;

/// An argument as the one who takes the line apart finds it again.
std::wstring EntreComillas(std::wstring_view argumento)
{
    std::wstring texto = L"\"";
    std::size_t barras = 0; // those in front of a quote are doubled
    for (const wchar_t c : argumento) {
        if (c == L'"')
            texto.append(barras + 1, L'\\');
        barras = c == L'\\' ? barras + 1 : 0;
        texto += c;
    }
    texto.append(barras, L'\\');
    return texto + L'"';
}

std::wstring Linea(const std::filesystem::path& programa,
                   const std::vector<std::string>& argumentos)
{
    std::wstring linea = EntreComillas(programa.wstring());
    for (const std::string& argumento : argumentos)
        linea += L' ' + EntreComillas(sistema::Ruta(argumento).wstring());
    return linea;
}

/// The variables of this process with others in their place, as the system takes them.
std::wstring Entorno(const std::vector<std::pair<std::string, std::string>>& suyas)
{
    std::wstring variables;
    wchar_t* const todas = GetEnvironmentStringsW();
    for (const wchar_t* variable = todas; *variable != 0; variable += std::wcslen(variable) + 1) {
        const std::wstring_view texto = variable;
        const std::string nombre = sistema::Nombre(texto.substr(0, texto.find(L'=', 1)));
        if (std::ranges::none_of(suyas, [&](const auto& suya) { return suya.first == nombre; }))
            variables.append(texto).push_back(0);
    }
    FreeEnvironmentStringsW(todas);
    for (const auto& [nombre, valor] : suyas)
        variables.append(sistema::Ruta(nombre + "=" + valor).native()).push_back(0);
    variables.push_back(0);
    return variables;
}

/// A pipe with a text in it, to be read.
Manija TuberiaCon(const std::string& texto, Error& error)
{
    constexpr DWORD kSobra = 512;
    HANDLE lee = nullptr;
    HANDLE escribe = nullptr;
    const auto largo = static_cast<DWORD>(texto.size());
    if (CreatePipe(&lee, &escribe, nullptr, largo + kSobra) == 0) {
        error = sistema::Fallo(GetLastError());
        return nullptr;
    }
    Manija entrada(lee);
    const Manija salida(escribe);
    DWORD escritos = 0;
    if (WriteFile(escribe, texto.data(), largo, &escritos, nullptr) == 0)
        error = sistema::Fallo(GetLastError());
    return entrada;
}

void DejaHeredar(const Manija& manija)
{
    SetHandleInformation(manija.get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
}

/// The job of all that is started: its last handle is this process's own, however that ends, and
/// what is in it ends with it. Null where the system gives none.
HANDLE Trabajo()
{
    static const Manija trabajo = [] {
        Manija nuevo(CreateJobObjectW(nullptr, nullptr));
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limites = {};
        limites.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        if (nuevo != nullptr &&
            SetInformationJobObject(nuevo.get(), JobObjectExtendedLimitInformation, &limites,
                                    sizeof limites) == 0)
            nuevo.reset();
        return nuevo;
    }();
    return trabajo.get();
}

/// What is inherited, which is no more than what is named: another program that is started at the
/// same time would keep it open. And the job in which the program begins, null for none.
class CHerencia {
public:
    CHerencia(std::vector<HANDLE> manijas, HANDLE trabajo)
        : m_manijas(std::move(manijas)), m_trabajo(trabajo)
    {
        const DWORD cuantos = m_trabajo != nullptr ? 2 : 1;
        SIZE_T largo = 0;
        InitializeProcThreadAttributeList(nullptr, cuantos, 0, &largo);
        m_bytes.resize(largo);
        InitializeProcThreadAttributeList(Lista(), cuantos, 0, &largo);
        UpdateProcThreadAttribute(Lista(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_manijas.data(),
                                  m_manijas.size() * sizeof(HANDLE), nullptr, nullptr);
        if (m_trabajo != nullptr)
            UpdateProcThreadAttribute(Lista(), 0, PROC_THREAD_ATTRIBUTE_JOB_LIST, &m_trabajo,
                                      sizeof m_trabajo, nullptr, nullptr);
    }
    CHerencia(const CHerencia&) = delete;
    CHerencia& operator=(const CHerencia&) = delete;
    ~CHerencia() { DeleteProcThreadAttributeList(Lista()); }
    LPPROC_THREAD_ATTRIBUTE_LIST Lista()
    {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_bytes.data());
    }

private:
    std::vector<HANDLE> m_manijas;
    HANDLE m_trabajo;
    std::vector<unsigned char> m_bytes;
};

Manija Lanza(const COrden& orden, const Manija& entrada, const Manija& salida, Error& error)
{
    CHerencia herencia({entrada.get(), salida.get()}, orden.sobrevive ? nullptr : Trabajo());
    STARTUPINFOEXW inicio = {};
    inicio.StartupInfo.cb = sizeof inicio;
    inicio.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    inicio.StartupInfo.hStdInput = entrada.get();
    inicio.StartupInfo.hStdOutput = salida.get();
    inicio.StartupInfo.hStdError = salida.get();
    inicio.lpAttributeList = herencia.Lista();
    constexpr DWORD kComo =
        CREATE_NEW_PROCESS_GROUP | CREATE_UNICODE_ENVIRONMENT | EXTENDED_STARTUPINFO_PRESENT;
    std::wstring linea = Linea(orden.programa, orden.argumentos);
    std::wstring entorno = Entorno(orden.entorno);
    PROCESS_INFORMATION proceso = {};
    if (CreateProcessW(orden.programa.c_str(), linea.data(), nullptr, nullptr, TRUE, kComo,
                       entorno.data(), orden.carpeta.c_str(), &inicio.StartupInfo, &proceso) == 0) {
        error = sistema::Fallo(GetLastError());
        return nullptr;
    }
    CloseHandle(proceso.hThread);
    return Manija(proceso.hProcess);
}

} // namespace

const std::size_t CHijos::kComoMucho = MAXIMUM_WAIT_OBJECTS;

struct CHijos::CEstado {
    std::vector<Manija> procesos;
};

CHijos::CHijos() : m_estado(std::make_unique<CEstado>()) {}

CHijos::~CHijos() = default;

int CHijos::Empieza(const COrden& orden, Error& error)
{
    error.clear();
    const Manija entrada = TuberiaCon(orden.entrada, error);
    const Manija salida =
        sistema::AbreManija(orden.dicho, {.acceso = GENERIC_WRITE, .siNoEsta = CREATE_ALWAYS});
    if (!error && salida == nullptr)
        error = sistema::Fallo(GetLastError());
    if (error)
        return 0;
    DejaHeredar(entrada);
    DejaHeredar(salida);
    Manija proceso = Lanza(orden, entrada, salida, error);
    if (proceso == nullptr)
        return 0;
    m_estado->procesos.push_back(std::move(proceso));
    return static_cast<int>(GetProcessId(m_estado->procesos.back().get()));
}

std::optional<CHijos::CFin> CHijos::Espera(std::chrono::milliseconds comoMucho)
{
    const auto plazo = static_cast<DWORD>(comoMucho.count());
    std::vector<HANDLE> manijas;
    for (const Manija& proceso : m_estado->procesos)
        manijas.push_back(proceso.get());
    if (manijas.empty()) {
        Sleep(plazo);
        return std::nullopt;
    }
    const DWORD cual =
        WaitForMultipleObjects(static_cast<DWORD>(manijas.size()), manijas.data(), FALSE, plazo);
    if (cual >= manijas.size()) // WAIT_OBJECT_0 is 0
        return std::nullopt;
    DWORD estado = 0;
    GetExitCodeProcess(manijas[cual], &estado);
    const CFin fin = {static_cast<int>(GetProcessId(manijas[cual])), static_cast<int>(estado)};
    m_estado->procesos.erase(std::next(m_estado->procesos.begin(), cual));
    return fin;
}

void CHijos::PideAcabar()
{
    for (const Manija& proceso : m_estado->procesos)
        GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, GetProcessId(proceso.get()));
}

std::optional<int> sistema::Ejecuta(const std::filesystem::path& programa,
                                    const std::vector<std::string>& argumentos)
{
    std::wstring linea = Linea(programa, argumentos);
    STARTUPINFOW inicio = {};
    inicio.cb = sizeof inicio;
    PROCESS_INFORMATION proceso = {};
    if (CreateProcessW(programa.c_str(), linea.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                       nullptr, nullptr, &inicio, &proceso) == 0)
        return std::nullopt;
    WaitForSingleObject(proceso.hProcess, INFINITE);
    DWORD estado = 0;
    const bool dicho = GetExitCodeProcess(proceso.hProcess, &estado) != 0;
    CloseHandle(proceso.hThread);
    CloseHandle(proceso.hProcess);
    return dicho ? std::optional(static_cast<int>(estado)) : std::nullopt;
}
