#include "platform/windows/dialog_window.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "platform/layer_texts.h"
#include "platform/system.h"
#include "platform/windows/accessible_name.h"
#include "platform/windows/dialog_template.h"
#include "platform/windows/path_field.h"
#include "platform/windows/run_footer.h"
#include "platform/windows/text.h"

namespace {

using enum ClaseControl;

/// Newer systems change a dialog's scale by themselves, and know nothing of what makes it wider
/// than its template or stands below it.
void SinEscalaAjena(HWND ventana)
{
    constexpr int kDeNada = 1;
    using Funcion = BOOL(WINAPI*)(HWND, int, int);
    const FARPROC hallada =
        GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetDialogDpiChangeBehavior");
    if (hallada != nullptr)
        std::bit_cast<Funcion>(hallada)(ventana, kDeNada, kDeNada);
}

} // namespace

CVentanaDialogo::CVentanaDialogo(CDialog& dialogo, HWND debajo)
    : CVentanaComun(dialogo), m_debajo(debajo)
{
    Crea(debajo);
    PreparaControles();
    if (Avance() != nullptr) {
        m_pie = std::make_unique<CPieProceso>(m_ventana, Relato(),
                                              [this] { return Suyo().OrdenDeEnsayo(); });
        m_tareas.emplace(m_ventana);
    }
    m_marco.emplace(m_ventana, dialogo.Plantilla(), m_controles, m_pie.get());
    for (const CControl& control : Dialogo().Controles())
        Refleja(control);
    m_marco->HazSitio();
    PonImagenes();
    m_marco->PonLados();
    if (m_pie != nullptr)
        m_pie->PonAlDia(); // a trial is offered before the first run
    if (Dialogo().Centrada())
        m_marco->Centra(debajo);
}

CVentanaDialogo::~CVentanaDialogo()
{
    DestroyWindow(m_ventana);
}

void CVentanaDialogo::Crea(HWND debajo)
{
    const auto plantilla =
        HazPlantilla(Dialogo().Plantilla(), LetraDelSistema(),
                     {.seEnsancha = Avance() != nullptr, .seMinimiza = debajo == nullptr});
    m_ventana = CreateDialogIndirectParamW(GetModuleHandleW(nullptr),
                                           reinterpret_cast<LPCDLGTEMPLATEW>(plantilla.data()),
                                           debajo, AlLlegar, reinterpret_cast<LPARAM>(this));
    SinEscalaAjena(m_ventana);
    for (HWND hijo = GetWindow(m_ventana, GW_CHILD); hijo != nullptr;
         hijo = GetWindow(hijo, GW_HWNDNEXT))
        m_controles.push_back(hijo);
    for (const WPARAM cual : {ICON_BIG, ICON_SMALL}) {
        const int lado = GetSystemMetrics(cual == ICON_BIG ? SM_CXICON : SM_CXSMICON);
        SendMessageW(m_ventana, WM_SETICON, cual,
                     reinterpret_cast<LPARAM>(m_imagenes.Icono(Dialogo().Icono(), lado)));
    }
}

void CVentanaDialogo::PreparaControles()
{
    for (const CControl& control : Dialogo().Controles()) {
        HWND ventana = VentanaDe(control);
        if (control.Clase() == Edicion)
            HazCampoRuta(ventana);
        if (!Dialogo().SeLlamaComoSuLeyenda(control))
            PonNombreAccesible(ventana, AAncho(Dialogo().NombreDe(control)));
        for (const char* elemento : control.Plantilla().elementos)
            SendMessageW(ventana, CB_ADDSTRING, 0,
                         reinterpret_cast<LPARAM>(AAncho(elemento).c_str()));
    }
}

void CVentanaDialogo::PonImagenes()
{
    for (const CControl& control : Dialogo().Controles()) {
        const CPlantillaControl& plantilla = control.Plantilla();
        const RECT sitio = m_marco->Pixeles(plantilla);
        const SIZE lados = {sitio.right - sitio.left, sitio.bottom - sitio.top};
        if (plantilla.clase == Imagen)
            SendMessageW(VentanaDe(control), STM_SETIMAGE, IMAGE_BITMAP,
                         reinterpret_cast<LPARAM>(
                             m_imagenes.Imagen(plantilla.id, lados, GetSysColor(COLOR_BTNFACE))));
        else if (plantilla.clase == Icono)
            SendMessageW(VentanaDe(control), STM_SETIMAGE, IMAGE_ICON,
                         reinterpret_cast<LPARAM>(m_imagenes.Icono(
                             plantilla.id, static_cast<int>(std::min(lados.cx, lados.cy)))));
    }
}

HWND CVentanaDialogo::VentanaDe(const CControl& control) const
{
    const auto& controles = Dialogo().Controles();
    const auto este = std::ranges::find(controles, &control, [](const CControl& c) { return &c; });
    const auto lugar = static_cast<std::size_t>(este - controles.begin());
    return lugar < m_controles.size() ? m_controles[lugar] : nullptr;
}

