#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>

#include "platform/cstring.h"

/// A text with helpers for paths and for rows of fields.
class CCadena : public CString {
public:
    using CString::CString;
    CCadena(const CString& texto) : CString(texto) {}
    using CString::operator=;

    /// Folder of a file's path with its closing separator; empty for a bare name.
    CString DamePath() const;
    /// Puts the file into a folder, keeping its name.
    /// \param path  as `DamePath` gives it, with its closing separator
    void CambiaPath(const CString& path);
    /// Sets the extension, given without its point; a name that has none gets it.
    void CambiaExtension(const CString& extension);
    /// Stores the first `n` fields of the row in `campos`; the fields stand between tabs and keep
    /// their blanks. A field that the row doesn't reach stays as it was. Gives how many it stored.
    unsigned Leetira(unsigned n, CString* campos) const;
};

/// The same split without a copy: the fields that the row doesn't reach become empty.
void Leetira(std::string_view tira, std::span<std::string_view> campos);

/// A decimal number as `atoi` reads it: leading white space, one sign, digits, 0 if there are none.
/// What passes 64 bits wraps.
/// \param resto  if given, becomes true where something but blanks stands behind it
std::int64_t LeeEnteroConSigno(std::string_view texto, bool* resto = nullptr);

/// The same; most texts are digits alone. What passes the bits of `T` wraps.
template <class T>
T LeeEnteroDe(std::string_view texto, bool* resto = nullptr)
{
    std::make_unsigned_t<T> valor = 0;
    for (const char c : texto) {
        const std::uint32_t cifra = static_cast<unsigned char>(c) - std::uint32_t{'0'};
        if (cifra > 9)
            return static_cast<T>(LeeEnteroConSigno(texto, resto));
        valor = valor * 10U + cifra;
    }
    return static_cast<T>(valor);
}
inline int LeeEntero(std::string_view texto, bool* resto = nullptr)
{
    return LeeEnteroDe<int>(texto, resto);
}
inline std::int64_t LeeEnteroLargo(std::string_view texto, bool* resto = nullptr)
{
    return LeeEnteroDe<std::int64_t>(texto, resto);
}

/// A real number with a decimal point, whatever the locale; 0 where the text begins with none.
/// \param resto  as above
double LeeReal(std::string_view texto, bool* resto = nullptr);
