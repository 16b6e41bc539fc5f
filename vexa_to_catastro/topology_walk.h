#pragma once

#include <span>

#include "platform/files/cfile.h"
#include "vexa_libs/entity.h"
#include "vexa_libs/topological_polygon.h"

/// Adds to `area` the areas, as stored, of the island records that stand at the file's position,
/// and leaves the file at the first record that is no island. Square metres, negative as a rule.
/// Raises CFileException where a read fails.
void SumaIslas(CFile* poligonos, double& area);

/// What the label of a polygon came to.
enum class Rotulo {
    Valido,
    Ajeno,       ///< no text, deleted, or of a code that says something else
    FueraDeFecha ///< it can't be read: the topology doesn't belong to this drawing
};

/// Reads the label of a polygon and looks at its code. `rotulo` stays as it was where it can't be
/// read. Raises CFileException where a read fails.
/// \param bin      the open drawing
/// \param codigos  those of a valid label
Rotulo LeeRotuloDeCodigo(const vexageo::CPoligonoTopologico& poligono, CFile* bin,
                         vexageo::CTexto<int>& rotulo, std::span<const char* const> codigos);
