#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

// What the layer asks of the operating system and the standard library doesn't give: one source for
// each system, chosen by the build. Nothing outside this folder calls the system.

namespace sistema {

/// What may stand in front of a file's name in its path.
extern const std::string_view kSeparadores;

/// The path that a name of the program stands for.
std::filesystem::path Ruta(std::string_view nombre);
/// The name by which the program knows a path.
std::string Nombre(const std::filesystem::path& ruta);

/// The files opened here are binary and have no buffer of their own. Null on failure.
std::FILE* AbreLectura(const std::filesystem::path& ruta);
std::FILE* AbreEscritura(const std::filesystem::path& ruta); ///< empties a file that is there
std::FILE* CreaNuevo(const std::filesystem::path& ruta);     ///< fails where the name is taken

/// Tells whether the process may change the content of the file that is there.
bool PuedeEscribir(const std::filesystem::path& ruta);

/// Length in bytes of an open file, 0 for what has none (a pipe).
std::uint64_t Longitud(std::FILE* fichero);
bool Posiciona(std::FILE* fichero, std::uint64_t posicion);

/// Gives the open file the owner and the permissions of `modelo`, as far as the system allows it.
void CopiaPermisos(std::FILE* fichero, const std::filesystem::path& modelo);

/// Waits until what was written stands on the disk. False if it couldn't be brought there.
bool Asegura(std::FILE* fichero);

bool EsTerminal(std::FILE* fichero);

/// Gives the standard streams that the process came without a place to go; else the first files
/// that it opens would get what is printed. To be called before anything is opened.
void AbreFlujosCerrados();

/// File of the program that runs; empty where the system doesn't tell.
std::filesystem::path FicheroPrograma();

/// Folder of the user's settings, with what the environment says about it.
std::filesystem::path CarpetaAjustes();

/// From here on the first interruption (Ctrl-C) is noted and nothing more; one that comes before it
/// was looked at ends the process as usual.
void VigilaInterrupcion();
/// Tells whether an interruption came since the last question.
bool HuboInterrupcion();
/// Interruptions end the process again.
void OlvidaInterrupcion();

} // namespace sistema
