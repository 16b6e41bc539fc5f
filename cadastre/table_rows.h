#pragma once

#include <functional>
#include <string_view>

#include "platform/cstring.h"
#include "platform/types.h"

// The rows of the table files.

/// Code of the municipality that a row of any table belongs to; 0 for a header line.
int MunicipioDeFila(std::string_view fila);

/// Tells whether a row, the first one of its table, is the header line.
bool EsCabecera(std::string_view fila);

using CTomaFila = std::function<void(std::string_view fila)>;

/// Goes through the rows of a table for programs that explain what a run made of them; a header
/// line and lines without anything are none. False where the table can't be opened. A read that
/// fails raises CFileException.
/// \param modo  how to open it, beside for reading: CFile::anyCase
bool RecorreTabla(const CString& nombre, const CTomaFila& toma, UINT modo = 0);
