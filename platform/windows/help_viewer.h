#pragma once

#include "platform/windows/win32.h"

#include <filesystem>
#include <string>

struct HH_POPUP;

/// Tells whether the viewer's pages of a file would be empty: it shows none of a file that came
/// from another machine, or is on one.
bool EstaBloqueado(const std::filesystem::path& fichero);

/// The system's viewer of help files. It is loaded when it is asked for the first time and stays
/// so; where it can't be reached it shows nothing, and nobody is told.
class CVisorAyuda {
public:
    CVisorAyuda() = default;
    CVisorAyuda(const CVisorAyuda&) = delete;
    CVisorAyuda& operator=(const CVisorAyuda&) = delete;
    /// Closes the viewer's windows.
    ~CVisorAyuda();

    /// Shows a help file on its default topic. False where nothing could be shown; so with the
    /// next.
    bool MuestraTema(HWND ventana, const std::wstring& fichero);
    /// Shows the text of a control in a popup.
    /// \param fichero  the help file; `interior` is the file inside it, behind what parts the two
    bool MuestraGlobo(HWND control, const std::wstring& fichero, const std::wstring& interior,
                      const HH_POPUP& popup);

private:
    using Funcion = HWND(WINAPI*)(HWND, const char*, UINT, DWORD_PTR);

    bool Carga();
    Funcion m_funcion = nullptr; ///< null where the viewer can't be reached
    bool m_buscado = false;
};
