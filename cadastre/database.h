#pragma once

#include <vector>

#include "cadastre/message_catalogue.h"
#include "cadastre/municipality.h"
#include "platform/cfile.h"

/// The database of one run: the municipalities read, with all that they hold. One reader fills it,
/// then it is sorted and written; it dies with the run.
class CBaseCatastro {
public:
    explicit CBaseCatastro(short ger) : Ger(ger) {}

    CMunicipio& DameMunicipio(int i) { return m_municipios[static_cast<std::size_t>(i)]; }
    /// Index of the municipality with the code, else kNoEncontrado.
    int BuscaMunicipio(short mun) const;
    /// Index of the municipality with that code; appends a copy if there is none.
    int InsertaMunicipio(const CMunicipio& municipio);
    /// The same for a code alone, which every line of an input brings.
    int RegistraMunicipio(short mun);
    std::vector<CMunicipio>& Municipios() { return m_municipios; }
    const std::vector<CMunicipio>& Municipios() const { return m_municipios; }

    /// Sums over all municipalities.
    int NumTitulares() const;
    int NumParcelas() const;

    /// Turns the shares of all parcels, so far square metres, into percentages and chooses each
    /// parcel's main holder.
    void ReparteParticipaciones();
    void EligeTitularPrincipal();
    /// Gives a number to each holder that has none, behind the highest of all municipalities.
    /// Writes a message for each and gives their count; it raises no counter.
    int AsignaNumOrden(CStdioFile& log);

    // The sorts, stable, with the positions that records hold rewritten. Before anything is written
    // they are called in this order, which those positions need; `Ordena` does so.
    void OrdenaMunicipios();  ///< by code
    void OrdenaTitulares();   ///< by number; this and those below within each municipality
    void OrdenaParajes();     ///< by name
    void OrdenaParcelas();    ///< by zone, polygon, parcel
    void OrdenaSubparcelas(); ///< within each parcel, by letter
    void OrdenaModulos();     ///< by denomination
    void OrdenaCotitulares(); ///< within each parcel
    void Ordena();

    // The writers of whole files (database_tables.cpp). With `fijo` false the header line
    // comes first. Each raises CFileException.
    void GrabaTitulares(CStdioFile& fichero, bool fijo) const;
    void GrabaParcelas(CStdioFile& fichero, bool fijo) const;
    void GrabaModulos(CStdioFile& fichero, bool fijo) const;
    void GrabaSubparcelas(CStdioFile& fichero, bool fijo);
    void GrabaParajes(CStdioFile& fichero, bool fijo) const;
    void GrabaCotitulares(CStdioFile& fichero, bool fijo) const;

    short Ger; ///< code above the municipalities

private:
    void EnCadaMunicipio(void (CMunicipio::*ordena)());

    std::vector<CMunicipio> m_municipios;
    CIndice<Gana::Primero> m_porCodigo;
};

/// Stores a holder and gives its index (CMunicipio::InsertaTitular). First raises the message for
/// one in conflict with a stored one, which is stored all the same.
int RegistraTitular(const CAvisos& avisos, CMunicipio& municipio, CTitular titular);
