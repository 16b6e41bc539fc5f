#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/cfile.h"
#include "vexa_libs/entity.h"
#include "vexa_libs/topological_polygon.h"

// The writers of drawings and topologies, for the programs that make them.

namespace vexageo {

/// A .BIN file in the making. Its topologies name an entity by the position that it gets here,
/// counted from 1, so they are composed while the drawing is, and written behind it.
class CEscritorDibujo {
public:
    /// Opens the file, when the entities are there or before. False, with nothing changed on disk,
    /// where it can't be created. \param conjunto  the outputs that it takes its place with;
    /// without it `Cierra` puts it there
    bool Abre(const CString& nombre, CFileException* fallo = nullptr,
              CConjuntoSalidas* conjunto = nullptr);

    /// Adds a copy of an entity and gives its position; 0 where the drawing has no room left, as
    /// positions have 31 bits.
    int Pon(const CEntidadVexa<int>& entidad);
    /// The same with a text at a point.
    int Rotulo(const CString& codigo, const CString& texto, const CPunto<int>& donde);
    /// The same with a line. One that closes repeats its first point at its end.
    int Linea(const CString& codigo, std::vector<CPunto<int>> puntos);

    /// Writes the head, which counts the entities, and all of them. Raises CFileException, with no
    /// file left behind.
    void Cierra();

private:
    CFile m_bin;
    int m_posicion = CCabeceraDibujo::kBytes; // where the next entity begins
    std::vector<std::unique_ptr<CEntidadVexa<int>>> m_entidades;
};

/// The record of a boundary: its stretches, its extent, and the area that its points enclose, which
/// is negative for an island.
/// \param clase  CPoligonoTopologico::kParcela or kIsla
CPoligonoTopologico NuevoPoligono(int numero, std::int16_t clase,
                                  const std::vector<CPunto<int>>& contorno,
                                  const std::vector<int>& tramos);

/// Gives the record its label: the position of the text, and where it stands. With a position of 0
/// the record has no label, and the point is the one inside it alone.
void PonRotulo(CPoligonoTopologico& poligono, int posicion, const CPunto<int>& donde);

} // namespace vexageo
