#pragma once

#include <optional>
#include <string>

#include <wx/string.h>

/// Content of a file inside a compiled help file. Nothing where it isn't there or the help file
/// can't be read.
std::optional<std::string> LeeDeLaAyuda(const wxString& ayuda, const wxString& nombre);

/// Lets the library's help window open what stands inside a help file, by names of the form
/// "file:path#chm:name". To be called once: each call adds a handler more.
void RegistraFicherosDeAyuda();
