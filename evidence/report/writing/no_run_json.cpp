#include "evidence/report/writing/batch_outputs.h"
#include "evidence/report/writing/run_json.h"

// In place of run_json.cpp and batch_json.cpp where the build found no library for it.

namespace informe {

const bool kHayJson = false;

std::string ProcesoEnJson(const CContenido& /*contenido*/)
{
    return {};
}

std::string LoteEnJson(const CResumenLote& /*resumen*/, const CFirma& /*firma*/)
{
    return {};
}

std::string CambiosEnJson(const CContenidoCambios& /*contenido*/)
{
    return {};
}

} // namespace informe
