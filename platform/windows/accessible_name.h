#pragma once

#include "platform/windows/win32.h"

#include <string>

/// Tells the system how a window is called, for who has the screen read to him; without it a field
/// is called as the text in front of it, and a button as its caption.
void PonNombreAccesible(HWND ventana, const std::wstring& nombre);
