#pragma once

#include "platform/windows/win32.h"

#include <string>

/// Opens a file or folder with whatever the user has for it. False where nothing opens it.
/// \param esTexto  no program is made for its kind, so what reads texts reads it
bool AbreConElSistema(HWND ventana, const std::wstring& ruta, bool esTexto);
