#pragma once

#include <wx/window.h>

#include "platform/resource_form.h"

/// Pixels of a dialog unit in a window: a quarter of its font's mean width by an eighth of its
/// height, as in the templates' own system. Where the theme's widgets are larger than there, both
/// units grow for the whole dialog, so that nothing is cut and the template's proportions stay. On
/// a screen that is too low for that the rows come closer again.
class CUnidades {
public:
    explicit CUnidades(const wxWindow& ventana);

    /// Grows the units so far that a widget shows whole in its control's place.
    void HazSitio(const CPlantillaControl& control, const wxSize& necesario);

    /// The same with rows closer together by a hundredth.
    CUnidades MasJuntas() const;

    wxSize Pixeles(int ancho, int alto) const;
    /// The control's place. A widget that is lower or higher than it is set at its middle.
    /// \param sobra  pixels that the window is wider than its template: buttons keep their distance
    ///               from the right edge, what holds a text or a bar grows
    wxRect Sitio(const CPlantillaControl& control, const wxSize& necesario, int sobra) const;

private:
    double m_x;
    double m_y;
};
