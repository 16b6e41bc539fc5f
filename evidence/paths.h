#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/files/cfile.h"
#include "platform/files/output_set.h"
#include "vexa_libs/ccadena.h"

// Names of files, taken apart and put together, and what stands behind them. A file that isn't
// there is an answer; whatever else keeps one from being looked at is a fault.

/// The name with another extension, which is given without its point.
CCadena ConExtension(const CString& nombre, const char* extension);
/// The extension in capitals, without its point; empty for none.
std::string ExtensionDe(const CString& nombre);
/// The name without folder and extension.
CString BaseDe(const CString& nombre);
/// A name in a folder, which may have its closing separator or not; empty is the current one.
CString EnCarpeta(const CString& carpeta, const CString& nombre);
/// Tells whether the system found no such file. Raises CFileException for any other error.
bool NoSeHalla(const CString& nombre, const sistema::Error& error);
/// Tells whether a regular file of that name is there. Raises CFileException where that can't be
/// told.
bool HayFichero(const CString& nombre);
/// A file's name alone, or a folder's as it is where it ends in its stroke.
CString NombreSinCarpeta(const CString& nombre);
/// When a file was written last; none where it isn't there. Raises CFileException where that can't
/// be told.
std::optional<std::filesystem::file_time_type> FechaDe(const CString& nombre);
/// What two such times may differ by where they mean the same: some disks tell the time no better.
inline constexpr std::chrono::seconds kHolguraDeFechas{2};
/// Opens a file for reading. False where it isn't there, or its name is empty; raises
/// CFileException where it can't be opened for any other reason, a lacking permission included.
/// \param modo  how to open it, beside for reading
bool AbreSiHay(CFile& fichero, const CString& nombre, UINT modo = 0);
/// Creates a file that takes its place with the others of the set. Raises CFileException.
void CreaSalida(CFile& fichero, const CString& nombre, CConjuntoSalidas& todas);
/// What a complaint says of a failed read or write: the file and the reason.
CString EnUnaLinea(const CFileException& fallo);
