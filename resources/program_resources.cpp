#include "resources/program_resources.h"

#include "resources/dialog_templates.h"
#include "resources/drawings.h"
#include "resources/string_table.h"
#include "resources/version_block.h"

namespace {

constexpr CFicherosPrograma kFicheros = {
    .manual = "manual/inicio.html",
    .informe = "campiva-informe",
    .textosDeControles = "Ayuda IDC.txt",
};

} // namespace

const CRecursos& RecursosDelPrograma()
{
    static const CRecursos kRecursos(TablaDeCadenas(), PlantillasDeDialogo(), DibujosDelPrograma(),
                                     BloqueDeVersion(), kFicheros);
    return kRecursos;
}
