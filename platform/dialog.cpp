#include "platform/dialog.h"

#include <algorithm>

#include "platform/cwinapp.h"
#include "platform/system.h"

namespace {

/// The row of radio buttons that the button belongs to, in order. Controls of other kinds may stand
/// among them.
std::vector<CControl*> GrupoDe(std::deque<CControl>& controles, const CControl& boton)
{
    std::vector<CControl*> grupo;
    bool hallado = false;
    for (CControl& control : controles) {
        if (control.Clase() != ClaseControl::Radio)
            continue;
        if (control.Plantilla().abreGrupo) {
            if (hallado)
                break;
            grupo.clear();
        }
        hallado = hallado || &control == &boton;
        grupo.push_back(&control);
    }
    return grupo;
}

bool TieneLeyenda(ClaseControl clase)
{
    return SePulsa(clase) || clase == ClaseControl::Progreso;
}

/// The caption without the mark of its mnemonic.
CString SinMarca(const CControl& control)
{
    CString leyenda = control.GetWindowText();
    leyenda.Replace("&", "");
    return leyenda;
}

bool Rodea(const CPlantillaControl& grupo, const CPlantillaControl& control)
{
    return grupo.clase == ClaseControl::Grupo && control.x >= grupo.x && control.y >= grupo.y &&
           control.x < grupo.x + grupo.ancho && control.y < grupo.y + grupo.alto;
}

template <auto Lee, auto Pon>
void Intercambia(const CDataExchange& dx, UINT id, auto& valor)
{
    CControl* control = dx.m_pDlg->GetDlgItem(id);
    if (control == nullptr)
        return;
    if (dx.m_bSaveAndValidate)
        valor = (control->*Lee)();
    else
        (control->*Pon)(valor);
}

} // namespace

void InitCommonControls()
{
    AfxGetApp()->Frontal().IniciaControles();
}

CControl::CControl(CDialog& dialogo, const CPlantillaControl& plantilla)
    : m_dialogo(&dialogo), m_plantilla(&plantilla), m_texto(plantilla.texto)
{
}

void CControl::SetWindowText(const CString& texto)
{
    if (texto == m_texto)
        return;
    m_texto = texto;
    m_dialogo->Refleja(*this);
}

void CControl::EnableWindow(bool activo)
{
    m_activo = activo;
    m_dialogo->Refleja(*this);
}

void CControl::SetCheck(int marca)
{
    m_marca = marca != 0 ? 1 : 0;
    m_dialogo->Refleja(*this);
}

void CControl::SetCurSel(int seleccion)
{
    const bool hay =
        seleccion >= 0 && static_cast<std::size_t>(seleccion) < m_plantilla->elementos.size();
    m_seleccion = hay ? seleccion : -1;
    m_dialogo->Refleja(*this);
}

LRESULT CControl::SendMessage(UINT mensaje, WPARAM wParam, LPARAM /*lParam*/)
{
    if (mensaje != PBM_SETPOS)
        return 0;
    const int antes = m_posicion;
    m_posicion = std::clamp(static_cast<int>(wParam), 0, 100);
    if (m_posicion != antes || m_posicion == 0) // a bar set to 0 begins anew
        m_dialogo->Refleja(*this);
    return antes;
}

LRESULT CWnd::WindowProc(UINT mensaje, WPARAM wParam, LPARAM lParam)
{
    for (const CEntradaMensaje& entrada : GetMessageMap())
        if (entrada.mensaje == mensaje && (mensaje != WM_COMMAND || entrada.mandato == wParam))
            return entrada.manejador(*this, wParam, lParam);
    if (mensaje == WM_COMMAND)
        AfxGetApp()->OnCommand(static_cast<UINT>(wParam));
    return 0;
}

int CWnd::MessageBox(const CString& texto, const CString& titulo, UINT flags)
{
    return AfxGetApp()->Caja(texto, titulo, flags);
}

CDialog::~CDialog()
{
    if (m_plantilla != nullptr)
        AfxGetApp()->Frontal().Cierra(*this);
}

bool CDialog::Create(UINT plantilla, CWnd* /*padre*/)
{
    m_plantilla = BuscaRecurso(AfxGetApp()->Recursos().dialogos, plantilla);
    if (m_plantilla == nullptr)
        return false;
    m_controles.clear();
    for (const CPlantillaControl& control : m_plantilla->controles)
        m_controles.emplace_back(*this, control);
    m_resultado.reset();
    OnInitDialog();
    return true;
}

int CDialog::DoModal()
{
    if (!Create(m_idPlantilla, nullptr))
        return -1;
    AfxGetApp()->Frontal().MuestraModal(*this);
    return m_resultado.value_or(IDCANCEL);
}

void CDialog::UpdateData(bool guarda)
{
    CDataExchange dx(*this, guarda);
    DoDataExchange(&dx);
}

CControl* CDialog::GetDlgItem(UINT id)
{
    const auto control = std::ranges::find(m_controles, id, &CControl::Id);
    return control != m_controles.end() ? &*control : nullptr;
}

