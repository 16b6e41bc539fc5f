#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

#include "platform/cstring.h"
#include "platform/types.h"

// The rows of the table files. Numbers of the fields, from 0, that readers of table rows look at
// beside the records' own: what ties rows of different tables together.

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

inline constexpr std::size_t kCampos = 35; // of the widest table

} // namespace tabla

/// Takes a row: as it stands, and its fields; those that it doesn't reach are empty.
using CTomaFila =
    std::function<void(std::string_view fila, std::span<const std::string_view> campos)>;

/// Goes through the rows of a table for programs that explain what a run made of them; a header
/// line and lines without anything are none. False where the table can't be opened. A read that
/// fails raises CFileException.
/// \param modo  how to open it, beside for reading: CFile::anyCase
bool RecorreTabla(const CString& nombre, const CTomaFila& toma, UINT modo = 0);
