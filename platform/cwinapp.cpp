#include "platform/cwinapp.h"

#include <cstdlib>
#include <exception>
#include <new>
#include <utility>

#include "platform/files/cfile.h"
#include "platform/files/system_files.h"
#include "platform/html_help.h"
#include "platform/layer_texts.h"
#include "platform/plain_texts.h"
#include "platform/system.h"
#include "platform/window_messages.h"

namespace {

constexpr std::size_t kReserva = std::size_t{256} * 1024;

/// The last word where not even a failure can be told as one. The outputs are what they were; what
/// was in the making is cleared away by the next run.
[[noreturn]] void AlTerminar()
{
    sistema::EscribeError(textos::kSinMemoriaNiCaja);
    std::_Exit(EXIT_FAILURE);
}

/// Where the object is, for the framework's function that gives it.
CWinApp*& Aplicacion()
{
    static CWinApp* aplicacion = nullptr;
    return aplicacion;
}

} // namespace

CWinApp::CWinApp()
{
    Aplicacion() = this;
    std::set_terminate(AlTerminar);
}

CWinApp::~CWinApp()
{
    Aplicacion() = nullptr;
}

CWinApp* AfxGetApp()
{
    return Aplicacion();
}

const CRecursos& RecursosDeLaAplicacion()
{
    return AfxGetApp()->Recursos();
}

CFrontal& FrontalDeLaAplicacion()
{
    return AfxGetApp()->Frontal();
}

void CWinApp::Arranca(CFrontal& frontal, const CRecursos& recursos, const CString& mandato,
                      const CString& ficheroAyuda)
{
    m_frontal = &frontal;
    m_recursos = recursos;
    m_lpCmdLine = mandato;
    m_pszHelpFilePath = ficheroAyuda;
    m_reserva.reset(new (std::nothrow) char[kReserva]);
    m_interrumpida = true;
    try {
        InitInstance();
        m_interrumpida = false;
    } catch (const CFileException& fallo) { // of the settings, which a run goes by
        Caja(fallo.Mensaje(), textos::kError, MB_ICONERROR);
    } catch (const std::bad_alloc&) {
        CajaSinMemoria();
    }
}

CString CWinApp::FicheroAyuda(const CString& programa)
{
    const std::filesystem::path carpeta = sistema::FicheroPrograma().parent_path();
    const std::filesystem::path instalada =
        carpeta.parent_path() / "share" / sistema::Ruta(programa);
    std::error_code error;
    const bool hay = std::filesystem::exists(instalada / sistema::Ruta(programa + ".chm"), error);
    return sistema::Nombre((hay ? instalada : carpeta) / sistema::Ruta(programa + ".HLP"));
}

void CWinApp::OnCommand(UINT mandato) const
{
    if (mandato == ID_HELP)
        OnHelp();
}

void CWinApp::OnHelp() const
{
    HtmlHelp(m_pMainWnd, m_pszHelpFilePath, HH_DISPLAY_TOPIC, nullptr);
}

CString CWinApp::TemasDeControles() const
{
    return UneTemas(m_pszHelpFilePath, m_recursos.ficheros.textosDeControles);
}

int CWinApp::Caja(const CString& texto, const CString& titulo, UINT flags)
{
    m_huboCajaDeError = m_huboCajaDeError || (flags & MB_ICONMASK) == MB_ICONERROR;
    return m_frontal->Caja(texto, titulo, flags);
}

void CWinApp::CajaDeAjustes(const char* forma, const CFileException& fallo)
{
    if (!std::exchange(m_huboCajaDeAjustes, true))
        Caja(Formatea(forma, fallo.m_strFileName) + fallo.Detalle(), textos::kAjustes,
             MB_ICONWARNING);
}

void CWinApp::CajaSinMemoria() noexcept
{
    m_reserva.reset();
    m_huboCajaDeError = true;
    try {
        Caja(textos::kSinMemoria, textos::kError, MB_ICONERROR);
    } catch (const std::bad_alloc&) {
        sistema::EscribeError(textos::kSinMemoriaNiCaja);
    }
    m_reserva.reset(new (std::nothrow) char[kReserva]);
}

CAlmacenAjustes CWinApp::Ajustes() const
{
    return {m_empresa, m_recursos.version.producto};
}

int CWinApp::GetProfileInt(const CString& seccion, const CString& clave, int defecto) const
{
    return NumeroGuardado(GetProfileString(seccion, clave, {}), defecto);
}

int CWinApp::NumeroGuardado(const CString& guardado, int defecto)
{
    return NumeroDe<int>(SinNota(guardado)).value_or(defecto);
}

CString CWinApp::GetProfileString(const CString& seccion, const CString& clave,
                                  const CString& defecto) const
{
    return LeeAjustes(seccion, {&clave, 1}).front().value_or(defecto);
}

std::vector<std::optional<CString>> CWinApp::LeeAjustes(const CString& seccion,
                                                        std::span<const CString> claves) const
{
    if (m_empresa.IsEmpty())
        return std::vector<std::optional<CString>>(claves.size());
    return Ajustes().Lee(seccion, claves);
}

BOOL CWinApp::WriteProfileInt(const CString& seccion, const CString& clave, int valor)
{
    return Guarda({seccion, clave, std::to_string(valor), true});
}

BOOL CWinApp::WriteProfileString(const CString& seccion, const CString& clave, const CString& valor)
{
    return Guarda({seccion, clave, valor});
}

BOOL CWinApp::Guarda(const CAjuste& ajuste)
{
    if (m_empresa.IsEmpty())
        return 0;
    try {
        GuardaAjustes({&ajuste, 1});
    } catch (const CFileException&) {
        return 0;
    }
    return 1;
}

void CWinApp::GuardaAjustes(std::span<const CAjuste> ajustes)
{
    if (!m_empresa.IsEmpty())
        Ajustes().Escribe(ajustes);
}
