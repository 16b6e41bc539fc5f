#pragma once

#include <vector>

#include "evidence/municipality_files.h"

namespace informe {

/// The entries of a list by the polygon whose drawings they are, the polygons in the order of their
/// first ones. A drawing that is named twice is one: its outlines are no pieces of anything. Raises
/// CFileException where a file can't be looked at.
std::vector<std::vector<CString>> EntradasPorPoligono(const CListaPoligonos& lista);

} // namespace informe
