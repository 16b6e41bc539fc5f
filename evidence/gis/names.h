#pragma once

// Names of the driver's options, of its layers and of their fields.

namespace opcion {

inline constexpr const char* kControlador = "Vexa"; ///< the driver, by GDAL's name of it
inline constexpr const char* kPrefijo = "VEXA:";    ///< of a name that no other driver is to take

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
inline constexpr const char* kSustituye = "SUSTITUYE";
inline constexpr const char* kGanan = "GANAN"; ///< one of the next three
inline constexpr const char* kNadie = "NADIE";
inline constexpr const char* kNumeros = "NUMEROS";
inline constexpr const char* kRotulos = "ROTULOS";
inline constexpr const char* kSimula = "SIMULA";
inline constexpr const char* kVacia = "VACIA"; ///< names of polygons, or
inline constexpr const char* kTodos = "TODOS";

} // namespace opcion

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
inline constexpr const char* kNumero = "numero";     ///< of the record
inline constexpr const char* kPosicion = "posicion"; ///< of an entity in its drawing
inline constexpr const char* kLinde = "linde";       ///< of a line: it bounds an outline
inline constexpr const char* kTexto = "texto";
inline constexpr const char* kClase = "clase"; ///< of a label: a text or a point
inline constexpr const char* kPunto = "punto";
inline constexpr const char* kCapa = "capa"; ///< of the outline that a label names
inline constexpr const char* kX = "rotulo_x";
inline constexpr const char* kY = "rotulo_y";
} // namespace capa
