#include "shell/frame/translation_dialog.h"

#include <algorithm>
#include <cmath>

#include "platform/cwinapp.h"
#include "platform/html_help.h"
#include "resources/resource_ids.h"
#include "shell/frame/about_dialog.h"
#include "shell/frame/box_texts.h"
#include "vexa_libs/ccadena.h"

namespace {

constexpr std::uint32_t kAmarilloPalido = 0xD0FFFF; // blue, green, red

/// The bar's position for a tick: truncated, and 0 where there is no total to hold it against.
WPARAM Porcentaje(std::uint32_t posicion, std::int32_t total)
{
    const double porcentaje = posicion * 100.0 / total;
    return std::isfinite(porcentaje) ? static_cast<WPARAM>(std::clamp(porcentaje, 0.0, 100.0)) : 0;
}

} // namespace

BOOL CTraduccionDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    CenterWindow();
    SetIcon(IDR_ICONO);
    EnMarcha = false;
    const CDescripcion dialogo = Describe();
    const CWinApp& aplicacion = *AfxGetApp();
    for (const CCampo& campo : dialogo.campos) {
        if (auto* const* texto = std::get_if<CString*>(&campo.valor))
            **texto = aplicacion.GetProfileString(dialogo.seccion, campo.clave, campo.defecto);
        else
            *std::get<int*>(campo.valor) =
                aplicacion.GetProfileInt(dialogo.seccion, campo.clave, 0);
    }
    UpdateData(false);
    return 1;
}

void CTraduccionDlg::DoDataExchange(CDataExchange* dx)
{
    DDX_Control(dx, IDC_PROGRESO, Progreso);
    DDX_Text(dx, IDC_ESTADO, Estado);
    for (const CCampo& campo : Describe().campos) {
        const CControl* control = GetDlgItem(campo.control);
        if (control == nullptr)
            continue;
        if (auto* const* texto = std::get_if<CString*>(&campo.valor))
            DDX_Text(dx, campo.control, **texto);
        else if (control->Plantilla().clase == ClaseControl::Lista)
            DDX_CBIndex(dx, campo.control, *std::get<int*>(campo.valor));
        else
            DDX_Check(dx, campo.control, *std::get<int*>(campo.valor));
    }
}

void CTraduccionDlg::OnCancel()
{
    if (EnMarcha) {
        constexpr UINT kPregunta = MB_YESNO | MB_ICONQUESTION;
        if (MessageBox(cajas::kDetener, cajas::kPausa, kPregunta) == IDYES)
            EnMarcha = false;
        return;
    }
    if (m_enLote)
        return; // stopping already, and a batch run stores nothing
    const CDescripcion dialogo = Describe();
    CWinApp& aplicacion = *AfxGetApp();
    for (const CCampo& campo : dialogo.campos) {
        if (auto* const* texto = std::get_if<CString*>(&campo.valor))
            aplicacion.WriteProfileString(dialogo.seccion, campo.clave, **texto);
        else
            aplicacion.WriteProfileInt(dialogo.seccion, campo.clave, *std::get<int*>(campo.valor));
    }
    CDialog::OnCancel();
}

void CTraduccionDlg::ActivaControles(bool activar)
{
    EnMarcha = !activar;
    if (!activar)
        m_focoAntes = Foco(); // a control that is switched off loses it
    for (const UINT id : Describe().conmutados)
        if (CControl* control = GetDlgItem(id))
            control->EnableWindow(activar);
    GotoDlgCtrl(activar ? m_focoAntes : IDCANCEL);
    if (CControl* boton = GetDlgItem(IDCANCEL))
        boton->SetWindowText(activar ? "Salir" : "Detener");
    if (activar)
        AfxGetApp()->Frontal().FinDeProceso(*this, m_escritos);
}

std::span<const CEntradaMensaje> CTraduccionDlg::GetMessageMap() const
{
    using D = CTraduccionDlg;
    static constexpr CEntradaMensaje kMapa[] = {
        EnMandato<&D::OnOK>(IDOK),
        EnMandato<&D::OnCancel>(IDCANCEL),
        EnMandato<&D::OnHelp>(ID_HELP),
        EnMandato<&D::OnAcercaDe>(IDC_ACERCA_DE),
        EnMensaje<&D::OnEstadoId>(WM_ESTADO_ID),
        EnMensaje<&D::OnAvance>(WM_AVANCE),
        EnMensaje<&D::OnLatido>(WM_LATIDO),
        EnMensaje<&D::OnEstadoTexto>(WM_ESTADO_TEXTO),
        EnMensaje<&D::OnHelpInfo>(WM_HELP),
    };
    return kMapa;
}

LRESULT CTraduccionDlg::WindowProc(UINT mensaje, WPARAM wParam, LPARAM lParam)
{
    if (mensaje != WM_COMMAND)
        return CDialog::WindowProc(mensaje, wParam, lParam);
    for (const CBusqueda& busqueda : Describe().busquedas) {
        if (busqueda.boton == wParam) {
            OnBuscar(busqueda);
            return 0;
        }
    }
    try {
        return CDialog::WindowProc(mensaje, wParam, lParam);
    } catch (const CFileException& fallo) {
        CajaError(cajas::kNoSeEscribe, fallo.m_strFileName);
        m_escritos.salidas.clear(); // which of them are whole isn't told
        Fase(IDS_NADA, nullptr);
        ActivaControles(true);
        return 0;
    }
}

LRESULT CTraduccionDlg::OnEstadoId(WPARAM wParam, LPARAM /*lParam*/)
{
    AtiendeUno();
    Estado.LoadString(static_cast<UINT>(wParam));
    UpdateData(false);
    Progreso.SendMessage(PBM_SETPOS, 0, 0);
    return EnMarcha ? 1 : 0;
}

