#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/files/cfile.h"
#include "vexa_libs/entity.h"
#include "vexa_libs/topological_polygon.h"

// The writers of drawings and topologies, for the programs that make them.

namespace vexageo {

/// A .BIN file in the making. Its topologies name an entity by the position that it gets here,
/// counted from 1, so they are composed while the drawing is, and written behind it.
class CEscritorDibujo {
public:
    /// Opens the file; entities may be added before and after that. False, with nothing changed on
    /// disk, where it can't be created. Raises CFileException as CFile::Open does.
    /// \param conjunto  the outputs that it takes its place with; without it `Cierra` puts it there
    bool Abre(const CString& nombre, CFileException* fallo = nullptr,
              CConjuntoSalidas* conjunto = nullptr);

    /// Begins with the bytes of a drawing, head included: its entities keep their places, and what
    /// is added stands behind them. Before anything is added. False, with nothing changed, where
    /// they have no head or leave no room.
    bool Sobre(std::string bytes);
    /// Marks an entity of those bytes as deleted, by its position from 1, where a whole one stands.
    void Borra(int posicion);

    /// Adds a copy of an entity and gives its position in bytes, from 1; 0, with nothing added,
    /// where the drawing has no room left, as positions have 31 bits.
    int Pon(const CEntidadVexa<int>& entidad);
    /// The same with a text, code page 1252, at a point in hundredths of a metre.
    int Rotulo(const CString& codigo, const CString& texto, const CPunto<int>& donde);
    /// The same with a line. One that closes repeats its first point at its end.
    int Linea(const CString& codigo, std::vector<CPunto<int>> puntos);

    /// Writes the head, which counts the entities, and all of them, and closes the file. The writer
    /// is empty then. Raises CFileException, with what stood there before as it was.
    void Cierra();

private:
    CFile m_bin;
    std::string m_antes;                      // what the drawing begins with; empty for a new one
    int m_posicion = CCabeceraDibujo::kBytes; // where the next entity begins
    std::vector<std::unique_ptr<CEntidadVexa<int>>> m_entidades;
};

/// The record of a boundary: its stretches, its extent, and the area that its points enclose, in
/// square metres, which is negative for an island.
/// \param clase     CPoligonoTopologico::kParcela or kIsla
/// \param contorno  its points, hundredths of a metre
/// \param tramos    positions of its lines in the drawing, negative for one that runs the other way
CPoligonoTopologico NuevoPoligono(int numero, std::int16_t clase,
                                  const std::vector<CPunto<int>>& contorno,
                                  const std::vector<int>& tramos);

/// Gives the record its label: the position of the text, and where it stands. With a position of 0
/// the record has no label, and the point is the one inside it alone.
void PonRotulo(CPoligonoTopologico& poligono, int posicion, const CPunto<int>& donde);

} // namespace vexageo
