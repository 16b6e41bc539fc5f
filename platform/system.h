#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What the layer asks of the operating system beside files (system_files.h), and the standard
// library doesn't give: one source for each system, chosen by the build. Nothing outside this
// folder calls the system.

namespace sistema {

/// Writes a text to the standard error, with no memory but its own.
void EscribeError(std::string_view texto) noexcept;

/// Tells whether the stream is a terminal or a console.
bool EsTerminal(std::FILE* fichero);
/// Columns of the terminal; nothing where it is none or doesn't tell.
std::optional<std::size_t> AnchoTerminal(std::FILE* fichero);

/// Shows a text, page by page, by the program that the user's PAGER names, or where he has none by
/// the system's. False where PAGER is empty, and where there is no such program.
bool Pagina(std::string_view texto);

/// Readies the standard streams: bytes pass through them as they are, a console shows them as
/// UTF-8, and those that the process came without get a place to go; else the first files that it
/// opens would get what is printed. A file that grows past the user's limit is a failed write from
/// then on. To be called before anything is opened. What the library prints to a console stands
/// there when the program ends.
void PreparaFlujos();
/// A program in windows that has nothing more to print leaves the console of whoever started it,
/// whose end would be its own.
void DejaConsola();

/// Prints a text in UTF-8 at once, to a console in whole letters.
void Imprime(std::FILE* fichero, std::string_view texto);

/// The arguments of the program, its own name first, as `main` got them or, where the system knows
/// them by more letters than it hands to `main`, in UTF-8.
std::vector<std::string> Argumentos(int argc, const char* const* argv);

/// The next byte of the standard input, EOF at its end. What is typed at a console comes in UTF-8.
int LeeByte();

/// Leads a process that stands in the folder of its program, or in one of the system's, to its
/// user's documents: nobody who didn't ask for it wants files there.
void SalDeLaCarpetaDelPrograma();

/// File of the program that runs; empty where the system doesn't tell.
std::filesystem::path FicheroPrograma();

/// The program of the name that stands beside the one that runs, or else in a folder of the user's
/// path that is named from the root; empty for none.
std::filesystem::path BuscaPrograma(std::string_view nombre);
/// Runs a program with its arguments, without a window and without streams of its own, and waits
/// for its end, however long that takes. Gives its exit status; nothing where it can't be started
/// or was killed.
std::optional<int> Ejecuta(const std::filesystem::path& programa,
                           const std::vector<std::string>& argumentos);

/// Folder of the user's settings, with what the environment says about it.
std::filesystem::path CarpetaAjustes();

// The signals of a run. An interruption (Ctrl-C) asks the run to stop, where somebody can answer
// the question whether to. Elsewhere it asks the process to end, as do a second one before anybody
// asked about the first, and the signal of a terminal or system that goes down. A signal that the
// process was started to ignore stays ignored.

/// From now on signals are only noted, so that the run can end in its own way. One more signal
/// after the process was asked to end kills it at once.
/// \param seContesta  somebody is there to be asked
void VigilaSenales(bool seContesta);
/// Tells whether an interruption came since the last question.
bool HuboInterrupcion();
/// Tells whether the process is to end.
bool HayQueAcabar();
/// Asks the process to end, as the signal of a system that goes down does.
void PideAcabar();
/// Signals act as usual again. Where the process is to end, it does so, by the signal that came.
void OlvidaSenales();
/// From now on a write to a pipe that nobody reads any more fails, and doesn't end the process.
void AguantaTuberiaRota();
/// Such a write acts as usual again.
void SueltaTuberiaRota();
/// Waits for a line typed at the terminal. False where the process is to end before one came.
bool EsperaLinea();

} // namespace sistema

/// Unwinds a run when the process is asked to end, so that what it was writing is thrown away.
class CInterrumpido {};
