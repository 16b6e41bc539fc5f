#include "platform/settings.h"

#include <algorithm>
#include <cstring>
#include <ranges>
#include <vector>

#include <windows.h>

#include "platform/files/cfile.h"
#include "platform/files/system_files.h"
#include "platform/files/windows_handles.h"
#include "platform/plain_texts.h"

namespace {

constexpr const char* kVariable = "AJUSTES_APARTE"; // names another key than the user's own

/// A value as the registry has it.
struct CValor {
    DWORD tipo = REG_NONE;
    std::vector<BYTE> bytes;
};

/// Where a value stands.
struct CLugar {
    std::wstring seccion;
    std::wstring clave;
};

// Most texts are names of files, so all of them become what a name would be to the system.
std::wstring Ancho(const CString& texto)
{
    return sistema::Ruta(std::string_view(texto)).native();
}

CLugar Situa(const std::string& lugar, const CString& seccion, const CString& clave)
{
    return {Ancho(CString(lugar) + "\\" + seccion), Ancho(clave)};
}

sistema::Error Fallo(LSTATUS codigo)
{
    return {static_cast<int>(codigo), std::system_category()};
}

/// Keeps other programs of this user from the store as long as it lives, so that they find all of
/// what is stored together or nothing of it. Waits up to two seconds for another one.
class CCerrojo {
public:
    explicit CCerrojo(const std::string& lugar)
    {
        std::string nombre = lugar;
        std::ranges::replace(nombre, '\\', '/'); // which parts no name of a mutex
        m_manija.reset(CreateMutexW(nullptr, FALSE, sistema::Ruta(nombre).c_str()));
        constexpr DWORD kComoMucho = 2000;
        const DWORD espera =
            m_manija != nullptr ? WaitForSingleObject(m_manija.get(), kComoMucho) : WAIT_FAILED;
        if (espera == WAIT_TIMEOUT)
            m_causa = sistema::kDeOtro;
        else if (espera == WAIT_FAILED)
            m_causa = Fallo(static_cast<LSTATUS>(GetLastError()));
    }
    CCerrojo(const CCerrojo&) = delete;
    CCerrojo& operator=(const CCerrojo&) = delete;
    ~CCerrojo()
    {
        if (!m_causa)
            ReleaseMutex(m_manija.get());
    }
    /// Why the store couldn't be had; none where it could.
    const sistema::Error& Causa() const { return m_causa; }

private:
    sistema::Manija m_manija;
    sistema::Error m_causa;
};

/// Nothing, without an error, where there is no such value.
std::optional<CValor> LeeValor(const CLugar& lugar, sistema::Error& error)
{
    CValor valor;
    DWORD largo = 0;
    LSTATUS codigo = ERROR_MORE_DATA;
    while (codigo == ERROR_MORE_DATA) { // it may have grown since it was asked for its length
        valor.bytes.resize(largo);
        codigo = RegGetValueW(HKEY_CURRENT_USER, lugar.seccion.c_str(), lugar.clave.c_str(),
                              RRF_RT_ANY | RRF_NOEXPAND, &valor.tipo,
                              largo == 0 ? nullptr : valor.bytes.data(), &largo);
        if (codigo == ERROR_SUCCESS && largo > valor.bytes.size())
            codigo = ERROR_MORE_DATA;
    }
    valor.bytes.resize(largo);
    error = Fallo(codigo);
    if (error == std::errc::no_such_file_or_directory)
        error.clear();
    return codigo == ERROR_SUCCESS ? std::optional(valor) : std::nullopt;
}

/// Stores the value, or takes it away.
sistema::Error PonValor(const CLugar& lugar, const std::optional<CValor>& valor)
{
    if (!valor)
        return Fallo(
            RegDeleteKeyValueW(HKEY_CURRENT_USER, lugar.seccion.c_str(), lugar.clave.c_str()));
    return Fallo(RegSetKeyValueW(HKEY_CURRENT_USER, lugar.seccion.c_str(), lugar.clave.c_str(),
                                 valor->tipo, valor->bytes.data(),
                                 static_cast<DWORD>(valor->bytes.size())));
}

CValor DeBytes(DWORD tipo, const void* bytes, std::size_t largo)
{
    const auto* primero = static_cast<const BYTE*>(bytes);
    return {tipo, {primero, primero + largo}};
}

CValor DeAjuste(const CAjuste& ajuste)
{
    if (const auto numero = NumeroDe<std::int32_t>(ajuste.valor); ajuste.esNumero && numero)
        return DeBytes(REG_DWORD, &*numero, sizeof *numero);
    const std::wstring ancho = Ancho(ajuste.valor);
    return DeBytes(REG_SZ, ancho.c_str(), (ancho.size() + 1) * sizeof(wchar_t));
}

/// The value as the program knows it; nothing where it is of another kind than ours.
std::optional<CString> AlPrograma(const CValor& valor)
{
    if (valor.tipo == REG_DWORD && valor.bytes.size() == sizeof(std::int32_t)) {
        std::int32_t numero = 0;
        std::memcpy(&numero, valor.bytes.data(), sizeof numero);
        return std::to_string(numero);
    }
    if (valor.tipo != REG_SZ && valor.tipo != REG_EXPAND_SZ)
        return std::nullopt;
    std::wstring ancho(valor.bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(ancho.data(), valor.bytes.data(), ancho.size() * sizeof(wchar_t));
    ancho.resize(std::min(ancho.find(L'\0'), ancho.size())); // the value ends with a zero
    return sistema::Nombre(ancho);
}

} // namespace

CAlmacenAjustes::CAlmacenAjustes(const CString& empresa, const CString& programa)
    : m_lugar("Software\\" + std::string(empresa) + "\\" + std::string(programa))
{
    if (const wchar_t* const aparte = _wgetenv(sistema::Ruta(kVariable).c_str()); aparte != nullptr)
        m_lugar = sistema::Nombre(aparte);
}

CAlmacenAparte::CAlmacenAparte(const CString& empresa, const CString& programa,
                               const std::filesystem::path& carpeta)
    : CAlmacenAjustes("Software\\" + std::string(empresa) + "\\" + std::string(programa) +
                      ".aparte\\" + sistema::Nombre(carpeta.filename())),
      m_variable(kVariable, m_lugar)
{
}

CAlmacenAparte::~CAlmacenAparte()
{
    const std::string alrededor = m_lugar.substr(0, m_lugar.rfind('\\'));
    RegDeleteTreeW(HKEY_CURRENT_USER, sistema::Ruta(m_lugar).c_str());
    RegDeleteKeyW(HKEY_CURRENT_USER, sistema::Ruta(alrededor).c_str()); // if it was the last one
}

std::vector<std::optional<CString>> CAlmacenAjustes::Lee(const CString& seccion,
                                                         std::span<const CString> claves) const
{
    const CCerrojo mientras(m_lugar); // who hangs while he stores keeps nobody from reading
    std::vector<std::optional<CString>> valores;
    for (const CString& clave : claves) {
        sistema::Error error;
        const std::optional<CValor> valor = LeeValor(Situa(m_lugar, seccion, clave), error);
        if (error)
            throw CFileException(m_lugar, error, true);
        valores.push_back(valor ? AlPrograma(*valor) : std::nullopt);
    }
    return valores;
}

void CAlmacenAjustes::Escribe(std::span<const CAjuste> ajustes)
{
    struct CPuesto {
        CLugar lugar;
        std::optional<CValor> antes;
    };
    const CCerrojo mientras(m_lugar);
    CFileException::Exige(mientras.Causa(), m_lugar);
    std::vector<CPuesto> puestos;
    for (const CAjuste& ajuste : ajustes) {
        sistema::Error error;
        CPuesto puesto = {Situa(m_lugar, ajuste.seccion, ajuste.clave), {}};
        puesto.antes = LeeValor(puesto.lugar, error);
        if (!error)
            error = PonValor(puesto.lugar, DeAjuste(ajuste));
        if (!error) {
            puestos.push_back(std::move(puesto));
            continue;
        }
        for (const CPuesto& otro : std::views::reverse(puestos))
            PonValor(otro.lugar, otro.antes); // all of them or none
        throw CFileException(m_lugar, error);
    }
}
