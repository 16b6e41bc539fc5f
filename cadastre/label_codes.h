#pragma once

#include "platform/cstring.h"

// Codes of the drawings' code table, and what a label says.

inline constexpr const char* kCodigoLinde = "125001";
inline constexpr const char* kCodigoPoligono = "125101";
inline constexpr const char* kCodigoParcela = "125201"; ///< of labels that hold a parcel's number
// Of labels that hold a subparcel's letter, behind a hyphen: land, and what is built on it. Nothing
// tells one from the other.
inline constexpr const char* kCodigoSubparcela = "125501";
inline constexpr const char* kCodigoConstruccion = "125502";
inline constexpr const char* kCodigoHoja = "126001"; ///< of an orthophoto sheet; others do as well

// Which of them make a label valid, for the run and for what explains it.
inline constexpr const char* kCodigosDeParcela[] = {kCodigoParcela};
inline constexpr const char* kCodigosDeSubparcela[] = {kCodigoSubparcela, kCodigoConstruccion};

/// The letter in a subparcel's label: what stands behind its first hyphen, or all of it.
inline CString LetraDelRotulo(const CString& rotulo)
{
    return rotulo.Mid(rotulo.Find('-') + 1);
}

/// Square metres. No subparcel is looked for in a parcel of this area or more, which no surface of
/// 32 bits could hold.
inline constexpr double kAreaImposible = 2147483647.0;
