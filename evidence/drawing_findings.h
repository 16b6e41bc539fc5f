#pragma once

#include <cstdint>
#include <vector>

#include "evidence/drawn_polygon.h"

// What is wrong with the outlines of a drawing, for those who drew it. The translations go on over
// all of it; what they lose by it is said in the fault's text.

enum class ClaseFalta : std::uint8_t {
    // The boundary, of the outline or of one of its islands.
    TramoPerdido, ///< stretches can't be read
    NoEncierra,   ///< fewer than three points
    NoCierra,
    Cruza,        ///< it crosses itself
    Repasa,       ///< it takes a stretch of its way twice
    AreaDistinta, ///< the record says another one
    IslaPositiva,
    IslaRepetida, ///< the same ring twice: it is taken off twice
    // The label.
    OtraClase,
    SinRotulo,
    NoEsTexto,
    Borrado,
    CodigoAjeno,
    FueraDeFecha,
    NoSeLlega,
    CentroideDistinto, ///< the record's is not where the label stands
    RotuloFuera,
    RotuloEnIsla,
    RotuloEnBorde,
    SinNumero,  ///< of a parcel or polygon
    SinLetra,   ///< of a subparcel
    ParteFilas, ///< a tab or a line end in what is written of a subparcel or a sheet
    // Among the outlines.
    FueraDeParcela, ///< a subparcel that lies in none
    Repetido        ///< a number or letter in several outlines, of which the last one counts
};

struct CFalta {
    ClaseFalta clase;
    int isla = 0;               ///< of which island, from 1 as they stand; 0 for the outline
    vexageo::CPunto<int> donde; ///< where to look
    CString texto; ///< in Spanish, without capital and full stop; names the island, not the outline
};

/// The faults of a topology: those of each outline at its index, in the order of their kinds.
using CFaltasDeRecintos = std::vector<std::vector<CFalta>>;

/// Looks for all faults of a topology's outlines. Takes n log n steps for n points.
/// \param topologia  subparcels must have been read together with their parcels
CFaltasDeRecintos FaltasDe(const CTopologiaDibujada& topologia, ClaseTopologia que);

/// The texts, one behind the other with "; " between; empty for none.
CString TextoFaltas(const std::vector<CFalta>& faltas);
