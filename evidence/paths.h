#pragma once

#include <string>

#include "vexa_libs/ccadena.h"

// Names of files, taken apart and put together.

/// The name with another extension, which is given without its point.
CCadena ConExtension(const CString& nombre, const char* extension);
/// The extension in capitals, without its point; empty for none.
std::string ExtensionDe(const CString& nombre);
/// The name without folder and extension.
CString BaseDe(const CString& nombre);
/// A name in a folder, which may have its closing separator or not; empty is the current one.
CString EnCarpeta(const CString& carpeta, const CString& nombre);
/// Tells whether a regular file of that name is there.
bool HayFichero(const CString& nombre);
