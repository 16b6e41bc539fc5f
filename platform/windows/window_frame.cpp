#include "platform/windows/window_frame.h"

#include <algorithm>
#include <cmath>

#include "platform/window_layout.h"
#include "platform/windows/dialog_font.h"
#include "platform/windows/run_footer.h"
#include "platform/windows/text.h"

namespace {

SIZE LadosDe(const RECT& sitio)
{
    return {sitio.right - sitio.left, sitio.bottom - sitio.top};
}

RECT AreaDeTrabajo(HWND ventana)
{
    MONITORINFO pantalla = {};
    pantalla.cbSize = sizeof pantalla;
    GetMonitorInfoW(MonitorFromWindow(ventana, MONITOR_DEFAULTTONEAREST), &pantalla);
    return pantalla.rcWork;
}

SIZE Interior(HWND ventana)
{
    RECT sitio = {};
    GetClientRect(ventana, &sitio);
    return LadosDe(sitio);
}

/// Pixels that the control's text takes, with what stands around it.
LONG AnchoNecesario(HWND control, const CPlantillaControl& plantilla)
{
    SIZE ideal = {};
    if (plantilla.clase == ClaseControl::Texto)
        return Mide(control, TextoDe(control)).cx;
    if (SePulsa(plantilla.clase))
        SendMessageW(control, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&ideal));
    return ideal.cx;
}

} // namespace

CMarcoVentana::CMarcoVentana(HWND ventana, const CPlantillaDialogo& plantilla,
                             std::span<const HWND> controles, CPieProceso* pie)
    : m_ventana(ventana), m_plantilla(plantilla), m_controles(controles.begin(), controles.end()),
      m_pie(pie)
{
}

RECT CMarcoVentana::Pixeles(const CPlantillaControl& control) const
{
    RECT sitio = EnPixeles(
        m_ventana, {control.x, control.y, control.x + control.ancho, control.y + control.alto});
    sitio.left = std::lround(sitio.left * m_anchura);
    sitio.right = std::lround(sitio.right * m_anchura);
    return sitio;
}

void CMarcoVentana::HazSitio()
{
    m_anchura = 1;
    double anchura = 1;
    for (std::size_t i = 0; i < m_controles.size(); ++i) {
        const RECT sitio = Pixeles(m_plantilla.controles[i]);
        const LONG tiene = sitio.right - sitio.left;
        if (tiene > 0)
            anchura = std::max(anchura, static_cast<double>(AnchoNecesario(
                                            m_controles[i], m_plantilla.controles[i])) /
                                            tiene);
    }
    m_anchura = anchura;
}

SIZE CMarcoVentana::Natural() const
{
    const RECT sitio = EnPixeles(m_ventana, {0, 0, m_plantilla.ancho, m_plantilla.alto});
    return {std::lround(sitio.right * m_anchura),
            sitio.bottom + (m_pie != nullptr ? m_pie->Alto() : 0)};
}

