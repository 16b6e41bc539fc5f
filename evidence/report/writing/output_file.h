#pragma once

#include <string_view>

#include "evidence/paths.h"

namespace informe {

/// A file that the report writes. It takes the place of an older one when all that belong to the
/// report do. All operations raise CFileException, the constructor where the file can't be created.
class CSalida {
public:
    CSalida(const CString& nombre, CConjuntoSalidas& todas)
    {
        CreaSalida(m_fichero, nombre, todas);
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
