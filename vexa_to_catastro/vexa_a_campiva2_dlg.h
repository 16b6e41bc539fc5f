#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "cadastre/database.h"
#include "cadastre/exchange_format.h"
#include "cadastre/message_catalogue.h"
#include "cadastre/polygon_list.h"
#include "cadastre/table_files.h"
#include "platform/ansi.h"
#include "resources/resource_ids.h"
#include "shell/frame/translation_dialog.h"
#include "vexa_libs/topological_polygon.h"
#include "vexa_to_catastro/match_state.h"

/// Second translation: brings the tables of one municipality into line with its drawings, reports
/// every disagreement, and writes the exchange files.
class CVexaACampiva2Dlg : public CTraduccionDlg {
public:
    CVexaACampiva2Dlg() : CTraduccionDlg(IDD_VEXA_A_CAMPIVA2) {}

    /// A run from the command line, with the dialog hidden. `ModificarConcentradas` keeps its
    /// stored value. Gives 1, whatever the run came to.
    int EjecutaLote(const CString& modulos, const CString& titulares, const CString& parcelas,
                    const CString& subparcelas, const CString& parajes, const CString& cotitulares,
                    const CString& tren, const CString& ortos, int modificar, int noEnGrafico,
                    int noEnBD, CWnd* padre);

    CString ArchivoCotitulares;
    CString ArchivoModulos;
    CString ArchivoParajes;
    CString ArchivoParcelas;
    CString ArchivoSubparcelas;
    CString ArchivoTitulares;
    CString ArchivoTren;         ///< the list file: the municipality and its polygons
    CString ArchivoOrtos;        ///< the drawing of the orthophoto sheets
    int Modificar = 0;           ///< rewrite the tables of parcels and subparcels
    int ParcelasNoEnGrafico = 0; ///< keep what no polygon touched in the exchange file
    int ParcelasNoEnBD = 0;      ///< create parcels that only the drawing knows
    int ModificarConcentradas =
        0; ///< concentrated parcels take their surfaces from the drawing too

    bool SeEnsaya() const override { return true; }
    std::vector<CString> OrdenDeEnsayo() override;

protected:
    CDescripcion Describe() override;
    /// The run. A stop, a missing table or list, or an ortho topology out of date leave the log and
    /// nothing else. Raises CFileException when an output can't be written to its end; all keep
    /// their old content then.
    void OnOK() override;

private:
    /// Fills the municipality from the tables, walks the drawings and checks one against the other.
    /// \return false when the user stopped, a table or the list couldn't be opened, or the ortho
    ///         topology is out of date: nothing is to be written then
    bool CruzaGraficoConBase(CStdioFile* log, int* numErrores, int* numWarnings,
                             CMunicipio* municipio);

    /// What a run has seen of a table.
    struct CTablaVista {
        const char* propia;   ///< the header that it should have
        const char* registro; ///< what one of its rows is, and what all are
        const char* registros;
        CString archivo = {};
        CString cabecera = {}; ///< its header line, empty where it has none
        int todas = 0;         ///< its rows, those of other municipalities among them
        int ajenas = 0;        ///< those of other municipalities
        int tomadas = 0;       ///< those that became records
        int incompletas = 0;   ///< those that lack a field which each must have
        int partidas = 0;      ///< those with more fields than the table has
        int sinMunicipio = 0;  ///< those in whose second field no number stands
        int deOtraGer = 0;     ///< those of the municipality's number in another province
        int repetidas = 0;     ///< those of what an earlier one has made
        int conComillas = 0;   ///< those with a text in quotes
        int sueltas = 0;       ///< those that name a holder or a place that isn't there
        int dejadas = 0;       ///< those that became no record, which the log tells one by one
        bool conColumnasPropias = false; ///< all are split: somebody has added columns
        bool cortada = false;            ///< it ends in the middle of a row
        bool soloRetornos = false;       ///< no line feed ends its lines, which are read as one
        CCamposVistos campos = {};
        ansi::CMiraPagina pagina = {};

        void Cuenta(bool leida, const CDatosLinea& datos)
        {
            ++(leida ? tomadas : incompletas);
            campos.Toma(datos);
        }
        /// Counts a row that isn't empty, whosever it is.
        /// \param suyo       the municipality's number that stands in it
        /// \param municipio  the one that is read
        void CuentaFila(std::string_view fila, int suyo, int municipio, bool primera);
    };

