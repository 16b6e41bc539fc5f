#include "platform/cwinapp.h"

#include <charconv>

#include "platform/dialog.h"
#include "platform/html_help.h"
#include "platform/settings.h"
#include "platform/system.h"

namespace {

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
}

CWinApp::~CWinApp()
{
    Aplicacion() = nullptr;
}

CWinApp* AfxGetApp()
{
    return Aplicacion();
}

void InitCommonControls()
{
    AfxGetApp()->Frontal().IniciaControles();
}

void CWinApp::Arranca(CFrontal& frontal, const CRecursos& recursos, const CString& mandato,
                      const CString& ficheroAyuda)
{
    m_frontal = &frontal;
    m_recursos = recursos;
    m_lpCmdLine = mandato;
    m_pszHelpFilePath = ficheroAyuda;
    InitInstance();
}

CString CWinApp::FicheroAyuda(const CString& programa)
{
    const std::filesystem::path carpeta = sistema::FicheroPrograma().parent_path();
    const std::filesystem::path instalada =
        carpeta.parent_path() / "share" / sistema::Ruta(programa);
    std::error_code error;
    const bool hay = std::filesystem::exists(instalada / sistema::Ruta(programa + ".chm"), error);
    return ((hay ? instalada : carpeta) / sistema::Ruta(programa + ".HLP")).string();
}

void CWinApp::OnHelp() const
{
    HtmlHelp(m_pMainWnd, m_pszHelpFilePath, HH_DISPLAY_TOPIC, nullptr);
}

int CWinApp::Caja(const CString& texto, const CString& titulo, UINT flags)
{
    m_huboCajaDeError = m_huboCajaDeError || (flags & MB_ICONMASK) == MB_ICONERROR;
    return m_frontal->Caja(texto, titulo, flags);
}

CAlmacenAjustes CWinApp::Ajustes() const
{
    return {m_empresa, m_recursos.Version().producto};
}

int CWinApp::GetProfileInt(const CString& seccion, const CString& clave, int defecto) const
{
    const CString texto = GetProfileString(seccion, clave, {});
    const char* fin = texto.GetString() + texto.GetLength();
    int valor = 0;
    const auto [hasta, error] = std::from_chars(texto.GetString(), fin, valor);
    return error == std::errc() && hasta == fin ? valor : defecto;
}

CString CWinApp::GetProfileString(const CString& seccion, const CString& clave,
                                  const CString& defecto) const
{
    if (m_empresa.IsEmpty())
        return defecto;
    return Ajustes().Lee(seccion, clave).value_or(defecto);
}

BOOL CWinApp::WriteProfileInt(const CString& seccion, const CString& clave, int valor)
{
    CString texto;
    texto.Format("%d", valor);
    return WriteProfileString(seccion, clave, texto);
}

BOOL CWinApp::WriteProfileString(const CString& seccion, const CString& clave, const CString& valor)
{
    return !m_empresa.IsEmpty() && Ajustes().Escribe(seccion, clave, valor) ? 1 : 0;
}
