#include "platform/windows/dialog_font.h"

#include <cstdlib>
#include <string_view>

#include "platform/windows/text.h"

CLetra LetraDelSistema()
{
    NONCLIENTMETRICSW medidas = {};
    medidas.cbSize = sizeof medidas;
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof medidas, &medidas, 0) == 0)
        return {L"MS Shell Dlg 2"};
    const LOGFONTW& letra = medidas.lfMessageFont;
    HDC pantalla = GetDC(nullptr);
    const int puntos = MulDiv(std::abs(letra.lfHeight), 72, GetDeviceCaps(pantalla, LOGPIXELSY));
    ReleaseDC(nullptr, pantalla);
    return {letra.lfFaceName, static_cast<std::uint16_t>(puntos),
            static_cast<std::uint16_t>(letra.lfWeight)};
}

Letra HazLetra(const CLetra& letra, int puntosPorPulgada)
{
    constexpr int kPuntosTipograficos = 72;
    LOGFONTW pedida = {};
    pedida.lfHeight = -MulDiv(letra.puntos, puntosPorPulgada, kPuntosTipograficos);
    pedida.lfWeight = letra.grosor;
    pedida.lfCharSet = DEFAULT_CHARSET;
    letra.nombre.copy(pedida.lfFaceName, LF_FACESIZE - 1);
    return Letra(CreateFontIndirectW(&pedida));
}

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
