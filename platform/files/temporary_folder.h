#pragma once

#include <filesystem>
#include <string>

#include "platform/files/side_names.h"

/// A folder for what nobody has use for afterwards: the user's alone, among the system's for such,
/// and gone with all that is in it when the object is. What can't be made raises
/// std::filesystem::filesystem_error.
class CCarpetaTemporal {
public:
    /// \param nombre  what its name begins with
    explicit CCarpetaTemporal(const std::string& nombre)
        : m_ruta(std::filesystem::absolute(std::filesystem::temp_directory_path()) /
                 (nombre + "-" + lado::Marca()))
    {
        std::filesystem::create_directory(m_ruta);
        std::filesystem::permissions(m_ruta, std::filesystem::perms::owner_all);
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
