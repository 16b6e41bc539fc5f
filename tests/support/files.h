#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/cstring.h"

/// A folder of its own for one test, gone when the test ends. The stored settings live in it too.
class CCarpetaPrueba {
public:
    CCarpetaPrueba();
    CCarpetaPrueba(const CCarpetaPrueba&) = delete;
    CCarpetaPrueba& operator=(const CCarpetaPrueba&) = delete;
    ~CCarpetaPrueba();

    /// Path of a file in the folder; without a name the folder's own, with what parts the two.
    CString En(std::string_view nombre) const;
    const std::filesystem::path& Ruta() const { return m_ruta; }
    /// Writes and reads whole files, byte for byte. Folders on the way to one are made; a file that
    /// isn't there reads as "(no file)".
    CString Pon(std::string_view nombre, std::string_view bytes) const;
    std::string Lee(std::string_view nombre) const;
    /// Lines of a text of the program, as UTF-8 and without their ends.
    std::vector<std::string> Lineas(std::string_view nombre) const;
    /// The text with the folder's path, if it stands in it, taken out.
    std::string SinRuta(std::string texto) const;
    /// How many files and folders there are in it.
    int Cuantos() const;

private:
    std::filesystem::path m_ruta;
};

/// Goes to a folder, and back at the end.
class CEnCarpeta {
public:
    explicit CEnCarpeta(const std::filesystem::path& ruta)
        : m_antes(std::filesystem::current_path())
    {
        std::filesystem::current_path(ruta);
    }
    CEnCarpeta(const CEnCarpeta&) = delete;
    CEnCarpeta& operator=(const CEnCarpeta&) = delete;
    ~CEnCarpeta() { std::filesystem::current_path(m_antes); }

private:
    std::filesystem::path m_antes;
};
