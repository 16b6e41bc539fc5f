#pragma once

#include "cadastre/table_files.h"
#include "platform/cstring.h"
#include "platform/types.h"

/// Goes through the rows of a table; a header line and lines without anything are none. False where
/// the table can't be opened. A read that fails raises CFileException.
/// \param modo  how to open it, beside for reading: CFile::anyCase
bool RecorreTabla(const CString& nombre, const CTomaFila& toma, UINT modo = 0);
