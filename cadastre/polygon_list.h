#pragma once

#include <vector>

#include "vexa_libs/ccadena.h"

// The list file names the polygons of one municipality. Its first line tells the municipality, each
// other line is an entry. The polygons' files stand beside it, and what is made of them goes there
// too.

/// What the first line tells.
struct CCabeceraLista {
    short Ger = 0;
    short Mun = 0;
    CString nombreSalida; ///< base name of the outputs: the two numbers as they stand
};

/// Takes the list's first line apart.
/// \param primera  without its line end; what is missing in it reads as 0 and as empty text
CCabeceraLista LeeCabeceraLista(const CString& primera);

/// The entry of a line behind the first one: the base name of a polygon's files, which begins with
/// the polygon's number. The line's first character says nothing.
CString EntradaDeLista(const CString& linea);

/// How many entries of a list name a polygon that another has named. A blank line names none.
int EntradasDeMas(std::vector<CString> entradas);
/// How many of the entries name a polygon at all.
int EntradasConNombre(const std::vector<CString>& entradas);

/// Path of a file that stands beside the list.
/// \param carpeta    the list's folder, as `DamePath` gives it
/// \param nombre     base name of the file
/// \param extension  without its point; it takes the place of one that the name has
CCadena FicheroDeLista(const CString& carpeta, const CString& nombre, const char* extension);
