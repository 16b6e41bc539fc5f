#pragma once

#include <string>
#include <vector>

#include "evidence/municipality_files.h"
#include "evidence/report/reading/states/municipality_state.h"

// A state of a municipality: an exchange file as the authority gives it (read layout) or as the way
// back writes it (written layout, the file R), or the six tables.

namespace informe {

enum class ClaseEstado { NoEs, Catastro, FicheroR, Tablas };

/// Why what has the name can be no state, whatever it holds: a pipe or a device gives its bytes but
/// once, and a state is looked at before it is read. Empty for nothing.
std::string ReparoDeTipo(const CString& nombre);

/// What a name stands for: a folder with tables, or what the first lines of a file look like; no
/// state where it isn't there. Raises CFileException where it can't be looked at.
ClaseEstado ClaseDeEstado(const CString& nombre);

/// A state, and what it was read from.
struct CEstadoLeido {
    ClaseEstado clase = ClaseEstado::NoEs;
    CString nombre = {}; ///< of the file, or of the folder
    CEstadoMunicipio estado = {};
    std::string reparo = {}; ///< why it is none, a sentence without its end; empty for nothing
};

/// Reads the state that a name stands for. What it lacks to be one, to be there at all, is told as
/// its `reparo`. Raises CFileException where it can't be read.
CEstadoLeido LeeEstado(const CString& nombre);
/// The same of tables, whatever their names.
/// \param carpeta  what the state is called by
CEstadoLeido LeeEstado(const CNombresTablas& tablas, const CString& carpeta);

/// The files that are read for a state.
std::vector<CString> FicherosDeEstado(const CString& nombre);

/// "fichero de Catastro", "fichero R", "tablas"
const char* NombreDe(ClaseEstado clase);

} // namespace informe