    // The six tables, in the order in which records need one another.
    bool LeeParajes(CStdioFile* log, int* numErrores, int* numWarnings, CMunicipio* municipio);
    bool LeeModulos(CStdioFile* log, int* numErrores, int* numWarnings, CMunicipio* municipio);
    bool LeeTitulares(CStdioFile* log, int* numErrores, int* numWarnings, CMunicipio* municipio);
    bool LeeParcelas(CStdioFile* log, int* numErrores, int* numWarnings, CMunicipio* municipio);
    bool LeeSubparcelas(CStdioFile* log, int* numErrores, int* numWarnings, CMunicipio* municipio);
    bool LeeCotitulares(CStdioFile* log, int* numErrores, int* numWarnings, CMunicipio* municipio);

    /// Reads a table and hands each row of the municipality to `toma`. False, with a box where the
    /// file can't be opened, if the run must end.
    /// \param estado  what the status line says meanwhile
    /// \param campos  of a row
    /// \param vista   takes what was seen of the table, but for what became of its rows
    bool LeeTabla(UINT estado, const CString& archivo, std::size_t campos,
                  const CMunicipio& municipio, CTablaVista& vista, const CTomaFila& toma);
    void TomaParcela(std::string_view fila, const CAvisos& avisos, CMunicipio& municipio);

    /// Loads the orthophoto sheets. Without their files there are none and the run goes on; false
    /// if it must end.
    bool LeeOrtos(CZonasOrto& ortos);
    /// Loads the entries of the list file, one a polygon. False, with a box, if it can't be opened.
    bool LeeListaPoligonos(std::vector<CString>& entradas);
    bool RecorrePoligonos(const std::vector<CString>& entradas, const CAvisos& avisos,
                          CMunicipio& municipio, CCruce& cruce);
    /// Matches the polygon of an entry. One whose files aren't there gets a box and is passed over.
    void CruzaPoligono(const CString& entrada, const CAvisos& avisos, CMunicipio& municipio,
                       CCruce& cruce);

    /// Makes the parcels agree with the polygons of a .PAR file that bear their numbers, and keeps
    /// the polygons' boundaries and labels.
    void RegistraParcelas(CStdioFile* log, int* numErrores, int polig, CMunicipio* municipio,
                          CFile* par, CFile* bin, CPoligonoEnCurso& poligono, CCruce& cruce);
    /// Reads which parcel a record speaks of, and adds its islands to its area. False where it
    /// speaks of none.
    /// \param fueraDeFecha  becomes true where the label can't be read
    static bool LeeParcelaDeRegistro(const vexageo::CPoligonoTopologico& registro, CFile* par,
                                     CFile* bin, CPoligonoEnCurso& poligono, double& area,
                                     bool& fueraDeFecha);
    /// Says in a box that a topology is out of date: the older outputs have what is missing now.
    void DiceFueraDeFecha(Mensaje caja, const CString& entrada)
    {
        CajaError(caja, entrada);
        ConservaAnteriores();
    }
    /// Gives the parcel surface, position and sheet. `area` is square metres, the point that of the
    /// label.
    void AjustaParcela(CParcela& parcela, const vexageo::CPoligonoTopologico& registro, double area,
                       const vexageo::CPunto<int>& punto, const CZonasOrto& ortos);
    /// Keeps the boundary of a parcel and, in step with it, its label, for the subparcels.
    void GuardaContorno(const vexageo::CPoligonoTopologico& registro, CFile* bin,
                        CPoligonoEnCurso& poligono);
    /// Index of the parcel with the numbers; with a message below 0 where there is none and
    /// none was made.
    int ParcelaDelRotulo(const CAvisos& avisos, int polig, int numero, CMunicipio& municipio);
    /// Gives each subparcel polygon of a .SUB file to the parcel that holds it, and its surface to
    /// the subparcels with its letter there.
    void RegistraSubparcelas(CStdioFile* log, int* numErrores, int* numWarnings, int polig,
                             CMunicipio* municipio, CFile* sub, CFile* bin,
                             const CPoligonoEnCurso& poligono, CCruce& cruce);
    /// Gives all subparcels of a letter the drawn surface, or compares it with theirs where the
    /// database's has to stand, and notes them as seen.
    /// \param indice  of the parcel, in the municipality
    /// \param area    square metres
    void AjustaSubparcelas(const CAvisos& avisos, CParcela& parcela, int indice,
                           const CString& letra, double area, CCruce& cruce) const;

    /// Reports what no polygon touched and, unless it is to be kept, clears its `salvar`.
    void CompruebaGrafico(CStdioFile* log, int* numErrores, CMunicipio* municipio,
                          std::vector<int>& parcelasVistas,
                          const std::vector<CSubparcelaVista>& subparcelasVistas) const;

    /// Says what speaks against the list, or a table that may be written anew, being what it was
    /// read as. What the outputs replace is kept then.
    void ObservaEntradas();
    /// Says which tables have letters or rows that weren't read as they stand.
    void ObservaFilas();
    /// Says what speaks against a table's being of its field.
    void ObservaTabla(const CTablaVista& tabla);
    bool NingunaVale(const CTablaVista& tabla) const;
    std::array<const CTablaVista*, 6> TablasVistas() const;

