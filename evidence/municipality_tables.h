#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "cadastre/municipality.h"
#include "cadastre/table_files.h"
#include "evidence/municipality_files.h"
#include "evidence/record_key.h"
#include "platform/types.h"

// The rows of the six tables, and what the way back makes of them.

/// \param primera  it is the first line of its file
using CTomaFilaDeTabla = std::function<void(std::string_view fila, bool primera)>;

/// Goes through the rows of a table; a header line and lines that say nothing are none. False where
/// the table isn't there. Raises CFileException where it can't be read.
/// \param modo  how to open it, beside for reading: CFile::anyCase
bool RecorreTabla(const CString& nombre, const CTomaFilaDeTabla& toma, UINT modo = 0);

/// What the rows of a table come to.
struct CFilasLeidas {
    bool hay = false; ///< the table is there
    std::int64_t filas = 0;
    std::int64_t deOtro = 0;       ///< of another municipality
    std::int64_t sinMunicipio = 0; ///< have no number of one: lost without a message
    std::int64_t incompletas = 0;  ///< lack what they need: lost without a message
    std::int64_t unidas = 0;       ///< joined one that was there, without a message
    std::int64_t conMensaje = 0;   ///< should have been dropped with one
    std::vector<CClaveRegistro> quedan;
};

/// What to take of the tables beside the counts.
struct CQueSeLee {
    bool claves = false;  ///< those of the rows that stay
    bool detalle = false; ///< place, main holder and subparcels of a parcel, which take much room
    UINT modo = 0;        ///< how to open a table, beside for reading
    std::function<void(const CTitular&)> mira; ///< sees each holder whose row is whole
};

struct CTablasLeidas {
    explicit CTablasLeidas(short mun) : municipio(mun, 0) {}

    CFilasLeidas titulares;
    CFilasLeidas parcelas;
    CFilasLeidas modulos;
    CFilasLeidas subparcelas;
    CFilasLeidas parajes;
    CFilasLeidas cotitulares;
    std::int64_t cotitularesSinParcela = 0; ///< of those with a message
    std::int64_t cotitularesSinTitular = 0;
    CMunicipio municipio; ///< what the rows make, without links to co-holders
};

/// Reads the tables' rows of a municipality by the rules of the way back. A table that isn't there
/// leaves `hay` false; one that can't be read raises CFileException.
CTablasLeidas LeeTablas(const CNombresTablas& tablas, short mun, const CQueSeLee& que);
