#include "platform/desktop/layout.h"

#include <algorithm>
#include <cmath>

#include "platform/window_layout.h"

namespace {

using enum ClaseControl;

// Units between the tops of two rows of the templates are 17 at least, so a widget may take two
// more than its control's 14 and keep off the next one.
constexpr int kHolgura = 2;

bool CreceAncho(ClaseControl clase)
{
    return SePulsa(clase) || clase == Texto;
}

bool CreceAlto(ClaseControl clase)
{
    return SePulsa(clase) || clase == Edicion;
}

/// Widgets that fill their place in height; all others keep their own height.
bool LlenaAlto(ClaseControl clase)
{
    return clase == Grupo || clase == Imagen || clase == Icono || clase == Progreso;
}

} // namespace

CUnidades::CUnidades(const wxWindow& ventana)
    : m_x(ventana.GetCharWidth() / 4.0), m_y(ventana.GetCharHeight() / 8.0)
{
}

void CUnidades::HazSitio(const CPlantillaControl& control, const wxSize& necesario)
{
    if (CreceAncho(control.clase) && control.ancho > 0)
        m_x = std::max(m_x, necesario.x / static_cast<double>(control.ancho));
    if (CreceAlto(control.clase) && control.alto > 0)
        m_y = std::max(m_y, necesario.y / static_cast<double>(control.alto + kHolgura));
}

CUnidades CUnidades::MasJuntas() const
{
    constexpr double kPaso = 0.99;
    CUnidades juntas = *this;
    juntas.m_y *= kPaso;
    return juntas;
}

wxSize CUnidades::Pixeles(int ancho, int alto) const
{
    return {static_cast<int>(std::lround(ancho * m_x)), static_cast<int>(std::lround(alto * m_y))};
}

wxRect CUnidades::Sitio(const CPlantillaControl& control, const wxSize& necesario, int sobra) const
{
    const wxSize origen = Pixeles(control.x, control.y);
    const wxSize fin = Pixeles(control.x + control.ancho, control.y + control.alto);
    wxRect sitio(wxPoint(origen.x, origen.y), fin - origen);
    const AlEnsanchar cambio = QueHaceAlEnsanchar(control);
    sitio.x += cambio == AlEnsanchar::SeDesplaza ? sobra : 0;
    sitio.width += cambio == AlEnsanchar::Crece ? sobra : 0;
    if (control.clase == Lista)
        sitio.height = necesario.y; // the template's height counts the list dropped down
    else if (!LlenaAlto(control.clase) && necesario.y > 0) {
        const int alto =
            CreceAlto(control.clase) ? std::max(necesario.y, sitio.height) : necesario.y;
        sitio.y += (sitio.height - alto) / 2;
        sitio.height = alto;
    }
    return sitio;
}
