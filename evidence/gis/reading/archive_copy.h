#pragma once

#include <string>

#include "platform/cstring.h"

/// The files of a folder that GDAL alone can open, as inside an archive, copied to a folder of
/// their own, which goes with the object.
class CCopiaDeArchivo {
public:
    /// Tells whether a file is one that GDAL alone can open.
    static bool HaceFalta(const char* nombre);

    /// Copies all files that stand beside the list. Raises std::runtime_error, with the reason,
    /// where they can't be copied or are more than anybody's municipality.
    explicit CCopiaDeArchivo(const std::string& lista);
    CCopiaDeArchivo(const CCopiaDeArchivo&) = delete;
    CCopiaDeArchivo& operator=(const CCopiaDeArchivo&) = delete;
    ~CCopiaDeArchivo();

    CString Lista() const { return {m_lista}; }
    /// The name that a copied file has in the archive; any other name as it is.
    std::string Original(const std::string& nombre) const;

private:
    void Copia();

    std::string m_origen;  // the folder
    std::string m_carpeta; // of the copies
    std::string m_lista;
};
