#pragma once

#include "generator/synthetic_municipality.h"

// The drawings of a synthetic municipality: what the drawing work leaves for the translations back.

namespace sintetico {

/// Writes into the folder, which must be there: for each polygon NNN.BIN with NNN.PAR, NNN.SUB and
/// NNN.POL; the sheets, ortos.BIN and ortos.TOP; and the list, poligonos.txt. False where a file
/// can't be created; raises CFileException where one can't be written. Files that are done stay.
bool GrabaDibujos(const CString& carpeta, const CMunicipioSintetico& municipio);

/// Takes the drawings of a municipality of 200 parcels or more out of agreement with its tables:
/// labels, letters, surfaces, subparcels that are missing or too many.
void DesacuerdaDibujos(CMunicipioSintetico& municipio);

/// Spoils written drawings: the .PAR of polygon 3 and the .SUB of polygons 3 and 4 point past their
/// drawings, and the list has an entry without files and one without a number. Results as above.
bool EstropeaDibujos(const CString& carpeta, const CMunicipioSintetico& municipio);

} // namespace sintetico
