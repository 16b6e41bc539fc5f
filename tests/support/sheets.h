#pragma once

#include <utility>
#include <vector>

#include "generator/drawing_files.h"
#include "generator/synthetic_municipality.h"
#include "tests/support/files.h"

/// Draws orthophoto sheets, and beside them the one parcel that a made municipality has at least.
inline bool GrabaHojas(const CCarpetaPrueba& carpeta, std::vector<sintetico::CHoja> hojas)
{
    sintetico::CMunicipioSintetico municipio;
    municipio.parcelas = sintetico::Genera({.parcelas = 1}, 1).parcelas;
    municipio.parcelas.front().rotulo = "x"; // no parcel's number
    municipio.hojas = std::move(hojas);
    return sintetico::GrabaDibujos(carpeta.Ruta().string(), municipio);
}
