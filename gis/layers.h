#pragma once

#include <memory>

#include "gis/layer.h"
#include "gis/municipality_source.h"

// The layers of a municipality. Surfaces are square metres, coordinates metres. They ask the
// municipality for what they show when they are read first; it must outlive them.

using CCapaNueva = std::unique_ptr<CCapa>;

/// Names of the layers, and of their fields that a drawing is made from again.
namespace capa {
inline constexpr const char* kParcelas = "parcelas";
inline constexpr const char* kSubparcelas = "subparcelas";
inline constexpr const char* kPoligonos = "poligonos";
inline constexpr const char* kHojas = "hojas";
inline constexpr const char* kRotulos = "rotulos";
inline constexpr const char* kLineas = "lineas";
inline constexpr const char* kMensajes = "mensajes";

inline constexpr const char* kEntrada = "entrada"; ///< base name of the polygon's files
inline constexpr const char* kPoligono = "poligono";
inline constexpr const char* kParcela = "parcela";
inline constexpr const char* kLetra = "letra";
inline constexpr const char* kHoja = "hoja";
inline constexpr const char* kRotulo = "rotulo";
inline constexpr const char* kCodigo = "codigo";
inline constexpr const char* kBorrado = "borrado";
inline constexpr const char* kNumero = "numero"; ///< of the record
inline constexpr const char* kX = "rotulo_x";
inline constexpr const char* kY = "rotulo_y";
} // namespace capa

CCapaNueva CapaParcelas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
CCapaNueva CapaSubparcelas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
CCapaNueva CapaPoligonos(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
CCapaNueva CapaHojas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
/// All texts and points of the drawings, and all lines.
CCapaNueva CapaRotulos(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
CCapaNueva CapaLineas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
/// The log, each message with the parcel, subparcel or point that it speaks of.
CCapaNueva CapaMensajes(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia);
