#pragma once

#include "cadastre/exchange_format.h"
#include "platform/format.h"

// The written layout of the exchange file read back. Its columns are those that the records'
// tables say they are written to.

/// Where a column of the written layout stands, for a reader.
template <class R>
constexpr CLectura LecturaDe(const CColumna<R>& columna)
{
    std::string_view forma = columna.escrita.forma;
    const CForma como = AnalizaForma(forma);
    return {columna.escrita.columna, como.tipo == 'c' ? short{1} : como.ancho, 0};
}

/// The same of a record's field.
template <class R, std::size_t N>
constexpr CLectura LecturaDe(const std::array<CColumna<R>, N>& tabla,
                             const std::type_identity_t<CMiembroDe<R>>& campo)
{
    return LecturaDe(ColumnaDe(tabla, campo));
}

/// The column behind another one.
constexpr short Detras(const CLectura& columna)
{
    return static_cast<short>(columna.columna + columna.ancho);
}

/// The column behind the last one of a table.
template <class R, std::size_t N>
constexpr short FinDe(const std::array<CColumna<R>, N>& tabla)
{
    return Detras(LecturaDe(tabla.back()));
}
