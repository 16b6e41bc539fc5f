#pragma once

#include <string_view>
#include <vector>

#include "cadastre/index.h"
#include "platform/cstring.h"

class CStdioFile;
struct CDatosLinea;

/// Code of `InsertaPropiedad` for a parcel that the holder has already.
inline constexpr int kPropiedadRepetida = -11;

/// Back link of a holder to a parcel that it holds: the mirror of a CCotitular.
struct CPropiedad {
    int parcela; ///< index in the municipality's parcels
    int partici; ///< share, as the CCotitular had it when it was made
    CString Tit; ///< title code
};

/// A holder of parcels: a person or body with its number, identity and postal address.
class CTitular {
public:
    /// \param direccion  address line, "C/ MAYOR": its first word gives `sig` where it is a known
    ///                   kind of street, the rest `nombreVia`; of one word alone it is `nombreVia`
    explicit CTitular(const CString& direccion = {});
    virtual ~CTitular() = default;
    CTitular(const CTitular&) = default;
    CTitular(CTitular&&) = default;
    CTitular& operator=(const CTitular&) = default;
    CTitular& operator=(CTitular&&) = default;

    /// Fills the fields from a TL line (`modo` 0), a holder line of the list (1) or a row of
    /// Titulares.txt (2).
    /// \param datos  takes what the line says beside them: of a TL line the share
    /// \return false, with the fields unset, only for a row without `NumOrden`, `Nombre` or `DNI`
    bool Lee(std::string_view linea, int modo, CDatosLinea& datos);
    bool Lee(std::string_view linea, int modo);
    /// Writes the TL record with `fijo`, else the table row. Raises CFileException.
    void Graba(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo) const;

    /// Adds a back link.
    /// \return 1, or kPropiedadRepetida, with nothing changed, if there is one to that parcel
    int InsertaPropiedad(int parcela, int partici, const CString& Tit);
    /// The back links; a municipality's holder may lack some that CMunicipio::Propiedades gives.
    const std::vector<CPropiedad>& Propiedades() const { return m_propiedades; }
    /// The parcels were sorted: gives each back link the index that `nuevos` has at its old one.
    void RenumeraParcelas(const std::vector<int>& nuevos);

    CString Nombre;
    CString DNI;
    CString sig;
    CString nombreVia;
    CString bloq;
    CString esc;
    CString plant;
    CString puert;
    int NumOrden = 0; ///< -1 for a holder that has none yet
    int CP = 0;
    char CJurid = ' ';
    char letra = ' ';
    char Exen = ' ';
    short numPol = 0;
    short Del = 0;
    short MunDom = 0; ///< municipality of the address

private:
    int m_mayorParcela = -1; // of the back links
    std::vector<CPropiedad> m_propiedades;
    CIndice<Gana::Primero> m_porParcela;
};
