#pragma once

#include "platform/resource_form.h"

/// The program's strings, dialog templates, drawings and version block, handed to the application
/// at its start.
const CRecursos& RecursosDelPrograma();

// What they are made of, a source for each part.

/// All strings with their fixed numbers, the messages of the catalogue among them.
std::span<const CCadenaRecurso> TablaDeCadenas();
/// The templates of all dialogs.
std::span<const CPlantillaDialogo> PlantillasDeDialogo();
/// The program's pictures and icons as SVG.
std::span<const CDibujoRecurso> DibujosDelPrograma();
/// The build tells what stands in it.
const CRecursoVersion& BloqueDeVersion();
