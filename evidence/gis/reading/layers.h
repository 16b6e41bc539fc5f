#pragma once

#include <memory>

#include "evidence/gis/names.h"
#include "evidence/gis/reading/layer.h"
#include "evidence/gis/reading/municipality_source.h"

// The layers of a municipality. Surfaces are square metres, coordinates metres. They ask the
// municipality for what they show when they are read first, so it must be there then.

using CCapaNueva = std::unique_ptr<CCapa>;

CCapaNueva CapaParcelas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
CCapaNueva CapaSubparcelas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
CCapaNueva CapaPoligonos(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
CCapaNueva CapaHojas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
/// All texts and points of the drawings, and all lines.
CCapaNueva CapaRotulos(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
CCapaNueva CapaLineas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
/// The log, each message with the parcel, subparcel or point that it speaks of.
CCapaNueva CapaMensajes(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
