#pragma once

#include <array>

#include "cadastre/database.h"
#include "cadastre/message_catalogue.h"
#include "catastro_to_vexa/line_check.h"
#include "catastro_to_vexa/seen_input.h"
#include "resources/resource_ids.h"
#include "shell/frame/translation_dialog.h"

struct CLecturaCatastro;

/// First translation: reads what the cadastre delivers and writes the six table files.
class CCampivaAVexaDlg : public CTraduccionDlg {
public:
    CCampivaAVexaDlg();

    /// A run from the command line, with the dialog hidden. Its stored settings give what the
    /// arguments don't. Gives 1, whatever the run came to. What a run raises is told in a box.
    int EjecutaLote(const CString& entrada, const CString& modulos, const CString& titulares,
                    const CString& parcelas, const CString& subparcelas, const CString& parajes,
                    const CString& cotitulares, CWnd* padre);

    CString ArchivoEntrada;
    CString ArchivoModulos;
    CString ArchivoParajes;
    CString ArchivoParcelas;
    CString ArchivoSubparcelas;
    CString ArchivoTitulares;
    int TipoEntrada = 0; ///< 0 an exchange file, any other a list of subparcels with holders
    CString ArchivoCotitulares;

protected:
    CDescripcion Describe() override;
    void PonValoresIniciales() final;
    /// The run. It says what it has to say in boxes and in the log, `ArchivoEntrada` with the
    /// extension ERR. A stop by the user ends the reading; what was read is checked and written.
    void OnOK() override;

private:
    /// Reads an exchange file in the read layout. `entrada` stands at its start; neither file is
    /// closed. The counters are only added to. A stop by the user ends the reading early. Raises
    /// CFileException where a read fails.
    void LeeArchivoNormal(CBaseCatastro& base, CStdioFile* entrada, CStdioFile* log,
                          int* numErrores, int* numWarnings);
    /// Settles the records that waited for the end of the file, in the municipality of its last
    /// line.
    void AsientaRegistros(CLecturaCatastro& lectura);
    bool AsientaParcelas(CLecturaCatastro& lectura);
    bool AsientaSubparcelas(CLecturaCatastro& lectura);
    bool AsientaTitulares(CLecturaCatastro& lectura);

    /// Reads a list of subparcels with holders; otherwise like LeeArchivoNormal.
    void LeeListaSubparcelas(CBaseCatastro& base, CStdioFile* entrada, CStdioFile* log,
                             int* numErrores, int* numWarnings);

    /// Says behind the summary what speaks against the input being what it was read as; the tables
    /// that the run replaces are kept then. Raises CFileException where a read fails.
    void ObservaEntrada(CStdioFile& entrada, const CBaseCatastro& base);
    /// The same of its lines one by one.
    void ObservaLineas();
    /// Sorts the database and writes the six tables. One that can't be created is told in a box and
    /// the others are written. Raises CFileException when a table can't be written to its end; all
    /// keep their old content then.
    void GrabaTablas(CBaseCatastro& base);

    const std::array<CCampo, 8> m_campos = {{
        {IDC_ENTRADA, "ArchivoEntrada", &ArchivoEntrada},
        {IDC_MODULOS, "ArchivoModulos", &ArchivoModulos},
        {IDC_PARAJES, "ArchivoParajes", &ArchivoParajes},
        {IDC_PARCELAS, "ArchivoParcelas", &ArchivoParcelas},
        {IDC_SUBPARCELAS, "ArchivoSubparcelas", &ArchivoSubparcelas},
        {IDC_TITULARES, "ArchivoTitulares", &ArchivoTitulares},
        {IDC_TIPO_ENTRADA, "TipoEntrada", &TipoEntrada},
        {IDC_COTITULARES, "ArchivoCotitulares", &ArchivoCotitulares},
    }};
    const std::array<CBusqueda, 1> m_busquedas = {
        {{IDC_BUSCAR_ENTRADA, &ArchivoEntrada, IDS_FILTRO_TODOS}}};
    CMiraLineas m_lineas{0}; ///< that this run has read
    CEntradaVista m_vista;
};

/// Checks a database that was read, and tells the log of parcels without subparcels, or else
/// without holders; then, in a pass of its own, of those whose surface isn't the sum of their
/// subparcels'. Adds all to `numErrores`.
void CompruebaBase(CBaseCatastro& base, CStdioFile* log, int* numErrores);
