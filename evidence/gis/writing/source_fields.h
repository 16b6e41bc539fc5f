#pragma once

#include <optional>
#include <string_view>

#include <ogr_feature.h>

#include "platform/cstring.h"

/// The polygon's files that two fields name: `entrada`, else the usual name by the number.
struct CDePoligono {
    /// " del polígono 003", empty for none.
    CString EnPalabras() const;

    CString entrada; ///< empty where neither field is set
    std::optional<int> poligono;
    bool nombrada = false; ///< by `entrada` itself
};

/// The fields of a feature, by the names that drawings are read with. What a drawing couldn't hold
/// as it stands there is kept as a fault, and reads as not there.
class CCamposElemento {
public:
    explicit CCamposElemento(const OGRFeature& elemento) : m_elemento(elemento) {}

    bool Hay(const char* nombre) const { return m_elemento.GetFieldIndex(nombre) >= 0; }
    /// Tells whether the source has a field as a number, which has no zeros in front.
    bool EsNumero(const char* nombre) const;
    std::optional<CString> Texto(const char* nombre);
    std::optional<int> Entero(const char* nombre);
    std::optional<double> Real(const char* nombre);
    std::optional<bool> SiNo(const char* nombre);

    /// The first fault, in words, or that they name no polygon; empty for nothing.
    /// \param sinPoligono  they need name none
    CString FaltaDe(const CDePoligono& de, bool sinPoligono) const;

private:
    int Puesto(const char* nombre) const;
    void Anota(const char* forma, const char* campo, const char* utf8);

    const OGRFeature& m_elemento;
    CString m_falta;
};

/// A text of GDAL as one of the program, code page 1252; none where that lacks one of its letters.
std::optional<CString> EnAnsi(const char* utf8);
/// The same for a text that is only to be told: a letter that is lacking is a question mark.
CString AnsiParaDecir(const char* utf8);

/// Tells whether a text has line breaks or other control characters, which no line of an exchange
/// file can hold.
bool TieneControles(std::string_view texto);

/// The yes or no that a text says, blanks around it aside; none where it says neither clearly.
std::optional<bool> SiONo(const char* texto);

/// Tells whether two texts of drawings look alike to GDAL: a drawing may have letters in UTF-8, and
/// they come back in the code page.
bool SeVenIgual(const CString& a, const CString& b);

inline constexpr int kCodigoMasLargo = 0xFFFF; ///< a drawing has two bytes for its length

/// Base name of a polygon's files by its number, "003".
CString EntradaUsual(int poligono);

CDePoligono LeeDePoligono(CCamposElemento& campos);
