#pragma once

#include <string>

#include "evidence/report/reading/report_options.h"
#include "evidence/report/reading/run_files.h"
#include "evidence/report/reading/states/read_state.h"

// What a page is called.

namespace informe {

/// The page's name, the usual one where nobody says another; empty for no page, where something
/// else is to go down a pipe.
CString PaginaDe(const COpciones& opciones, const CString& usual);
/// The page of a log, beside it. The log of Infograf is the way back's as well, so its page has a
/// name of its own.
CString PaginaUsual(const CFicheros& ficheros);
/// The page of changes: beside a file, and in the folder of tables.
CString PaginaUsualDeCambios(const CString& estado, ClaseEstado clase);

/// Why the reports of all logs of a line can't be written together; empty for nothing. Raises no
/// CFileException.
std::string ReparoDeRegistros(const COpciones& opciones);

} // namespace informe