CControl* CVentanaDialogo::ControlDe(HWND ventana)
{
    // The edit of a list is a window of its own.
    for (; ventana != nullptr && ventana != m_ventana; ventana = GetParent(ventana)) {
        const auto este = std::ranges::find(m_controles, ventana);
        if (este != m_controles.end())
            return &Suyo().Controles()[static_cast<std::size_t>(este - m_controles.begin())];
    }
    return nullptr;
}

void CVentanaDialogo::PonFocoInicial()
{
    HWND primero = GetNextDlgTabItem(m_ventana, nullptr, FALSE);
    const CControl* control = ControlDe(primero);
    const auto& controles = Dialogo().Controles();
    const bool hayMarcado = std::ranges::any_of(
        controles, [](const CControl& c) { return c.Clase() == Radio && c.GetCheck() != 0; });
    // A radio button is marked by the focus, so where none is it begins elsewhere.
    if (control != nullptr && control->Clase() == Radio && !hayMarcado)
        primero = ControlCon(UINT{IDOK});
    SendMessageW(m_ventana, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(primero), TRUE);
}

void CVentanaDialogo::Aparece()
{
    if (m_debajo != nullptr)
        EnableWindow(m_debajo, FALSE);
    ShowWindow(m_ventana, SW_SHOW);
    PonFocoInicial();
}

void CVentanaDialogo::SirveAlUsuario()
{
    MSG mensaje = {};
    while (!HayQueSalir() && GetMessageW(&mensaje, nullptr, 0, 0) > 0) {
        if (IsDialogMessageW(m_ventana, &mensaje) == 0) {
            TranslateMessage(&mensaje);
            DispatchMessageW(&mensaje);
        }
    }
    if (m_debajo != nullptr) // before it goes, else another program's window would come up
        EnableWindow(m_debajo, TRUE);
}

bool CVentanaDialogo::TomaUno()
{
    MSG mensaje = {};
    if (PeekMessageW(&mensaje, nullptr, 0, 0, PM_REMOVE) == 0)
        return false;
    TranslateMessage(&mensaje);
    DispatchMessageW(&mensaje);
    return true;
}

void CVentanaDialogo::PonBarra(int hecho)
{
    SendMessageW(VentanaDe(*Avance()), PBM_SETPOS, static_cast<WPARAM>(hecho), 0);
    if (Relato().EnProceso())
        m_tareas->Pon(hecho);
}

void CVentanaDialogo::PonTitulo(const std::string& utf8)
{
    PonTexto(m_ventana, AAncho(utf8));
}

void CVentanaDialogo::PonPie()
{
    m_pie->PonAlDia();
    if (!Relato().EnProceso()) {
        m_tareas->Quita();
        ShutdownBlockReasonDestroy(m_ventana);
    }
}

void CVentanaDialogo::PonControl(const CControl& control)
{
    HWND ventana = VentanaDe(control);
    const bool antes = std::exchange(m_reflejando, true);
    switch (control.Clase()) {
    case Casilla:
    case Radio:
        SendMessageW(ventana, BM_SETCHECK, static_cast<WPARAM>(control.GetCheck()), 0);
        break;
    case Lista:
        SendMessageW(ventana, CB_SETCURSEL, static_cast<WPARAM>(control.GetCurSel()), 0);
        break;
    case Imagen:
    case Icono:
        break;
    case Edicion:
        if (PonTexto(ventana, AAncho(control.GetWindowText())))
            MuestraFinal(ventana);
        break;
    default:
        PonTexto(ventana, AAncho(control.GetWindowText()));
    }
    EnableWindow(ventana, control.IsWindowEnabled() ? TRUE : FALSE);
    if (control.Id() == Dialogo().Foco() && control.Id() != m_foco)
        SendMessageW(m_ventana, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(ventana), TRUE);
    m_reflejando = antes;
}

INT_PTR CALLBACK CVentanaDialogo::AlLlegar(HWND ventana, UINT mensaje, WPARAM wParam, LPARAM lParam)
{
    if (mensaje == WM_INITDIALOG) {
        SetWindowLongPtrW(ventana, DWLP_USER, lParam);
        return FALSE; // the focus is given when the window is shown
    }
    auto* esta = reinterpret_cast<CVentanaDialogo*>(GetWindowLongPtrW(ventana, DWLP_USER));
    return esta != nullptr && esta->m_marco ? esta->Atiende(mensaje, wParam, lParam) : FALSE;
}

