#pragma once

#include <filesystem>
#include <string>

#include "platform/files/cfile_exception.h"
#include "platform/files/side_names.h"
#include "platform/layer_texts.h"

/// A folder for what nobody has use for afterwards: the user's alone, among the system's for such,
/// and gone with all that is in it when the object is. What can't be made raises CFileException.
class CCarpetaTemporal {
public:
    /// \param nombre  what its name begins with
    explicit CCarpetaTemporal(const std::string& nombre)
    {
        sistema::Error error;
        const std::filesystem::path deTodos = std::filesystem::temp_directory_path(error);
        CFileException::Exige(error, textos::kCarpetaTemporal);
        const std::filesystem::path ruta =
            sistema::Entera(deTodos) / (nombre + "-" + lado::Marca());
        sistema::CreaCarpeta(ruta, error);
        CFileException::Exige(error, sistema::Nombre(ruta));
        m_ruta = ruta;
    }
    CCarpetaTemporal(const CCarpetaTemporal&) = delete;
    CCarpetaTemporal& operator=(const CCarpetaTemporal&) = delete;
    ~CCarpetaTemporal()
    {
        std::error_code error;
        std::filesystem::remove_all(m_ruta, error);
    }
    const std::filesystem::path& Ruta() const { return m_ruta; }

private:
    std::filesystem::path m_ruta;
};
