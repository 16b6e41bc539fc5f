#pragma once

#include "platform/windows/win32.h"

#include <string>

/// The help of a control in a small popup, for systems whose viewer of help files shows none.
/// It stays until the next key, which is meant for it, a click, or until another window is taken.
/// \param padre  the window that it stands before
/// \param donde  of the screen; the popup is kept within it
void MuestraGlobo(HWND padre, const std::wstring& texto, PuntoDelSistema donde, COLORREF fondo);
