#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/cstring.h"

/// A folder of its own for one test, gone when the test ends. The stored settings live in it too.
class CCarpetaPrueba {
public:
    CCarpetaPrueba();
    CCarpetaPrueba(const CCarpetaPrueba&) = delete;
    CCarpetaPrueba& operator=(const CCarpetaPrueba&) = delete;
    ~CCarpetaPrueba();

    /// Path of a file in the folder.
    CString En(std::string_view nombre) const;
    const std::filesystem::path& Ruta() const { return m_ruta; }
    /// Writes and reads whole files, byte for byte. A file that isn't there reads as "(no file)".
    CString Pon(std::string_view nombre, std::string_view bytes) const;
    std::string Lee(std::string_view nombre) const;
    /// How many files and folders there are in it.
    int Cuantos() const;

private:
    std::filesystem::path m_ruta;
};
