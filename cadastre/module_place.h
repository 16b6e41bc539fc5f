#pragma once

#include <string_view>

#include "platform/cstring.h"

class CStdioFile;
struct CDatosLinea;

/// A value module of a municipality: a class and intensity with the figures that go with it.
class CModulo {
public:
    virtual ~CModulo() = default;
    CModulo() = default;
    CModulo(const CModulo&) = default;
    CModulo(CModulo&&) = default;
    CModulo& operator=(const CModulo&) = default;
    CModulo& operator=(CModulo&&) = default;

    /// Fills the fields from an MD line (`modo` 0) or a row of Modulos.txt (2).
    /// \return false, with the fields unset, only for a row without `Cal` or `Denominacion`
    /// \param datos  takes what the row says beside the record
    bool Lee(std::string_view linea, int modo, CDatosLinea& datos);
    bool Lee(std::string_view linea, int modo);
    /// Writes the MD record with `fijo`, else the table row. Raises CFileException.
    void Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const;

    CString Cal;
    CString Denominacion;
    int Inten = 0;
    int TipoEvalua = 0;
    int Jornadas = 0; ///< hundredths of a day
    int EConce1 = 0;
    int EConce2 = 0;
    int EConce3 = 0;
    int VConce1 = 0;
    int VConce2 = 0;
    int VConce3 = 0;
    char Exen = ' ';
    char ConIBI = ' ';
    char ConJornadas = ' ';
};

/// A named place, to which parcels point.
class CParaje {
public:
    explicit CParaje(const CString& nombre = {}) : Nombre(nombre) {}
    virtual ~CParaje() = default;
    CParaje(const CParaje&) = default;
    CParaje(CParaje&&) = default;
    CParaje& operator=(const CParaje&) = default;
    CParaje& operator=(CParaje&&) = default;

    /// Fills the fields from a PJ line (`modo` 0) or a row of Parajes.txt (2).
    /// \return false, with the fields unset, only for a row without `NumOrden` or `Nombre`
    /// \param datos  takes what the row says beside the record
    bool Lee(std::string_view linea, int modo, CDatosLinea& datos);
    bool Lee(std::string_view linea, int modo);
    /// The same from a PJ line.
    bool Lee(std::string_view linea);
    /// Writes the PJ record with `fijo`, else the table row. Raises CFileException.
    void Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const;

    short NumOrden = 0; ///< the low 16 bits of what a line says
    CString Nombre;
};
