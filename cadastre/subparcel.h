#pragma once

#include <string_view>

#include "platform/cstring.h"

class CStdioFile;
struct CDatosLinea;

/// `tipo` of an abstract subparcel.
inline constexpr char kTipoAbstracta = 'A';

/// A part of a parcel, told by its letter: a piece of land or a built component.
class CSubparcela {
public:
    explicit CSubparcela(const CString& letraNueva = {}) : letra(letraNueva) {}
    virtual ~CSubparcela() = default;
    CSubparcela(const CSubparcela&) = default;
    CSubparcela(CSubparcela&&) = default;
    CSubparcela& operator=(const CSubparcela&) = default;
    CSubparcela& operator=(CSubparcela&&) = default;

    /// Fills the fields from an SP or SC line (`modo` 0), a subparcel line of the list (1) or a row
    /// of Subparcelas.txt (2).
    /// \param datos  takes what the line says beside them: its parcel's numbers, of a row and of an
    ///               SP or SC line that is long enough
    /// \return false, with the fields unset, only for a row without `letra`
    bool Lee(std::string_view linea, int modo, CDatosLinea& datos);
    bool Lee(std::string_view linea, int modo);
    /// Writes the SP record with `fijo`, unless `salvar` is off; else the table row. The last three
    /// numbers are its parcel's. Raises CFileException.
    void Graba(CStdioFile& fichero, short ger, short mun, short emenor, short zona, short polig,
               int parcela, bool fijo) const;

    CString letra;
    CString cFiscal = "S";
    CString cE;
    CString cA;
    CString ref1;
    CString ref2;
    CString descComponente;
    char tipo = ' ';
    short iE = 0;
    short iA = 0;
    short ejer = 0;
    short compCons = 0;
    short largo = 0;
    short ancho = 0;
    short alto = 0;
    short volumen = 0;
    short uso = 0;
    short cl = 0;
    short mod = 0;
    short tipoC = 0;
    short usoP = 0;
    char cSing = ' ';
    short añoC = 0;
    short añoR = 0;
    char iC = ' ';
    char iR = ' ';
    char estC = ' ';
    char exencion = ' ';
    short añoEx = 0;
    int superfic = 0;   ///< square metres
    bool salvar = true; ///< off keeps the subparcel out of the SP records
    CString descCultivo;
};
