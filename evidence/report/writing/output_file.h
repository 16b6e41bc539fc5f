#pragma once

#include <string_view>

#include "platform/files/cfile.h"
#include "platform/files/output_set.h"

namespace informe {

/// A file that the report writes. It takes the place of an older one when all that belong to the
/// report do. All operations raise CFileException, the constructor where the file can't be created.
class CSalida {
public:
    CSalida(const CString& nombre, CConjuntoSalidas& todas)
    {
        CFileException fallo;
        if (!m_fichero.Open(nombre, CFile::modeCreate | CFile::modeWrite, &fallo, &todas))
            throw CFileException(nombre, fallo.m_causa);
    }

    void Escribe(std::string_view utf8)
    {
        m_fichero.Write(utf8.data(), static_cast<UINT>(utf8.size()));
    }
    void Cierra() { m_fichero.Close(); }

private:
    CFile m_fichero;
};

} // namespace informe
