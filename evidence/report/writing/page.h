#pragma once

#include "evidence/report/writing/markup.h"
#include "evidence/report/writing/page_content.h"

namespace informe {

/// Writes the page, HTML in UTF-8, piece by piece. Throws what `escribe` throws.
void EscribePagina(const CContenido& contenido, const CEscribe& escribe);

} // namespace informe