void CDialog::Pulsa(CControl& control)
{
    if (!control.IsWindowEnabled())
        return;
    switch (control.Clase()) {
    case ClaseControl::Boton:
    case ClaseControl::BotonPorDefecto:
        SendMessage(WM_COMMAND, control.Id(), 0);
        break;
    case ClaseControl::Casilla:
        control.SetCheck(1 - control.GetCheck());
        break;
    case ClaseControl::Radio:
        for (CControl* otro : GrupoDe(m_controles, control))
            otro->SetCheck(otro == &control ? 1 : 0);
        break;
    default:
        break;
    }
}

CString CDialog::NombreDe(const CControl& control) const
{
    const CString leyenda = TieneLeyenda(control.Clase()) ? SinMarca(control) : CString();
    const CControl* anterior = nullptr;
    CString grupo;
    bool delante = true; // of the control itself
    bool repetida = false;
    for (const CControl& otro : m_controles) {
        if (&otro == &control) {
            delante = false;
            continue;
        }
        repetida = repetida || otro.GetWindowText() == control.GetWindowText();
        if (delante)
            anterior = &otro;
        if (Rodea(otro.Plantilla(), control.Plantilla()))
            grupo = otro.GetWindowText();
    }
    if (!leyenda.IsEmpty())
        return repetida && anterior != nullptr ? leyenda + " " + NombreDe(*anterior) : leyenda;
    return anterior != nullptr && anterior->EsRotulo() ? anterior->GetWindowText() : grupo;
}

bool CDialog::SeLlamaComoSuLeyenda(const CControl& control) const
{
    using enum ClaseControl;
    const ClaseControl clase = control.Clase();
    if (clase == Edicion || clase == Lista || clase == Progreso)
        return false;
    const bool boton = clase == Boton || clase == BotonPorDefecto;
    return !boton || NombreDe(control) == SinMarca(control);
}

const CControl* CDialog::Avance() const
{
    const auto barra = std::ranges::find(m_controles, ClaseControl::Progreso, &CControl::Clase);
    return barra != m_controles.end() ? &*barra : nullptr;
}

void CDialog::PideAyuda(const CControl* control, const POINT& punto)
{
    LRESULT atendida = 0;
    if (control != nullptr) {
        const HELPINFO pregunta{control->Id() == kSinId ? -1 : static_cast<int>(control->Id()),
                                punto};
        atendida = SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&pregunta));
    }
    if (atendida == 0)
        SendMessage(WM_COMMAND, ID_HELP, 0);
}

void CDialog::GotoDlgCtrl(UINT id)
{
    m_foco = id;
    if (const CControl* control = GetDlgItem(id))
        Refleja(*control);
}

void CDialog::Refleja(const CControl& control) const
{
    AfxGetApp()->Frontal().Refleja(*this, control);
}

void CDialog::AtiendeUno()
{
    AfxGetApp()->Frontal().AtiendeUno(*this);
    if (sistema::HuboInterrupcion() && !sistema::HayQueAcabar())
        SendMessage(WM_COMMAND, IDCANCEL, 0);
    if (sistema::HayQueAcabar())
        throw CInterrumpido();
}

BOOL CDialog::OnInitDialog()
{
    UpdateData(false);
    return 1;
}

void CDialog::OnOK()
{
    UpdateData(true);
    EndDialog(IDOK);
}

std::span<const CEntradaMensaje> CDialog::GetMessageMap() const
{
    static constexpr CEntradaMensaje kMapa[] = {
        EnMandato<&CDialog::OnOK>(IDOK),
        EnMandato<&CDialog::OnCancel>(IDCANCEL),
    };
    return kMapa;
}

void DDX_Control(CDataExchange* dx, UINT id, CProgressCtrl& control)
{
    control.m_control = dx->m_pDlg->GetDlgItem(id);
}

void DDX_Text(CDataExchange* dx, UINT id, CString& valor)
{
    Intercambia<&CControl::GetWindowText, &CControl::SetWindowText>(*dx, id, valor);
}

void DDX_Check(CDataExchange* dx, UINT id, int& valor)
{
    Intercambia<&CControl::GetCheck, &CControl::SetCheck>(*dx, id, valor);
}

void DDX_CBIndex(CDataExchange* dx, UINT id, int& valor)
{
    Intercambia<&CControl::GetCurSel, &CControl::SetCurSel>(*dx, id, valor);
}

void DDX_Radio(CDataExchange* dx, UINT id, int& valor)
{
    const CControl* primero = dx->m_pDlg->GetDlgItem(id);
    if (primero == nullptr)
        return;
    const std::vector<CControl*> grupo = GrupoDe(dx->m_pDlg->Controles(), *primero);
    const int elegido = valor;
    if (dx->m_bSaveAndValidate)
        valor = -1;
    for (int i = 0; CControl * boton : grupo) {
        if (!dx->m_bSaveAndValidate)
            boton->SetCheck(i == elegido ? 1 : 0);
        else if (boton->GetCheck() != 0)
            valor = i;
        ++i;
    }
}

int CFileDialog::DoModal()
{
    return AfxGetApp()->Frontal().EligeFichero(*this) ? IDOK : IDCANCEL;
}
