#pragma once

#include "platform/files/cstdio_file.h"

// The records of the Infograf system: one line for each polygon of a drawing.

/// What tells the three kinds of record apart.
struct CClaseInfograf {
    const char* tipo;
    const char* codigo;
    const char* valor;
    const char* marca; ///< in front of the letters
};

inline constexpr CClaseInfograf kParcelaInfograf = {"12 ", "621", "40", " "};
inline constexpr CClaseInfograf kPoligonoInfograf = {"13 ", "611", "50", " "};
inline constexpr CClaseInfograf kSubparcelaInfograf = {"11 ", "633", "30", "0"};

struct CRegistroInfograf {
    explicit CRegistroInfograf(const CClaseInfograf& clase);

    CString tipo;
    CString codigo;
    CString valor;
    CString marca;
    int Polig = 0;
    int Parcela = 0;
    int x = 0; ///< of the polygon's point, hundredths of a metre
    int y = 0;
    double area = 0;     ///< square metres
    CString numOrtofoto; ///< the sheet on which the point lies, empty where there is none
    CString letras;      ///< a subparcel's label, whole

    /// Writes the record: 126 columns, more where a value is wider than its column. Raises
    /// CFileException.
    void Graba(CStdioFile& csp) const;
};
