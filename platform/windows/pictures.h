#pragma once

#include "platform/windows/win32.h"

#include <memory>
#include <vector>

/// Pictures and icons of the program's resources, which the build makes from its drawings, for as
/// long as a window shows them.
class CImagenes {
public:
    /// The picture in the largest size that keeps its proportions within the place, before a
    /// colour.
    /// \return null where the program has no such picture
    HBITMAP Imagen(UINT id, SIZE sitio, COLORREF fondo);
    /// The icon of so many pixels a side. Null where the program has none.
    HICON Icono(UINT id, int lado);

private:
    struct CSuelta {
        void operator()(HBITMAP imagen) const { DeleteObject(imagen); }
        void operator()(HICON icono) const { DestroyIcon(icono); }
    };
    std::vector<std::unique_ptr<HBITMAP__, CSuelta>> m_imagenes;
    std::vector<std::unique_ptr<HICON__, CSuelta>> m_iconos;
};
