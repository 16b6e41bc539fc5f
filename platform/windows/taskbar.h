#pragma once

#include "platform/windows/win32.h"

#include <memory>

/// The progress of a window's run on its button in the taskbar.
class CBarraDeTareas {
public:
    explicit CBarraDeTareas(HWND ventana);

    void Pon(int porcentaje);
    void Quita();

private:
    struct CSuelta {
        void operator()(IUnknown* objeto) const { objeto->Release(); }
    };

    HWND m_ventana;
    std::unique_ptr<ITaskbarList3, CSuelta> m_lista; ///< null where the system has none
    bool m_puesta = false;
};