INT_PTR CVentanaDialogo::Atiende(UINT mensaje, WPARAM wParam, LPARAM lParam)
{
    switch (mensaje) {
    case WM_COMMAND:
        AlMandar(HIWORD(wParam), LOWORD(wParam), reinterpret_cast<HWND>(lParam));
        return TRUE;
    case WM_CLOSE:
        AlMandar(BN_CLICKED, WORD{IDCANCEL}, nullptr);
        return TRUE;
    case WM_HELP:
        PideAyuda(*reinterpret_cast<const AyudaDelSistema*>(lParam));
        return TRUE;
    case WM_SIZE:
        if (wParam != SIZE_MINIMIZED)
            m_marco->Coloca();
        return TRUE;
    case WM_GETMINMAXINFO:
        if (Avance() == nullptr)
            return FALSE;
        m_marco->PonLimites(*reinterpret_cast<MINMAXINFO*>(lParam));
        return TRUE;
    case WM_DPICHANGED:
        CambiaEscala(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return TRUE;
    case WM_QUERYENDSESSION:
        SetWindowLongPtrW(m_ventana, DWLP_MSGRESULT, PuedeAcabarLaSesion() ? TRUE : FALSE);
        return TRUE;
    case WM_ENDSESSION:
        AcabaLaSesion(wParam != 0);
        return TRUE;
    case CPieProceso::kHayInforme:
        m_pie->AbreInformeHecho();
        return TRUE;
    case WM_VSCROLL:
        m_marco->Desplaza(LOWORD(wParam));
        return TRUE;
    case WM_MOUSEWHEEL:
        m_marco->Rueda(static_cast<short>(HIWORD(wParam)));
        return TRUE;
    default:
        return FALSE;
    }
}

void CVentanaDialogo::CambiaEscala(int puntosPorPulgada, const RECT& sitio)
{
    const Letra antes = std::exchange(m_letra, HazLetra(LetraDelSistema(), puntosPorPulgada));
    for (HWND hijo = GetWindow(m_ventana, GW_CHILD); hijo != nullptr;
         hijo = GetWindow(hijo, GW_HWNDNEXT))
        SendMessageW(hijo, WM_SETFONT, reinterpret_cast<WPARAM>(m_letra.get()), FALSE);
    m_marco->HazSitio();
    PonImagenes();
    SetWindowPos(m_ventana, nullptr, sitio.left, sitio.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    m_marco->PonLados();
}

bool CVentanaDialogo::PuedeAcabarLaSesion()
{
    if (!Relato().EnProceso())
        return true;
    ShutdownBlockReasonCreate(m_ventana, AAncho(textos::kProcesoAMedias).c_str());
    return false;
}

void CVentanaDialogo::AcabaLaSesion(bool deVerdad)
{
    if (deVerdad && Relato().EnProceso())
        sistema::PideAcabar(); // the run finds it where it looks for events, and clears up
    else
        ShutdownBlockReasonDestroy(m_ventana);
}

void CVentanaDialogo::AlMandar(WORD aviso, WORD id, HWND ventana)
{
    CControl* control = ventana != nullptr ? ControlDe(ventana) : nullptr;
    if (control != nullptr)
        return AlCambiar(*control, aviso, ventana);
    if (m_pie != nullptr && ventana != nullptr && aviso == BN_CLICKED && m_pie->AlPulsar(ventana))
        return;
    if (ventana == nullptr && id == WORD{IDCANCEL}) // the window's own ways to close it
        Cancela();
}

void CVentanaDialogo::AlCambiar(CControl& control, WORD aviso, HWND ventana)
{
    const ClaseControl clase = control.Clase();
    if (clase == Edicion && aviso == EN_CHANGE && !m_reflejando) {
        if (TomaLoEscrito(control, DeAncho(TextoDe(ventana))))
            VeAlFinal(ventana);
    } else if (clase == Lista && aviso == CBN_SELCHANGE) {
        control.SetCurSel(static_cast<int>(SendMessageW(ventana, CB_GETCURSEL, 0, 0)));
    } else if ((clase == Edicion && aviso == EN_SETFOCUS) ||
               (clase == Lista && aviso == CBN_SETFOCUS)) {
        AlTomarFoco(ventana);
    } else if (SePulsa(clase)) {
        if (aviso == BN_CLICKED || aviso == BN_DBLCLK) // the second of two quick ones
            Despacha([&] { Suyo().Pulsa(control); });
        else if (aviso == BN_SETFOCUS)
            AlTomarFoco(ventana);
    }
}

void CVentanaDialogo::AlTomarFoco(HWND ventana)
{
    const CControl* control = ControlDe(ventana);
    m_foco = control != nullptr ? control->Id() : kSinId;
    if (control == nullptr)
        return;
    Suyo().NotaFoco(control->Id());
    m_marco->TraeALaVista(ventana);
}

void CVentanaDialogo::PideAyuda(const AyudaDelSistema& pregunta)
{
    HWND ventana = static_cast<HWND>(pregunta.hItemHandle);
    const CControl* control = ControlDe(ventana);
    PuntoDelSistema donde = pregunta.MousePos;
    RECT sitio = {};
    GetWindowRect(ventana, &sitio);
    if (control != nullptr && PtInRect(&sitio, donde) == 0)
        donde = {sitio.left, sitio.bottom};
    const POINT punto{static_cast<int>(donde.x), static_cast<int>(donde.y)};
    Despacha([&] { Suyo().PideAyuda(control, punto); });
}
