#pragma once

#include <string>

#include "evidence/report/writing/page_content.h"

namespace informe {

/// The build found the library that it takes; without it `ProcesoEnJson` gives nothing.
extern const bool kHayJson;

/// What a page tells, for programs: docs/report.schema.json says in which form.
std::string ProcesoEnJson(const CContenido& contenido);
std::string CambiosEnJson(const CContenidoCambios& contenido);

} // namespace informe
