#include "shell/frame/translation_dialog.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <stdexcept>

#include "platform/cwinapp.h"
#include "platform/html_help.h"
#include "platform/system.h"
#include "resources/resource_ids.h"
#include "shell/frame/about_dialog.h"
#include "shell/frame/box_texts.h"

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
    PonValoresIniciales();
    LeeCampos();
    UpdateData(false);
    return 1;
}

/// Gives the fields what is stored of them.
void CTraduccionDlg::LeeCampos()
{
    const CDescripcion dialogo = Describe();
    std::vector<CString> claves;
    for (const CCampo& campo : dialogo.campos)
        claves.emplace_back(campo.clave);
    std::vector<std::optional<CString>> guardados;
    try {
        guardados = AfxGetApp()->LeeAjustes(dialogo.seccion, claves);
    } catch (const CFileException& fallo) {
        if (m_enLote) // what its input is hangs on them
            throw;
        m_sinAjustes = true;
        AfxGetApp()->CajaDeAjustes(cajas::kNoSeLeenAjustes, fallo);
    }
    for (std::size_t i = 0; i < guardados.size(); ++i) {
        if (!guardados[i])
            continue;
        if (auto* const* texto = std::get_if<CString*>(&dialogo.campos[i].valor)) {
            **texto = *guardados[i];
            continue;
        }
        int& numero = *std::get<int*>(dialogo.campos[i].valor);
        numero = CWinApp::NumeroGuardado(*guardados[i], numero);
    }
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
        else if (control->Clase() == ClaseControl::Lista)
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
    if (!m_sinAjustes)
        GuardaCampos();
    CDialog::OnCancel();
}

void CTraduccionDlg::GuardaCampos()
{
    const CDescripcion dialogo = Describe();
    std::vector<CAjuste> ajustes;
    for (const CCampo& campo : dialogo.campos) {
        if (auto* const* texto = std::get_if<CString*>(&campo.valor))
            ajustes.push_back({dialogo.seccion, campo.clave, **texto});
        else
            ajustes.push_back(
                {dialogo.seccion, campo.clave, std::to_string(*std::get<int*>(campo.valor)), true});
    }
    try {
        AfxGetApp()->GuardaAjustes(ajustes);
    } catch (const CFileException& fallo) {
        AfxGetApp()->CajaDeAjustes(cajas::kNoSeGuardan, fallo);
    }
}

void CTraduccionDlg::ActivaControles(bool activar)
{
    EnMarcha = !activar;
    if (!activar)
        sistema::VigilaSenales(AfxGetApp()->Frontal().AlguienContesta());
    if (!activar && m_proceso)
        m_proceso->focoAntes = Foco(); // a control that is switched off loses it
    for (CControl& control : Controles())
        if (control.SeManeja() && control.Id() != IDCANCEL)
            control.EnableWindow(activar);
    if (!activar)
        GotoDlgCtrl(IDCANCEL);
    else if (m_proceso && m_proceso->focoAntes)
        GotoDlgCtrl(*m_proceso->focoAntes);
    if (CControl* boton = GetDlgItem(IDCANCEL))
        boton->SetWindowText(activar ? "Salir" : "Detener");
    if (activar && m_proceso)
        AfxGetApp()->Frontal().FinDeProceso(*this, m_proceso->escritos);
    if (activar) // a signal that came for the run ends the program here, when all is told
        sistema::OlvidaSenales();
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
        EnMensaje<&D::OnLatido>(WM_LATIDO),
        EnMensaje<&D::OnEstadoTexto>(WM_ESTADO_TEXTO),
        EnMensaje<&D::OnHelpInfo>(WM_HELP),
    };
    return kMapa;
}

LRESULT CTraduccionDlg::WindowProc(UINT mensaje, WPARAM wParam, LPARAM lParam)
{
    if (mensaje == WM_AVANCE) // comes with every line, so nobody looks up whose it is
        return OnAvance(wParam, lParam);
    if (mensaje != WM_COMMAND)
        return CDialog::WindowProc(mensaje, wParam, lParam);
    for (const CBusqueda& busqueda : Describe().busquedas) {
        if (busqueda.boton == wParam) {
            OnBuscar(busqueda);
            return 0;
        }
    }
    if (m_proceso) // what goes wrong in a command that comes during a run ends the run
        return CDialog::WindowProc(mensaje, wParam, lParam);
    // Nothing goes further up, where the loops of a windows' library stand, which no exception may
    // cross.
    try {
        Obedece(wParam, lParam);
    } catch (const CInterrumpido&) {
        LimpiaProceso();
    } catch (const std::bad_alloc&) { // while the end of a run was told
        AfxGetApp()->CajaSinMemoria();
        LimpiaProceso();
    }
    return 0;
}

