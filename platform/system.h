#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
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
/// Columns of the terminal; nothing where it is none or doesn't tell.
std::optional<std::size_t> AnchoTerminal(std::FILE* fichero);

/// Shows a text, page by page, by the program that the user's PAGER names. False where it names
/// none or none that runs.
bool Pagina(std::string_view texto);

/// Gives the standard streams that the process came without a place to go; else the first files
/// that it opens would get what is printed. To be called before anything is opened.
void AbreFlujosCerrados();

/// Folder of the program that runs; empty where the system doesn't tell.
std::filesystem::path CarpetaPrograma();

/// Folder of the user's settings, with what the environment says about it.
std::filesystem::path CarpetaAjustes();

// The signals of a run: an interruption (Ctrl-C) asks it to stop; a second one before anybody
// looked at the first, or what a terminal or a system that goes down sends, asks the process to
// end. From `VigilaSenales` on both are noted and nothing more, so that the run can end in its own
// way; one more behind the wish to end kills at once. A signal that the process was started to pass
// over is passed over.
void VigilaSenales();
/// Tells whether an interruption came since the last question.
bool HuboInterrupcion();
/// Tells whether the process is to end.
bool HayQueAcabar();
/// Signals act as usual again. Where the process is to end, it does so, by the signal that came.
void OlvidaSenales();
/// Waits for a line typed at the terminal. False where the process is to end before one came.
bool EsperaLinea();

} // namespace sistema
