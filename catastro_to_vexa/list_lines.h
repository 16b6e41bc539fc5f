#pragma once

#include "cadastre/exchange_format.h"

// Lines of the list of subparcels with holders. Their head is that of the exchange file, with a
// number for the type.

enum TipoLinea {
    kLineaTitular = 31,
    kLineaParcela = 32,
    kLineaSubparcela = 33,
    kLineaIgnorada = 34
};

// Columns of a parcel line that the reader takes beside the record's own. A line of 65 characters
// or fewer doesn't tell the title.
inline constexpr CLectura kLeeNombreParaje = {35, 30, 0};
inline constexpr CLectura kLeeTitLista = {65, 2, 66};
