#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

#include "cadastre/co_holder.h"
#include "cadastre/holder.h"
#include "cadastre/index.h"
#include "cadastre/module_place.h"
#include "cadastre/subparcel.h"
#include "platform/cstring.h"

class CStdioFile;
struct CDatosLinea;

/// A rural parcel of a municipality, with its subparcels and its links to holders.
class CParcela {
public:
    explicit CParcela(short polig = 0, int parcela = 0, short zona = 0,
                      const CString& ortofoto = {})
        : Zona(zona), Polig(polig), Parcela(parcela), numOrtofoto(ortofoto)
    {
    }
    virtual ~CParcela() = default;
    CParcela(const CParcela&) = default;
    CParcela(CParcela&&) = default;
    CParcela& operator=(const CParcela&) = default;
    CParcela& operator=(CParcela&&) = default;

    /// Fills the fields from a PR line (`modo` 0), a parcel line of the list (1) or a row of
    /// Parcelas.txt (2).
    /// \param datos  takes what the line says beside them: holder, title and place, and of a row
    ///               the share; its `faltan` becomes true if a row lacks a holder's number, title
    ///               or share. What a line is too short for stays as it is.
    /// \return false only for a row without `Zona`, `Polig` or `Parcela`: `Superficie` is 0 then,
    ///         all other fields are as they were
    bool Lee(std::string_view linea, int modo, CDatosLinea& datos);
    /// The form that all records are read by, for whoever asks for the record's own fields alone.
    bool Lee(std::string_view linea, int modo);
    /// Writes the PR record with `fijo`, unless `salvar` is off; else the table row. The arrays are
    /// the municipality's. Raises CFileException.
    void Graba(CStdioFile& fichero, short ger, short mun, short emenor,
               const std::vector<CTitular>& titulares, const std::vector<CParaje>& parajes,
               bool fijo) const;

    /// Index of the first subparcel with the letter at index `desde` or behind it, else
    /// kNoEncontrado. Going on behind the one found costs the same in a long parcel as in a short
    /// one.
    int BuscaSubparcela(const CString& letra, int desde) const;
    CSubparcela& DameSubparcela(int i) { return m_subparcelas[static_cast<std::size_t>(i)]; }
    const std::vector<CSubparcela>& Subparcelas() const { return m_subparcelas; }
    /// Appends the subparcel and gives its index.
    /// \param repetida  set to whether a subparcel with its letter was there
    int InsertaSubparcela(CSubparcela&& subparcela, bool& repetida);
    /// Makes room for the first subparcels; a later call does nothing.
    void ReservaSubparcelas(std::size_t cuantas)
    {
        if (m_subparcelas.empty())
            m_subparcelas.reserve(cuantas);
    }
    /// Sorts by letter.
    void OrdenaSubparcelas();
    /// Writes all subparcels in array order. A subparcel without a surface takes for good that of
    /// the first one with its letter that has one. Raises CFileException.
    void GrabaSubparcelas(CStdioFile& fichero, short ger, short mun, short emenor, bool fijo);
    /// Gives the parcel's surface and the sum of its subparcels', in square metres; it wraps at 32
    /// bits. A subparcel whose `salvar` is off doesn't count. Of several with one letter the first
    /// counts, and each abstract one.
    void SumaSuperficies(int& superficie, int& suma) const;

    /// Adds a link to a holder. With an `orden` of 0 or more the holder and the number must be new
    /// here; with a negative one the share is added to the holder's link if there is one.
    /// \param titular  index in the municipality's holders
    /// \return 1; kTitularRepetido or kOrdenRepetido, with nothing changed
    int InsertaCotitular(int titular, int orden, int partici, const CString& Tit);
    /// Makes the link with the greatest share the main one, the first of equal ones, and numbers
    /// the others from 1. Nothing changes where no share is above 0.
    void EligeTitularPrincipal();
    /// Sorts by holder, share, number and title. If no link is the main one, the first becomes it.
    void OrdenaCotitulares();
    /// Writes the links that aren't the main one: CT records with `fijo`, else table rows. `salvar`
    /// plays no part. Raises CFileException.
    void GrabaCotitulares(CStdioFile& fichero, short ger, short mun, short emenor,
                          const std::vector<CTitular>& titulares, bool fijo) const;
    const std::vector<CCotitular>& Cotitulares() const { return m_cotitulares; }
    /// Tells whether its shares, in per cent, leave more out than their rounding does.
    bool FaltaTitular() const;
    /// Turns each share, so far square metres, into per cent of the subparcels' whole surface, 100
    /// where that is 0. Then chooses the main link (`EligeTitularPrincipal`).
    void ReparteParticipaciones();
    /// The holders were sorted: gives each link the index that `nuevos` has at its old one. A link
    /// without a holder stays.
    void RenumeraTitulares(const std::vector<int>& nuevos);

    // The first link that is the main one, and what it says.
    int IndicePrincipal() const;  ///< among the links; kNoEncontrado where there is none
    CCotitular Principal() const; ///< without a holder, title and share where there is none
    int TitularPrincipal() const { return Principal().titular; } ///< index of its holder or -1
    CString TitPrincipal() const { return Principal().Tit; }
    int ParticiPrincipal() const { return Principal().partici; }

    short Zona;
    short Polig;
    int Parcela;
    CString numOrtofoto;
    char clase = 'R';
    short subclase = 0;
    char claveConc = ' '; ///< other than a blank for a concentrated parcel
    bool salvar = true;   ///< off keeps the parcel out of the PR records
    int x = 0;            ///< where it lies: tens of metres, the last three digits
    int y = 0;
    int paraje = -1; ///< index in the municipality's places, below 0 for none
    int valorCatastral = 0;
    int añoVal = 0;
    int Superficie = 0; ///< square metres

private:
    void CompletaSuperficies();
    void GrabaRegistrosCT(CStdioFile& fichero, short ger, short mun, short emenor,
                          const std::vector<CTitular>& titulares) const;

    int m_ordenMaximo = kSinOrden;                        // no link has a greater number
    int m_mayorTitular = std::numeric_limits<int>::min(); // of the links
    std::vector<CSubparcela> m_subparcelas;
    std::vector<CCotitular> m_cotitulares;
    CIndice<Gana::Todos> m_porLetra;
    CIndice<Gana::Primero> m_porTitular;
};
