#include "platform/windows/dialog_units.h"

#include <string_view>

#include "platform/windows/text.h"

namespace {

/// Width of a letter, rounded as the system does it for a dialog, and height of a line.
SIZE UnidadBase(HWND dialogo)
{
    constexpr std::wstring_view kLetras = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    TEXTMETRICW letra = {};
    const LONG todas = Mide(GetWindow(dialogo, GW_CHILD), kLetras, &letra).cx;
    constexpr LONG kMedias = static_cast<LONG>(kLetras.size()) / 2;
    return {(todas / kMedias + 1) / 2, letra.tmHeight};
}

} // namespace

RECT EnPixeles(HWND dialogo, const RECT& unidades)
{
    const SIZE base = UnidadBase(dialogo);
    const auto ancho = [&](LONG x) { return MulDiv(x, base.cx, 4); };
    const auto alto = [&](LONG y) { return MulDiv(y, base.cy, 8); };
    return {ancho(unidades.left), alto(unidades.top), ancho(unidades.right), alto(unidades.bottom)};
}
