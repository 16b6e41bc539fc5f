#pragma once

#include "platform/windows/win32.h"

#include <span>
#include <vector>

#include "platform/resource_form.h"

class CPieProceso;

/// Where the controls of a dialog's window stand: at the places of its template, which are in
/// units of the window's font, beside what makes the window wider than that, and scrolled where the
/// screen is lower.
class CMarcoVentana {
public:
    /// \param controles  windows of the template's controls, in its order
    /// \param pie        the line below the template; null for none
    CMarcoVentana(HWND ventana, const CPlantillaDialogo& plantilla, std::span<const HWND> controles,
                  CPieProceso* pie);

    /// Makes all places so much wider that no text is cut in the widths that the controls have now.
    void HazSitio();
    /// Gives the window the size of its template, or what of it the screen takes.
    void PonLados();
    /// Puts it in the middle of the screen, or of the window below it.
    void Centra(HWND debajo) const;
    /// Puts each control in its place.
    void Coloca();
    /// Least and greatest size that the user can give the window.
    void PonLimites(MINMAXINFO& limites) const;
    /// What the scroll bar was told to do.
    void Desplaza(WORD orden);
    void Rueda(int vueltas);
    void TraeALaVista(HWND control);
    /// Place of a control in pixels, in a window as wide as its template.
    RECT Pixeles(const CPlantillaControl& control) const;

private:
    SIZE Natural() const;
    SIZE ConBordes(SIZE interior) const;
    void VeA(int arriba);

    HWND m_ventana;
    const CPlantillaDialogo& m_plantilla;
    std::vector<HWND> m_controles;
    CPieProceso* m_pie;
    double m_anchura = 1; ///< of all places, against those of the template
    int m_arriba = 0;     ///< pixels of the template above the window's upper edge
    bool m_colocando = false;
};
