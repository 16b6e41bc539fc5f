#pragma once

#include "platform/windows/win32.h"

/// A place in dialog units as pixels, by the font that the dialog's controls have now. The system's
/// own call goes by the one that the dialog was made with, also after it came to a screen of
/// another scale.
RECT EnPixeles(HWND dialogo, const RECT& unidades);
