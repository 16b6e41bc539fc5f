#pragma once

#include <cstddef>
#include <cstdint>

// How much a page tells. A run may leave a million messages and drawings of as many points; a page
// that a browser is to open at once, and a person to read, has the first of everything and the
// number of the rest. The sheet (--csv) and the features (--geojson) have all.

namespace informe::topes {

// The list of messages, which the page's script filters and sorts row by row. Of a longer log each
// number is worth showing, and 29 numbers times 150 rows are about as many.
inline constexpr std::size_t kLineas = 5000;
inline constexpr int kLineasDeCadaNumero = 150;

// Matters. The first ones explain nearly all messages; one matter names a few lines of its own, and
// keeps twice as many, as some of them aren't on the page.
inline constexpr std::size_t kAsuntos = 200;
inline constexpr std::size_t kMensajesDeAsunto = 24;
inline constexpr std::size_t kLineasDeAsunto = 12;
inline constexpr std::size_t kParcelasDeAsunto = 60;

// Tables of the page: a screen or two of each. Files that aren't there are named past it as well.
inline constexpr std::size_t kFicheros = 40;
inline constexpr std::size_t kFilasDibujo = 60;

// Jobs of a batch: as many municipalities as a country has, which a browser still sorts at once.
inline constexpr std::size_t kTrabajos = 10'000;

// Records without an explanation: enough to look one up.
inline constexpr std::size_t kEjemplos = 8;

// Types of lines that the reader passes over: there are a handful, but any two bytes may be one.
inline constexpr std::size_t kTiposNombrados = 12;

// Points of the maps: of all, and of one polygon. They make up nearly all of a page with drawings.
// Past the second bound a map leaves out subparcels, then parcels without messages. Once so many
// are drawn, polygons without messages get no map.
inline constexpr std::size_t kPuntosDePagina = 250'000;
inline constexpr std::size_t kPuntosDeMapa = 60'000;
inline constexpr std::size_t kPuntosSinMensajes = 50'000;

// Changes against another state: rows of each of their tables. The sheet (--cambios) has all.
inline constexpr std::size_t kFilasCambios = 150;
inline constexpr std::size_t kParcelasDeReparto = 12; // that a split or a join names

// Splits and joins. Below so many square metres a difference is none. Numbers follow one another
// where so many lie between them, as one may be a parcel's that stays. So often polygons are gone
// through for runs of numbers that others were taken out of. The steps of all polygons together
// take a tenth of a second.
inline constexpr std::int64_t kMetrosDeReparto = 20;
inline constexpr int kSaltoDeNumero = 2;
inline constexpr int kVecesDeReparto = 10;
inline constexpr std::int64_t kPasosDeReparto = 20'000'000;

// Of so many new parcels of a polygon, so many at a time are tried in any order, and so many square
// metres taken for rounding: with more of them some sum fits by chance. How many would is told by
// those that come as near as an eighth of a surface, and as so many square metres: of a hundred
// polygons without a split, three may be told to have one.
inline constexpr std::size_t kPiezasSueltas = 7;
inline constexpr std::size_t kPiezasDeUna = 3;
inline constexpr std::int64_t kHolguraDeSueltas = 1;
inline constexpr std::int64_t kBandaDeCerca = 8;
inline constexpr std::int64_t kBandaMenor = 10;
inline constexpr double kRepartosPorAzar = 0.03;

// Lines at the start of an input that tell a list of subparcels from an exchange file.
inline constexpr int kLineasParaConocer = 500;

} // namespace informe::topes
