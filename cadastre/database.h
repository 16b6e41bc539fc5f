#pragma once

#include <vector>

#include "cadastre/message_catalogue.h"
#include "cadastre/municipality.h"
#include "platform/files/cstdio_file.h"

/// The database of one run: the municipalities read, with all that they hold. One reader fills it,
/// then it is sorted and written; it dies with the run.
class CBaseCatastro {
public:
    explicit CBaseCatastro(short ger) : Ger(ger) {}

    /// The municipality at a valid index.
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
    int ParcelasFaltasDeTitular() const; ///< see CParcela::FaltaTitular

    /// Turns the shares of all parcels, so far square metres, into per cent, and then chooses each
    /// parcel's main holder.
    void ReparteParticipaciones();
    /// Chooses the main holder of each parcel by the shares as they are (see CParcela).
    void EligeTitularPrincipal();
    /// Gives a number to each holder that has none, behind the highest of all municipalities.
    /// Writes a message to the log for each and gives how many there were. It raises no counter of
    /// errors: the caller does.
    int AsignaNumOrden(CStdioFile& log);

    // The sorts. Elements with equal keys keep their order, and the positions by which records
    // point to one another are rewritten. Before anything is written all are called in this order:
    // the later ones sort by the new positions. `Ordena` does so.
    void OrdenaMunicipios(); ///< by code; those below within each municipality (see CMunicipio)
    void OrdenaTitulares() { EnCadaMunicipio(&CMunicipio::OrdenaTitulares); }
    void OrdenaParajes() { EnCadaMunicipio(&CMunicipio::OrdenaParajes); }
    void OrdenaParcelas() { EnCadaMunicipio(&CMunicipio::OrdenaParcelas); }
    void OrdenaSubparcelas() { EnCadaMunicipio(&CMunicipio::OrdenaSubparcelas); }
    void OrdenaModulos() { EnCadaMunicipio(&CMunicipio::OrdenaModulos); }
    void OrdenaCotitulares() { EnCadaMunicipio(&CMunicipio::OrdenaCotitulares); }
    void Ordena();

    // The writers of whole files: with `fijo` the records of the written layout, else the rows of a
    // table behind its header line. The file stays open. Each raises CFileException. That of the
    // subparcels first completes their surfaces (see CParcela::GrabaSubparcelas).
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

/// Stores a holder and gives its index, as CMunicipio::InsertaTitular does. One in conflict with a
/// stored holder is stored too, once a message told of the conflict.
int RegistraTitular(const CAvisos& avisos, CMunicipio& municipio, CTitular&& titular);
