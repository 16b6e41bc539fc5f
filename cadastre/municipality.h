#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "cadastre/holder.h"
#include "cadastre/index.h"
#include "cadastre/module_place.h"
#include "cadastre/parcel.h"
#include "platform/cstring.h"

class CStdioFile;

/// Codes of `BuscaTitular` for a holder in conflict with a stored one: same DNI and another name,
/// same name and another DNI.
inline constexpr int kMismoDNIOtroNombre = -1;
inline constexpr int kMismoNombreOtroDNI = -2;

/// Number of a holder that has none yet.
inline constexpr int kSinNumero = -1;

/// Code of `InsertaParcela` for a parcel numbered below 1.
inline constexpr int kParcelaInvalida = -7;

/// One municipality: its places, holders, parcels and modules, in arrays in insertion order.
/// Records point to one another by their positions there. Every look-up answers as a walk from
/// position 0 does, at the cost of a hash.
class CMunicipio {
public:
    CMunicipio(short mun, short emenor) : Mun(mun), EMenor(emenor) {}
    virtual ~CMunicipio() = default;
    CMunicipio(const CMunicipio&) = default;
    CMunicipio(CMunicipio&&) = default;
    CMunicipio& operator=(const CMunicipio&) = default;
    CMunicipio& operator=(CMunicipio&&) = default;

    /// Index of the first place with the number, or with the paraje's name, else kNoEncontrado.
    int BuscaParaje(int num) const;
    int BuscaParajeNombre(const CParaje& paraje) const;
    /// Index of the place with that name; appends it if there is none.
    int InsertaParaje(const CParaje& paraje);

    int ParcelasFaltasDeTitular() const; ///< see CParcela::FaltaTitular

    /// Index of the first module equal in `Denominacion`, `Cal` and `Inten`, else kNoEncontrado.
    int BuscaModulo(const CModulo& modulo) const;
    /// Index of that module; appends it if there is none.
    int InsertaModulo(const CModulo& modulo);

    /// Index of the first holder with the same name and either no DNI or the same one. If there is
    /// none, the last holder that shares the name or the DNI tells the code: kMismoNombreOtroDNI or
    /// kMismoDNIOtroNombre; kNoEncontrado if no holder shares either.
    int BuscaTitular(const CTitular& titular) const;
    /// Index of the first holder with the number, else kNoEncontrado.
    int BuscaTitularNumOrden(int num) const;
    /// The holder at a valid position.
    const CTitular& DameTitular(int i) const { return m_titulares[static_cast<std::size_t>(i)]; }
    /// Gives the holder at a valid position a back link to a parcel, unless it has one by then (see
    /// CTitular). A reader comes with them in the order of the parcels, whose holders stand
    /// anywhere; so they wait, and go to their holders when somebody asks for any.
    void InsertaPropiedad(int titular, int parcela, int partici, const CString& Tit)
    {
        m_propiedadesPorAsentar.push_back({{parcela, partici, Tit}, titular});
    }
    /// The back links of the holder at a valid position.
    const std::vector<CPropiedad>& Propiedades(int titular)
    {
        AsientaPropiedades();
        return DameTitular(titular).Propiedades();
    }
    /// Index of the holder that `BuscaTitular` finds, which takes the new one's number if it has
    /// none. Else appends the new one, in spite of a conflict, with its number set to -1 if that is
    /// taken.
    int InsertaTitular(CTitular titular);
    /// The same for a caller who has asked already.
    /// \param hallado  what `BuscaTitular` gave for the holder, with nothing changed since then
    int InsertaTitular(CTitular&& titular, int hallado);

    /// True and its index if there is a parcel with both numbers, else false and `i` untouched.
    bool BuscaParcela(int polig, int parcela, int& i) const;
    /// The same by a parcel's own numbers: its index or kNoEncontrado.
    int BuscaParcela(const CParcela& parcela) const;
    /// The parcel at a valid position. It may be changed, but for its numbers, by which it is
    /// known.
    CParcela& DameParcela(int i) { return m_parcelas[static_cast<std::size_t>(i)]; }
    const CParcela& DameParcela(int i) const { return m_parcelas[static_cast<std::size_t>(i)]; }
    /// Index of the parcel with those numbers, the new one being dropped, or of the appended one;
    /// kParcelaInvalida if a number is below 1.
    int InsertaParcela(CParcela parcela);

    /// Makes room for so many further parcels.
    void ReservaParcelas(std::size_t cuantas) { m_parcelas.reserve(m_parcelas.size() + cuantas); }

    const std::vector<CParaje>& Parajes() const { return m_parajes; }
    const std::vector<CTitular>& Titulares() const { return m_titulares; }
    /// The parcels, to be changed as `DameParcela` allows.
    std::span<CParcela> Parcelas() { return m_parcelas; }
    std::size_t NumParcelas() const { return m_parcelas.size(); }
    const std::vector<CParcela>& Parcelas() const { return m_parcelas; }
    const std::vector<CModulo>& Modulos() const { return m_modulos; }

    /// Gives each holder without a number the next one behind `mayor`, which is raised, and writes
    /// a message to the log for each. Gives how many there were.
    int AsignaNumOrden(CStdioFile& log, int& mayor);
    /// Highest number of a holder, or `mayor` if that is higher.
    int MayorNumOrden(int mayor) const;

    // The sorts (see CBaseCatastro).
    void OrdenaTitulares();   ///< by number
    void OrdenaParajes();     ///< by name
    void OrdenaParcelas();    ///< by zone, polygon, parcel
    void OrdenaSubparcelas(); ///< within each parcel, by letter
    void OrdenaModulos();     ///< by denomination
    void OrdenaCotitulares(); ///< within each parcel

    short Mun;
    short EMenor;

private:
    struct CPropiedadPorAsentar : CPropiedad {
        int titular;
    };

    void OlvidaTitulares();
    void AsientaPropiedades();

    std::vector<CParaje> m_parajes;
    std::vector<CTitular> m_titulares;
    std::vector<CParcela> m_parcelas;
    std::vector<CModulo> m_modulos;
    std::vector<CPropiedadPorAsentar> m_propiedadesPorAsentar;

    CIndice<Gana::Primero> m_parajesPorNumero;
    CIndice<Gana::Primero> m_parajesPorNombre;
    CIndice<Gana::Primero> m_titularesPorNumero;
    CIndice<Gana::Primero> m_titularesPorPersona; // name and DNI
    CIndice<Gana::Ultimo> m_titularesPorNombre;
    CIndice<Gana::Ultimo> m_titularesPorDNI;
    CIndice<Gana::Primero> m_parcelasPorNumeros;
    CIndice<Gana::Primero> m_modulosPorClave;
    int m_mayorNumero = kSinNumero;             // no holder has a higher one
    mutable std::size_t m_primeroSinNumero = 0; // no holder before it has the number -1
    mutable std::size_t m_parcelaHallada = 0;   // the last one that was asked for
    bool m_parcelasAscienden = true;            // each one's numbers are above those before it
};
