#include "resources/resources.h"

#include "resources/dialog_templates.h"
#include "resources/drawings.h"
#include "resources/string_table.h"

namespace {

constexpr CRecursoVersion kVersion = {
    "Campiva", "Genera y lee base de datos de campiva", "1, 6, 6, 0", "(c) VexaSoft", "VexaSoft",
};

} // namespace

const CRecursos& RecursosDelPrograma()
{
    static const CRecursos kRecursos(TablaDeCadenas(), PlantillasDeDialogo(), DibujosDelPrograma(),
                                     kVersion);
    return kRecursos;
}
