#pragma once

#include "cadastre/exchange_format.h"

// Lines of the two inputs as wholes.

/// Most characters of a line, its line end among them; a longer one comes in pieces, each a line of
/// its own.
inline constexpr unsigned kLineaCatastro = 190;
inline constexpr unsigned kLineaLista = 220;

/// Lines of the list of subparcels with holders. Their head is that of the exchange file, with a
/// number for the type.
enum TipoLinea {
    kLineaTitular = 31,
    kLineaParcela = 32,
    kLineaSubparcela = 33,
    kLineaIgnorada = 34
};