    /// The files that a run reads, which no output may fall on; its tables are rewritten on demand.
    std::vector<CString> Entradas() const;
    /// Writes the exchange files and, on demand, two of the tables. False, with a box, where the
    /// main file can't be created; what else can't be created is told and passed over.
    bool GrabaSalida(CBaseCatastro& base, const CString& nombreR, const CString& nombreM);
    void ModificaTablas(CBaseCatastro& base);
    /// The closing boxes; the summary is made while nothing has changed yet.
    static CString Resumen(const CBaseCatastro& base, short mun, int numErrores, int numWarnings);
    void Despide(const CString& resumen);

    /// What a run has seen of the inputs that have to belong together.
    struct CEntradasVistas {
        CString primera;              ///< line of the list
        CCabeceraLista cabecera;      ///< what that line tells
        int poligonos = 0;            ///< that the list names
        int parcelasDelMunicipio = 0; ///< rows with both codes of the list's first line
        int titularesSinNumero = 0;   ///< rows of holders whose number another one has
        int dniSinCeros = 0;          ///< rows of holders whose DNI has less than eight figures
        int sumados = 0;              ///< rows of co-holders who held the parcel before them
        int faltasDeTitular = 0;      ///< parcels whose shares leave something out
        int enHojaSinNombre = 0;      ///< parcels that lie on a sheet whose label is blank
        CTablaVista parajes{kCabeceraParajes, "paraje", "parajes"};
        CTablaVista modulos{kCabeceraModulos, "módulo"_ansi, "módulos"_ansi};
        CTablaVista titulares{kCabeceraTitulares, "titular", "titulares"};
        CTablaVista parcelas{kCabeceraParcelas, "parcela", "parcelas"};
        CTablaVista subparcelas{kCabeceraSubparcelas, "subparcela", "subparcelas"};
        CTablaVista cotitulares{kCabeceraCotitulares, "cotitular", "cotitulares"};
    };

    bool ParcelasNoSalvadas = false; ///< a parcel of this run couldn't be stored
    CEntradasVistas m_vistas;        ///< by this run

    const std::array<CCampo, 12> m_campos = {{
        {IDC_COTITULARES, "ArchivoCotitulares", &ArchivoCotitulares},
        {IDC_MODULOS, "ArchivoModulos", &ArchivoModulos},
        {IDC_PARAJES, "ArchivoParajes", &ArchivoParajes},
        {IDC_PARCELAS, "ArchivoParcelas", &ArchivoParcelas},
        {IDC_SUBPARCELAS, "ArchivoSubparcelas", &ArchivoSubparcelas},
        {IDC_TITULARES, "ArchivoTitulares", &ArchivoTitulares},
        {IDC_TREN, "ArchivoTren", &ArchivoTren},
        {IDC_ORTOS, "ArchivoOrtos", &ArchivoOrtos},
        {IDC_MODIFICAR, "Modificar", &Modificar},
        {IDC_NO_EN_GRAFICO, "ParcelasNoEnGrafico", &ParcelasNoEnGrafico},
        {IDC_NO_EN_BD, "ParcelasNoEnBD", &ParcelasNoEnBD},
        {IDC_MODIFICAR_CONCENTRADAS, "ModificarConcentradas", &ModificarConcentradas},
    }};
    const std::array<CBusqueda, 8> m_busquedas = {{
        {IDC_BUSCAR_TREN, &ArchivoTren, IDS_FILTRO_TODOS},
        {IDC_BUSCAR_ORTOS, &ArchivoOrtos, IDS_FILTRO_TOPOLOGIAS},
        {IDC_BUSCAR_MODULOS, &ArchivoModulos, IDS_FILTRO_TODOS},
        {IDC_BUSCAR_TITULARES, &ArchivoTitulares, IDS_FILTRO_TODOS},
        {IDC_BUSCAR_PARCELAS, &ArchivoParcelas, IDS_FILTRO_TODOS},
        {IDC_BUSCAR_SUBPARCELAS, &ArchivoSubparcelas, IDS_FILTRO_TODOS},
        {IDC_BUSCAR_PARAJES, &ArchivoParajes, IDS_FILTRO_TODOS},
        {IDC_BUSCAR_COTITULARES, &ArchivoCotitulares, IDS_FILTRO_TODOS},
    }};
};

/// Compares each parcel's surface with the sum of its subparcels'. Where they differ by up to 5
/// square metres the parcel gets the sum, with a warning; a larger difference is reported as an
/// error. A parcel without a main holder is reported too.
void CompruebaSuperficies(CStdioFile* log, int* numErrores, int* numWarnings,
                          CMunicipio* municipio);
