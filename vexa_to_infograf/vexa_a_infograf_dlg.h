#pragma once

#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "resources/resource_ids.h"
#include "shell/frame/translation_dialog.h"
#include "vexa_libs/topology.h"

struct CEntradaInfograf;
struct CSalidaInfograf;

/// Third translation: writes a record of the Infograf system for each parcel, polygon and subparcel
/// of a municipality's drawings.
class CVexaAInfografDlg : public CTraduccionDlg {
public:
    CVexaAInfografDlg() : CTraduccionDlg(IDD_VEXA_A_INFOGRAF) {}

    CString ArchivoTren;  ///< the list file: the municipality and its polygons
    CString ArchivoOrtos; ///< the drawing of the orthophoto sheets

protected:
    CDescripcion Describe() override;
    /// The run. Its records go into the .CSP file, which also a stop leaves with what was written
    /// until then; an empty .ERR file stands beside it. Its end is told by the dialog alone,
    /// without a box. Raises CFileException where the .CSP file can't be written to its end; it
    /// keeps its old content then.
    void OnOK() override;

private:
    /// Writes the records of all entries.
    /// \param csp       open for writing; it stays so
    /// \param entradas  base names of the polygons' files
    /// \param carpeta   their folder, as `DamePath` gives it
    /// \return false when the user stopped
    bool GrabaInfograf(CStdioFile* csp, const std::vector<CString>& entradas,
                       const CString& carpeta);
    /// The orthophoto sheets. None, with a box for each file that is missing, unless both are
    /// there.
    vexageo::CTopologia LeeOrtos();
    /// Loads the topologies of an entry. False, with a box, where its drawing can't be opened; a
    /// topology that can't be opened gets its box and is missing in the entry.
    bool LeeEntrada(const CString& carpeta, const CString& nombre, CEntradaInfograf& entrada);

    /// Opens a phase and does something with each polygon of a topology; a topology that is missing
    /// has none. False when the user stopped.
    bool Recorre(UINT fase, const std::optional<vexageo::CTopologia>& topologia,
                 const std::function<void(int)>& graba);
    // The three steps of an entry, in this order: the subparcels need what the parcels found. False
    // when the user stopped.
    bool GrabaParcelas(CEntradaInfograf& entrada, const CSalidaInfograf& salida);
    bool GrabaPoligonos(const CEntradaInfograf& entrada, const CSalidaInfograf& salida);
    bool GrabaSubparcelas(const CEntradaInfograf& entrada, const CSalidaInfograf& salida);

    // What the records of a run don't tell of its drawings.
    int m_sueltos = 0;   ///< outlines without a record: nothing that should hold them does
    int m_sinNumero = 0; ///< parcels and polygons whose labels are no number

    const std::array<CCampo, 2> m_campos = {{
        {IDC_TREN, "ArchivoTren", &ArchivoTren},
        {IDC_ORTOS, "ArchivoOrtos", &ArchivoOrtos},
    }};
    const std::array<CBusqueda, 2> m_busquedas = {{
        {IDC_BUSCAR_TREN, &ArchivoTren, IDS_FILTRO_TODOS},
        {IDC_BUSCAR_ORTOS, &ArchivoOrtos, IDS_FILTRO_TOPOLOGIAS},
    }};
};