LRESULT CTraduccionDlg::OnAvance(WPARAM wParam, LPARAM lParam)
{
    AtiendeUno();
    const WPARAM hecho =
        Porcentaje(static_cast<std::uint32_t>(wParam), static_cast<std::int32_t>(lParam));
    Progreso.SendMessage(PBM_SETPOS, hecho, 0);
    return EnMarcha ? 1 : 0;
}

LRESULT CTraduccionDlg::OnLatido(WPARAM /*wParam*/, LPARAM /*lParam*/)
{
    AtiendeUno();
    return EnMarcha ? 1 : 0;
}

LRESULT CTraduccionDlg::OnEstadoTexto(WPARAM wParam, LPARAM /*lParam*/)
{
    AtiendeUno();
    Estado = *reinterpret_cast<const CString*>(wParam); // NOLINT(performance-no-int-to-ptr)
    UpdateData(false);
    return EnMarcha ? 1 : 0;
}

LRESULT CTraduccionDlg::OnHelpInfo(WPARAM /*wParam*/, LPARAM lParam)
{
    const auto& pregunta =
        *reinterpret_cast<const HELPINFO*>(lParam); // NOLINT(performance-no-int-to-ptr)
    if (!Describe().ayudaDeControles)
        return 0;
    if (pregunta.iCtrlId < 0)
        return 1; // a label or a group box
    const HH_POPUP popup = {static_cast<UINT>(pregunta.iCtrlId), pregunta.MousePos,
                            kAmarilloPalido};
    HtmlHelp(this, AfxGetApp()->m_pszHelpFilePath + kTextosDeControles, HH_DISPLAY_TEXT_POPUP,
             &popup);
    return 1;
}

void CTraduccionDlg::WinHelp(WPARAM /*dato*/, UINT /*mandato*/)
{
    HtmlHelp(this, AfxGetApp()->m_pszHelpFilePath, HH_DISPLAY_TOPIC, nullptr);
}

void CTraduccionDlg::OnAcercaDe()
{
    CAcercaDeDlg().DoModal();
}

void CTraduccionDlg::OnBuscar(const CBusqueda& busqueda)
{
    UpdateData(true);
    CString filtros;
    filtros.LoadString(busqueda.filtro);
    CFileDialog fichero(*busqueda.campo, OFN_HIDEREADONLY | OFN_FILEMUSTEXIST, filtros);
    if (fichero.DoModal() == IDOK)
        *busqueda.campo = fichero.GetPathName();
    UpdateData(false);
}

void CTraduccionDlg::EjecutaEnLote()
{
    m_enLote = true;
    UpdateData(false);
    SendMessage(WM_COMMAND, IDOK, 0);
}

void CTraduccionDlg::Fase(UINT idTexto, CStdioFile* log)
{
    if (log != nullptr)
        log->Flush();
    SendMessage(WM_ESTADO_ID, idTexto, 0);
}

bool CTraduccionDlg::Avanza(std::uint64_t posicion, std::uint64_t total)
{
    return SendMessage(WM_AVANCE, static_cast<std::uint32_t>(posicion),
                       static_cast<std::int32_t>(total)) != 0;
}

void CTraduccionDlg::MuestraError(const CString& texto)
{
    MessageBox(texto, cajas::kError, MB_ICONERROR);
}

bool CTraduccionDlg::Abre(CFile& fichero, const CString& nombre, UINT modo)
{
    const bool abierto = fichero.Open(nombre, modo);
    if (!abierto)
        CajaError(cajas::kNoExiste, nombre);
    return abierto;
}

bool CTraduccionDlg::AbreEntrada(CStdioFile& fichero, const CString& nombre)
{
    return Abre(fichero, nombre, CFile::modeRead | CFile::typeText);
}

bool CTraduccionDlg::AbreDibujo(CFile& fichero, const CString& nombre)
{
    return Abre(fichero, nombre, CFile::modeRead | CFile::typeBinary | CFile::anyCase);
}

bool CTraduccionDlg::AbreOrtos(CFile& bin, CFile& top, const CString& nombre)
{
    CCadena nombreBin = nombre;
    nombreBin.CambiaExtension("BIN");
    CCadena nombreTop = nombre;
    nombreTop.CambiaExtension("TOP");
    const bool hayBin = AbreDibujo(bin, nombreBin);
    return AbreDibujo(top, nombreTop) && hayBin;
}

bool CTraduccionDlg::Crea(CStdioFile& fichero, const CString& nombre, UINT modo, const char* queja,
                          const std::vector<CString>& entradas)
{
    const bool esEntrada =
        std::any_of(entradas.begin(), entradas.end(),
                    [&](const CString& entrada) { return CFile::EsElMismo(nombre, entrada); });
    constexpr UINT kModo = CFile::modeCreate | CFile::modeWrite | CFile::typeText;
    const bool creado = !esEntrada && fichero.Open(nombre, kModo | modo);
    if (!creado)
        CajaError(queja, nombre);
    else if ((modo & CFile::modeInPlace) != 0)
        m_escritos = {CFile::RutaCompleta(nombre), {}}; // a run begins with its log
    else
        m_escritos.salidas.push_back(CFile::RutaCompleta(nombre));
    return creado;
}

bool CTraduccionDlg::CreaSalida(CStdioFile& fichero, const CString& nombre, const char* queja,
                                const std::vector<CString>& entradas)
{
    return Crea(fichero, nombre, 0, queja, entradas);
}

bool CTraduccionDlg::CreaLog(CStdioFile& log, const CString& nombre,
                             const std::vector<CString>& entradas)
{
    return Crea(log, nombre, CFile::modeInPlace, cajas::kNoSeCrea, entradas);
}