SIZE CMarcoVentana::ConBordes(SIZE interior) const
{
    RECT sitio = {0, 0, interior.cx, interior.cy};
    AdjustWindowRectEx(&sitio, static_cast<DWORD>(GetWindowLongW(m_ventana, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(m_ventana, GWL_EXSTYLE)));
    return LadosDe(sitio);
}

void CMarcoVentana::PonLados()
{
    const SIZE natural = Natural();
    const SIZE area = LadosDe(AreaDeTrabajo(m_ventana));
    SIZE lados = ConBordes(natural);
    const bool cabe = lados.cy <= area.cy;
    if (!cabe) {
        lados.cx += GetSystemMetrics(SM_CXVSCROLL);
        lados.cy = area.cy;
    }
    ShowScrollBar(m_ventana, SB_VERT, cabe ? FALSE : TRUE);
    SetWindowPos(m_ventana, nullptr, 0, 0, std::min(lados.cx, area.cx), lados.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Coloca();
}

void CMarcoVentana::Centra(HWND debajo) const
{
    const RECT area = AreaDeTrabajo(m_ventana);
    RECT donde = area;
    if (debajo != nullptr)
        GetWindowRect(debajo, &donde);
    RECT suyo = {};
    GetWindowRect(m_ventana, &suyo);
    const SIZE lados = LadosDe(suyo);
    const auto entre = [](LONG valor, LONG desde, LONG hasta) {
        return std::clamp(valor, desde, std::max(desde, hasta));
    };
    SetWindowPos(m_ventana, nullptr,
                 entre((donde.left + donde.right - lados.cx) / 2, area.left, area.right - lados.cx),
                 entre((donde.top + donde.bottom - lados.cy) / 2, area.top, area.bottom - lados.cy),
                 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CMarcoVentana::Coloca()
{
    if (m_colocando) // a scroll bar that shows or goes changes the size once more
        return;
    m_colocando = true;
    const SIZE natural = Natural();
    const SIZE interior = Interior(m_ventana);
    SCROLLINFO barra = {sizeof barra,
                        SIF_RANGE | SIF_PAGE,
                        0,
                        natural.cy - 1,
                        static_cast<UINT>(interior.cy),
                        0,
                        0};
    SetScrollInfo(m_ventana, SB_VERT, &barra, TRUE);
    m_arriba = std::clamp<int>(m_arriba, 0, std::max<int>(0, natural.cy - interior.cy));
    const int sobra = std::max<int>(0, interior.cx - natural.cx);
    HDWP todos = BeginDeferWindowPos(static_cast<int>(m_controles.size()));
    for (std::size_t i = 0; i < m_controles.size(); ++i) {
        const CPlantillaControl& control = m_plantilla.controles[i];
        RECT sitio = Pixeles(control);
        const AlEnsanchar cambio = QueHaceAlEnsanchar(control);
        sitio.left += cambio == AlEnsanchar::SeDesplaza ? sobra : 0;
        sitio.right += cambio == AlEnsanchar::Queda ? 0 : sobra;
        todos = DeferWindowPos(todos, m_controles[i], nullptr, sitio.left, sitio.top - m_arriba,
                               sitio.right - sitio.left, sitio.bottom - sitio.top,
                               SWP_NOZORDER | SWP_NOACTIVATE);
    }
    EndDeferWindowPos(todos);
    if (m_pie != nullptr) {
        const int alto = m_pie->Alto();
        m_pie->Coloca({0, natural.cy - alto - m_arriba, natural.cx + sobra, natural.cy - m_arriba});
    }
    // What a group box leaves behind is the dialog's to paint, and the group's box no cover for it.
    RedrawWindow(m_ventana, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    m_colocando = false;
}

void CMarcoVentana::PonLimites(MINMAXINFO& limites) const
{
    const SIZE natural = ConBordes(Natural());
    const SIZE area = LadosDe(AreaDeTrabajo(m_ventana));
    const bool cabe = natural.cy <= area.cy;
    const LONG ancho = natural.cx + (cabe ? 0 : GetSystemMetrics(SM_CXVSCROLL));
    limites.ptMinTrackSize = {std::min(ancho, area.cx), cabe ? natural.cy : area.cy / 2};
    limites.ptMaxTrackSize.y = natural.cy;
}

void CMarcoVentana::VeA(int arriba)
{
    const int hasta =
        std::clamp<int>(arriba, 0, std::max<int>(0, Natural().cy - Interior(m_ventana).cy));
    if (hasta == m_arriba)
        return;
    ScrollWindowEx(m_ventana, 0, m_arriba - hasta, nullptr, nullptr, nullptr, nullptr,
                   SW_SCROLLCHILDREN | SW_INVALIDATE | SW_ERASE);
    m_arriba = hasta;
    SetScrollPos(m_ventana, SB_VERT, hasta, TRUE);
}

void CMarcoVentana::Desplaza(WORD orden)
{
    const int pagina = Interior(m_ventana).cy;
    SCROLLINFO barra = {sizeof barra, SIF_TRACKPOS, 0, 0, 0, 0, 0};
    GetScrollInfo(m_ventana, SB_VERT, &barra);
    switch (orden) {
    case SB_LINEUP:
        return VeA(m_arriba - pagina / 10);
    case SB_LINEDOWN:
        return VeA(m_arriba + pagina / 10);
    case SB_PAGEUP:
        return VeA(m_arriba - pagina);
    case SB_PAGEDOWN:
        return VeA(m_arriba + pagina);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return VeA(barra.nTrackPos);
    default:
        break;
    }
}

void CMarcoVentana::Rueda(int vueltas)
{
    VeA(m_arriba - vueltas * Interior(m_ventana).cy / 10 / WHEEL_DELTA);
}

void CMarcoVentana::TraeALaVista(HWND control)
{
    RECT sitio = {};
    GetWindowRect(control, &sitio);
    MapWindowPoints(nullptr, m_ventana, reinterpret_cast<LPPOINT>(&sitio), 2);
    const int holgura = 2 * (sitio.bottom - sitio.top); // a line of its group too
    const int alto = Interior(m_ventana).cy;
    if (sitio.top < holgura)
        VeA(m_arriba + sitio.top - holgura);
    else if (sitio.bottom + holgura / 2 > alto)
        VeA(m_arriba + sitio.bottom + holgura / 2 - alto);
}
