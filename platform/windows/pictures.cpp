#include "platform/windows/pictures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

struct CPixel {
    std::uint8_t azul, verde, rojo, opaco;
};

/// Rows of pixels, the lowest one first.
struct CTrama {
    int ancho;
    int alto;
    const CPixel* pixeles;
};

/// The bitmap as it stands among the resources; nothing in it where there is none.
CTrama Recurso(UINT id)
{
    HRSRC recurso = FindResourceW(nullptr, MAKEINTRESOURCEW(id), RT_BITMAP);
    HGLOBAL bytes = recurso != nullptr ? LoadResource(nullptr, recurso) : nullptr;
    const auto* cabecera = static_cast<const BITMAPINFOHEADER*>(LockResource(bytes));
    if (cabecera == nullptr || cabecera->biBitCount != 32 || cabecera->biHeight <= 0)
        return {};
    const std::size_t mascaras =
        cabecera->biSize == sizeof *cabecera && cabecera->biCompression == BI_BITFIELDS ? 12 : 0;
    const auto* pixeles = reinterpret_cast<const std::uint8_t*>(cabecera) + cabecera->biSize;
    return {cabecera->biWidth, cabecera->biHeight,
            reinterpret_cast<const CPixel*>(pixeles + mascaras)};
}

/// The mean of what of the picture falls on a pixel of a smaller one, before a colour.
CPixel Media(const CTrama& trama, double x0, double x1, double y0, double y1, COLORREF fondo)
{
    double azul = 0;
    double verde = 0;
    double rojo = 0;
    double todo = 0;
    for (int y = static_cast<int>(y0); y < std::min<double>(y1, trama.alto); ++y) {
        const double alto = std::min<double>(y1, y + 1) - std::max<double>(y0, y);
        for (int x = static_cast<int>(x0); x < std::min<double>(x1, trama.ancho); ++x) {
            const CPixel& pixel = trama.pixeles[static_cast<std::ptrdiff_t>(y) * trama.ancho + x];
            const double peso = alto * (std::min<double>(x1, x + 1) - std::max<double>(x0, x));
            const double opaco = pixel.opaco / 255.0;
            azul += peso * (pixel.azul * opaco + GetBValue(fondo) * (1 - opaco));
            verde += peso * (pixel.verde * opaco + GetGValue(fondo) * (1 - opaco));
            rojo += peso * (pixel.rojo * opaco + GetRValue(fondo) * (1 - opaco));
            todo += peso;
        }
    }
    const auto byte = [todo](double suma) {
        return static_cast<std::uint8_t>(std::lround(todo > 0 ? suma / todo : 0));
    };
    return {byte(azul), byte(verde), byte(rojo), 255};
}

HBITMAP Reducida(const CTrama& trama, SIZE lados, COLORREF fondo)
{
    BITMAPINFO forma = {};
    forma.bmiHeader = {sizeof forma.bmiHeader, lados.cx, lados.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bytes = nullptr;
    HBITMAP imagen = CreateDIBSection(nullptr, &forma, DIB_RGB_COLORS, &bytes, nullptr, 0);
    if (imagen == nullptr)
        return nullptr;
    auto* pixel = static_cast<CPixel*>(bytes);
    const double x = static_cast<double>(trama.ancho) / lados.cx;
    const double y = static_cast<double>(trama.alto) / lados.cy;
    for (int fila = 0; fila < lados.cy; ++fila)
        for (int columna = 0; columna < lados.cx; ++columna)
            *pixel++ =
                Media(trama, columna * x, (columna + 1) * x, fila * y, (fila + 1) * y, fondo);
    return imagen;
}

} // namespace

HBITMAP CImagenes::Imagen(UINT id, SIZE sitio, COLORREF fondo)
{
    const CTrama trama = Recurso(id);
    if (trama.pixeles == nullptr || sitio.cx <= 0 || sitio.cy <= 0)
        return nullptr;
    const double escala = std::min(static_cast<double>(sitio.cx) / trama.ancho,
                                   static_cast<double>(sitio.cy) / trama.alto);
    const SIZE lados = {std::max(1L, std::lround(trama.ancho * escala)),
                        std::max(1L, std::lround(trama.alto * escala))};
    m_imagenes.emplace_back(Reducida(trama, lados, fondo));
    return m_imagenes.back().get();
}

HICON CImagenes::Icono(UINT id, int lado)
{
    auto* icono = static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                                IMAGE_ICON, lado, lado, LR_DEFAULTCOLOR));
    if (icono == nullptr)
        return nullptr;
    m_iconos.emplace_back(icono);
    return icono;
}
