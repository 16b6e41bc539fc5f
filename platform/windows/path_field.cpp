#include "platform/windows/path_field.h"

#include <memory>
#include <string>

#include "platform/windows/text.h"

namespace {

constexpr UINT_PTR kSubclase = 1;

/// What a field has besides what the system's has.
struct CMas {
    HWND globo;        ///< shows the whole path under the mouse
    std::wstring ruta; ///< that it shows
};

bool Cabe(HWND campo, const std::wstring& texto)
{
    RECT sitio = {};
    SendMessageW(campo, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&sitio));
    return Mide(campo, texto).cx <= sitio.right - sitio.left;
}

/// The first of the files that were dropped.
std::wstring Soltado(HDROP ficheros)
{
    std::wstring ruta(std::size_t{DragQueryFileW(ficheros, 0, nullptr, 0)} + 1, L'\0');
    ruta.resize(DragQueryFileW(ficheros, 0, ruta.data(), static_cast<UINT>(ruta.size())));
    return ruta;
}

void DaRuta(HWND campo, CMas& mas, NMTTDISPINFOW& pregunta)
{
    mas.ruta = TextoDe(campo);
    if (Cabe(campo, mas.ruta))
        mas.ruta.clear(); // then nothing shows
    pregunta.lpszText = mas.ruta.data();
}

LRESULT CALLBACK Procedimiento(HWND campo, UINT mensaje, WPARAM wParam, LPARAM lParam,
                               UINT_PTR /*subclase*/, DWORD_PTR dato)
{
    auto* mas = reinterpret_cast<CMas*>(dato);
    switch (mensaje) {
    case WM_DROPFILES: {
        auto* ficheros = reinterpret_cast<HDROP>(wParam);
        SetWindowTextW(campo, Soltado(ficheros).c_str());
        DragFinish(ficheros);
        MuestraFinal(campo);
        return 0;
    }
    case WM_KILLFOCUS: {
        const LRESULT resultado = DefSubclassProc(campo, mensaje, wParam, lParam);
        // Who only looks at another program for a moment finds caret and mark as they were.
        if (wParam != 0)
            MuestraFinal(campo);
        return resultado;
    }
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->code == TTN_GETDISPINFOW)
            DaRuta(campo, *mas, *reinterpret_cast<NMTTDISPINFOW*>(lParam));
        break;
    case WM_NCDESTROY:
        RemoveWindowSubclass(campo, Procedimiento, kSubclase);
        DestroyWindow(mas->globo);
        delete mas;
        break;
    default:
        break;
    }
    return DefSubclassProc(campo, mensaje, wParam, lParam);
}

HWND CreaGlobo(HWND campo)
{
    constexpr int kAncho = 600; // a longer path goes on in the next line
    HWND globo = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX,
                                 0, 0, 0, 0, campo, nullptr, GetModuleHandleW(nullptr), nullptr);
    TTTOOLINFOW que = {};
    que.cbSize = sizeof que;
    que.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    que.hwnd = campo;
    que.uId = reinterpret_cast<UINT_PTR>(campo);
    que.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(globo, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&que));
    SendMessageW(globo, TTM_SETMAXTIPWIDTH, 0, kAncho);
    return globo;
}

} // namespace

void HazCampoRuta(HWND campo)
{
    SendMessageW(campo, EM_LIMITTEXT, 0, 0); // a path may be longer than the field's own limit
    auto mas = std::make_unique<CMas>(CMas{CreaGlobo(campo), {}});
    if (SetWindowSubclass(campo, Procedimiento, kSubclase,
                          reinterpret_cast<DWORD_PTR>(mas.get())) != 0)
        static_cast<void>(mas.release()); // the field's from here on
}

void VeAlFinal(HWND campo)
{
    const auto fin = static_cast<WPARAM>(GetWindowTextLengthW(campo));
    SendMessageW(campo, EM_SETSEL, fin, static_cast<LPARAM>(fin));
    SendMessageW(campo, EM_SCROLLCARET, 0, 0);
}

void MuestraFinal(HWND campo)
{
    if (GetFocus() != campo)
        VeAlFinal(campo);
}
