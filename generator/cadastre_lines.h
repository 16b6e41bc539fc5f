#pragma once

#include <string>
#include <vector>

#include "generator/synthetic_municipality.h"

// The files of a synthetic municipality as the cadastre delivers them, line by line, without line
// ends.

namespace sintetico {

/// An exchange file of the read layout, by record type.
struct CLineasCatastro {
    std::vector<std::string> modulos;
    std::vector<std::string> parajes;
    std::vector<std::string> titulares; ///< all numbers' first holders, then the other ones
    std::vector<std::string> parcelas;
    std::vector<std::string> subparcelas; ///< land and built components

    /// All lines in the order of a delivered file: as above, but the places last.
    std::vector<std::string> Todas() const;
};

/// The lines of a municipality's exchange file, code page 1252.
CLineasCatastro LineasCatastro(const CMunicipioSintetico& municipio);

/// Puts some 25 deliberate faults into the lines, which raise most messages of the reading.
/// Needs a municipality of 200 parcels or more.
void EstropeaCatastro(CLineasCatastro& lineas);

/// A list of subparcels with holders; a parcel's subparcels are shared out among its holders.
std::vector<std::string> LineasLista(const CMunicipioSintetico& municipio);

/// Puts some faults into a list: conflicts of holders, repeated letters, surfaces of 0.
void EstropeaLista(std::vector<std::string>& lineas);

/// The lines of either input, a list or else an exchange file, with the faults if they are asked
/// for.
std::vector<std::string> LineasDeEntrada(const CMunicipioSintetico& municipio, bool lista,
                                         bool faltas);

/// Writes the lines with CR LF. False where the file can't be created; raises CFileException where
/// it can't be written.
bool GrabaLineas(const CString& nombre, const std::vector<std::string>& lineas);

} // namespace sintetico
