#pragma once

// Names of the driver's options, and of what it keeps beside the layers.

namespace opcion {

inline constexpr const char* kPrefijo = "VEXA:"; ///< of a name that no other driver is to take

// To open.
inline constexpr const char* kTablas = "TABLAS";
inline constexpr const char* kOrtos = "ORTOS"; ///< to write as well
inline constexpr const char* kRegistro = "REGISTRO";
inline constexpr const char* kReferencia = "SRS";

// To write.
inline constexpr const char* kCabecera = "CABECERA"; ///< the list's first line; in the metadata too
inline constexpr const char* kGer = "GER";
inline constexpr const char* kMun = "MUN";
inline constexpr const char* kPiezas = "PIEZAS";
inline constexpr const char* kInvalidos = "INVALIDOS";
inline constexpr const char* kArcos = "TOLERANCIA_ARCOS";

} // namespace opcion
