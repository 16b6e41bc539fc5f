#include "resources/program_resources.h"

namespace {

constexpr CFicherosPrograma kFicheros = {
    .manual = "manual/inicio.html",
    .informe = "campiva-informe",
    .textosDeControles = "Ayuda IDC.txt",
};

} // namespace

const CRecursos& RecursosDelPrograma()
{
    static const CRecursos kRecursos = {TablaDeCadenas(), PlantillasDeDialogo(),
                                        DibujosDelPrograma(), BloqueDeVersion(), kFicheros};
    return kRecursos;
}
