#include "platform/windows/dialog_units.h"

#include <string_view>

namespace {

/// Width of a letter, rounded as the system does it for a dialog, and height of a line.
SIZE UnidadBase(HWND dialogo)
{
    constexpr std::wstring_view kLetras = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    HWND control = GetWindow(dialogo, GW_CHILD);
    HDC lienzo = GetDC(control);
    SelectObject(lienzo, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    SIZE todas = {};
    GetTextExtentPoint32W(lienzo, kLetras.data(), static_cast<int>(kLetras.size()), &todas);
    TEXTMETRICW medidas = {};
    GetTextMetricsW(lienzo, &medidas);
    ReleaseDC(control, lienzo);
    constexpr LONG kMedias = static_cast<LONG>(kLetras.size()) / 2;
    return {(todas.cx / kMedias + 1) / 2, medidas.tmHeight};
}

} // namespace

RECT EnPixeles(HWND dialogo, const RECT& unidades)
{
    const SIZE base = UnidadBase(dialogo);
    const auto ancho = [&](LONG x) { return MulDiv(x, base.cx, 4); };
    const auto alto = [&](LONG y) { return MulDiv(y, base.cy, 8); };
    return {ancho(unidades.left), alto(unidades.top), ancho(unidades.right), alto(unidades.bottom)};
}
