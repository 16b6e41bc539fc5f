#include "platform/windows/help_popup.h"

#include <algorithm>
#include <memory>

namespace {

constexpr const wchar_t* kClase = L"GloboAyuda";
constexpr int kLetrasDeAncho = 52;

/// What a popup shows.
struct CGlobo {
    std::wstring texto;
    COLORREF fondo;
    HFONT letra;
    int margen; ///< pixels around the text
};

void Pinta(HWND ventana, const CGlobo& globo)
{
    PAINTSTRUCT pintura = {};
    HDC lienzo = BeginPaint(ventana, &pintura);
    RECT sitio = {};
    GetClientRect(ventana, &sitio);
    HBRUSH pincel = CreateSolidBrush(globo.fondo);
    FillRect(lienzo, &sitio, pincel);
    DeleteObject(pincel);
    InflateRect(&sitio, -globo.margen, -globo.margen);
    SelectObject(lienzo, globo.letra);
    SetBkMode(lienzo, TRANSPARENT);
    SetTextColor(lienzo, RGB(0, 0, 0)); // on its pale background in a dark theme too
    DrawTextW(lienzo, globo.texto.c_str(), -1, &sitio, DT_WORDBREAK | DT_NOPREFIX);
    EndPaint(ventana, &pintura);
}

LRESULT CALLBACK Procedimiento(HWND ventana, UINT mensaje, WPARAM wParam, LPARAM lParam)
{
    auto* globo = reinterpret_cast<CGlobo*>(GetWindowLongPtrW(ventana, GWLP_USERDATA));
    switch (mensaje) {
    case WM_PAINT:
        if (globo == nullptr)
            break;
        Pinta(ventana, *globo);
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE)
            break;
        [[fallthrough]];
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN: // not while it is being activated or left
        PostMessageW(ventana, WM_CLOSE, 0, 0);
        return 0;
    case WM_NCDESTROY:
        SetWindowLongPtrW(ventana, GWLP_USERDATA, 0);
        delete globo;
        break;
    default:
        break;
    }
    return DefWindowProcW(ventana, mensaje, wParam, lParam);
}

void RegistraClase()
{
    WNDCLASSEXW clase = {};
    clase.cbSize = sizeof clase;
    clase.lpfnWndProc = Procedimiento;
    clase.hInstance = GetModuleHandleW(nullptr);
    clase.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    clase.lpszClassName = kClase;
    RegisterClassExW(&clase); // a second time changes nothing
}

/// The size that the text takes in lines of a readable length, and its margin.
SIZE Mide(HWND padre, CGlobo& globo)
{
    HDC lienzo = GetDC(padre);
    HGDIOBJ antes = SelectObject(lienzo, globo.letra);
    TEXTMETRICW letra = {};
    GetTextMetricsW(lienzo, &letra);
    RECT sitio = {0, 0, kLetrasDeAncho * letra.tmAveCharWidth, 0};
    DrawTextW(lienzo, globo.texto.c_str(), -1, &sitio, DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
    SelectObject(lienzo, antes);
    ReleaseDC(padre, lienzo);
    globo.margen = letra.tmAveCharWidth;
    const int alrededor = 2 * (globo.margen + 1); // and the border
    return {sitio.right + alrededor, sitio.bottom + alrededor};
}

PuntoDelSistema DentroDeLaPantalla(PuntoDelSistema donde, SIZE lados)
{
    MONITORINFO pantalla = {};
    pantalla.cbSize = sizeof pantalla;
    GetMonitorInfoW(MonitorFromPoint(donde, MONITOR_DEFAULTTONEAREST), &pantalla);
    const RECT& area = pantalla.rcWork;
    return {std::clamp(donde.x, area.left, std::max(area.left, area.right - lados.cx)),
            std::clamp(donde.y, area.top, std::max(area.top, area.bottom - lados.cy))};
}

} // namespace

void MuestraGlobo(HWND padre, const std::wstring& texto, PuntoDelSistema donde, COLORREF fondo)
{
    RegistraClase();
    auto* letra = reinterpret_cast<HFONT>(SendMessageW(padre, WM_GETFONT, 0, 0));
    auto globo = std::make_unique<CGlobo>(CGlobo{texto, fondo, letra, 0});
    const SIZE lados = Mide(padre, *globo);
    const PuntoDelSistema esquina = DentroDeLaPantalla(donde, lados);
    // Its text is also its name, for who has the screen read.
    HWND ventana = CreateWindowExW(WS_EX_TOOLWINDOW, kClase, texto.c_str(), WS_POPUP | WS_BORDER,
                                   esquina.x, esquina.y, lados.cx, lados.cy, padre, nullptr,
                                   GetModuleHandleW(nullptr), nullptr);
    if (ventana == nullptr)
        return;
    SetWindowLongPtrW(ventana, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(globo.release()));
    ShowWindow(ventana, SW_SHOW);
}