/// Carries out a command and tells what keeps it from its end.
void CTraduccionDlg::Obedece(WPARAM wParam, LPARAM lParam)
{
    try {
        if (wParam == IDOK) // what the windows tell isn't of a run that can't even begin
            AfxGetApp()->Frontal().InicioDeProceso(*this);
        CDialog::WindowProc(WM_COMMAND, wParam, lParam);
        if (m_proceso && !m_proceso->escritos.observaciones.empty())
            DejaProceso(); // it couldn't begin, but has done something that must be told
        else
            LimpiaProceso();
        return;
    } catch (const CFileException& fallo) {
        MuestraError(fallo.Mensaje());
    } catch (const std::bad_alloc&) {
        AfxGetApp()->CajaSinMemoria();
    } catch (const std::length_error&) { // a text or table longer than any memory
        AfxGetApp()->CajaSinMemoria();
    }
    if (m_proceso)
        DejaProceso();
}

/// Ends a run that came to no end of its own.
void CTraduccionDlg::DejaProceso()
{
    m_proceso->salidas.Desecha();
    m_proceso->escritos.salidas.clear();
    AcabaProceso();
}

void CTraduccionDlg::CajaDeCierre(const CString& texto)
{
    AfxGetApp()->ConReserva([&] { MessageBox(texto, cajas::kFin, MB_OK); });
}

void CTraduccionDlg::AcabaProceso()
{
    m_proceso->log.Close();
    AfxGetApp()->ConReserva([this] {
        if (const auto& causa = m_proceso->log.Fallo().m_causa)
            MuestraError(CFileException(m_proceso->escritos.log, causa).Mensaje());
        try {
            Fase(IDS_NADA);
        } catch (const CInterrumpido&) { // at the closing box; what there is to tell comes first
        }
        ActivaControles(true);
    });
    LimpiaProceso();
}

/// Lets go of all that a run held. A signal that came for one that is broken off ends the program
/// here.
void CTraduccionDlg::LimpiaProceso()
{
    m_proceso.reset();
    sistema::OlvidaSenales();
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
    if (!EnMarcha &&
        m_proceso) { // by this answer a run ends; a stop behind the last one stops nothing
        AfxGetApp()->NotaParada();
        m_proceso->detenido = true;
    }
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
    HtmlHelp(this, AfxGetApp()->TemasDeControles(), HH_DISPLAY_TEXT_POPUP, &popup);
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

void CTraduccionDlg::CreaParaLote(CWnd* padre)
{
    m_enLote = true;
    Create(IdPlantilla(), padre);
}

void CTraduccionDlg::EjecutaEnLote()
{
    UpdateData(false);
    SendMessage(WM_COMMAND, IDOK, 0);
}

void CTraduccionDlg::Suelta(std::shared_ptr<const void> datos) const
{
    if (m_enLote)
        AfxGetApp()->Conserva(std::move(datos));
}

void CTraduccionDlg::Fase(UINT idTexto)
{
    if (m_proceso)
        m_proceso->log.Flush();
    SendMessage(WM_ESTADO_ID, idTexto, 0);
}

bool CTraduccionDlg::Avanza(std::uint64_t posicion, std::uint64_t total)
{
    return SendMessage(WM_AVANCE, static_cast<std::uint32_t>(posicion),
                       static_cast<std::int32_t>(total)) != 0;
}

void CTraduccionDlg::MuestraError(const CString& texto)
{
    if (m_proceso)
        m_proceso->escritos.huboErrores = true;
    MessageBox(texto, cajas::kError, MB_ICONERROR);
}

void CTraduccionDlg::CajaError(const char* forma, const CFileException& fallo)
{
    MuestraError(Formatea(forma, fallo.m_strFileName) + fallo.Detalle());
}
