#pragma once

#include "cadastre/exchange_format.h"

// What a reader of either input takes from a line beside the columns of the line's own record.

/// Most characters of a line, its line end among them; a longer one comes in pieces, each a line of
/// its own.
inline constexpr unsigned kLineaCatastro = 190;
inline constexpr unsigned kLineaLista = 220;

// The exchange file. A PR line must be longer than 71 characters to say anything of its holder and
// place, an SP or SC line longer than 16 to name a parcel, a TL line longer than 18 to tell a
// share.
inline constexpr CLectura kLeeNumImputa = {46, 7, 72};
inline constexpr CLectura kLeeTit = {53, 2, 72};
inline constexpr CLectura kLeeParaje = {71, 5, 72};
inline constexpr CLectura kLeePolig = {13, 3, 17};
inline constexpr CLectura kLeeParcela = {16, 5, 17};
inline constexpr CLectura kLeePartici = {18, 5, 19};

/// Lines of the list of subparcels with holders. Their head is that of the exchange file, with a
/// number for the type.
enum TipoLinea {
    kLineaTitular = 31,
    kLineaParcela = 32,
    kLineaSubparcela = 33,
    kLineaIgnorada = 34
};

// Of the list's parcel line. One of 65 characters or fewer doesn't tell the title.
inline constexpr CLectura kLeeNombreParaje = {35, 30, 0};
inline constexpr CLectura kLeeTitLista = {65, 2, 66};
