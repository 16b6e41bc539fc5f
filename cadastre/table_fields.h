#pragma once

#include <cstddef>

// Numbers of the fields, from 0, that readers of table rows look at beside the records' own: what
// ties rows of different tables together.

namespace tabla {

inline constexpr std::size_t kMun = 1; // all tables have it

// Of parcels, subparcels and co-holders.
inline constexpr std::size_t kPolig = 3;
inline constexpr std::size_t kParcela = 4;

inline constexpr std::size_t kLetra = 5; // of subparcels

// Of parcels.
inline constexpr std::size_t kNumImputa = 8;
inline constexpr std::size_t kTit = 9;
inline constexpr std::size_t kPartici = 10;
inline constexpr std::size_t kParaje = 14;
inline constexpr std::size_t kCamposParcela = 15; // that a reader splits

// Of places.
inline constexpr std::size_t kParajeNumOrden = 3;
inline constexpr std::size_t kParajeNombre = 4;
inline constexpr std::size_t kCamposParaje = 5;

// Of co-holders.
inline constexpr std::size_t kCotitularNumOrden = 5;
inline constexpr std::size_t kCotitularTit = 6;
inline constexpr std::size_t kCotitularPartici = 7;

} // namespace tabla
