#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "cadastre/polygon_list.h"
#include "platform/cstring.h"

// Which files belong to a municipality, by the names that they have as a rule.

/// The six tables, in the order in which a run's line names them.
enum Tabla { kModulos, kTitulares, kParcelas, kSubparcelas, kParajes, kCotitulares, kTablas };

/// The names of the six; an empty one is of a table that nobody is to read.
using CNombresTablas = std::array<CString, kTablas>;

/// The usual name of a table, "Modulos.txt".
const char* NombreTabla(Tabla tabla);
/// The tables by their usual names in a folder (see `EnCarpeta`).
CNombresTablas TablasEn(const CString& carpeta);
/// The table that begins with a line, its end included; none for a line that is no header.
std::optional<Tabla> TablaDeCabecera(std::string_view primera);

/// The list file: its first line, and its entries in order.
struct CListaPoligonos {
    CString nombre;
    CString carpeta; ///< as `DamePath` gives it
    CString primera;
    CCabeceraLista cabecera; ///< what the first line says
    std::vector<CString> entradas;
};

/// Reads a list file; nothing where it isn't there. Raises CFileException where it can't be read.
std::optional<CListaPoligonos> LeeLista(const CString& nombre);

/// The drawing of the orthophoto sheets beside a list.
struct CHojasHalladas {
    CString nombre;      ///< ortos.TOP, else the only other .TOP; empty for none, and for several
    bool varias = false; ///< there are several others, and nobody knows which
};
/// Looks for it in the list's folder. Raises CFileException where that can't be looked at.
CHojasHalladas BuscaHojas(const CString& carpeta);
