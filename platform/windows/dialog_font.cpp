#include "platform/windows/dialog_font.h"

#include <cstdlib>

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
