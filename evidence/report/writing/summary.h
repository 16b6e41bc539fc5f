#pragma once

#include <string>

#include "evidence/report/writing/page_content.h"

namespace informe {

/// What the terminal is told, UTF-8: the log in a line, its messages by number, and where the page
/// is.
std::string Resumen(const CContenido& contenido, const CString& pagina);

} // namespace informe
