#pragma once

#include "platform/cstring.h"
#include "platform/files/system_files.h"

/// Why the system refused a call on a file, in Spanish, code page 1252, whatever language the
/// system or the session speaks. A reason that hardly any file meets comes in the system's own
/// words.
CString RazonDelSistema(const sistema::Error& error);
