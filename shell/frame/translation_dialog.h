#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <variant>
#include <vector>

#include "platform/ansi.h"
#include "platform/dialog.h"
#include "platform/files/any_case_name.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/output_set.h"
#include "platform/front_end.h"

// Messages by which a translator reports to its dialog. Each gives the dialog's `EnMarcha`.
inline constexpr UINT WM_ESTADO_ID = 23000;    ///< a phase begins: number of its status text
inline constexpr UINT WM_AVANCE = 23001;       ///< position (unsigned) and total (signed)
inline constexpr UINT WM_LATIDO = 23003;       ///< sign of life of a closed library
inline constexpr UINT WM_ESTADO_TEXTO = 23012; ///< pointer to the status text, a CString

/// What the dialogs of the translations have in common: the fields that are shown and stored, the
/// run with its stop flag, and the progress messages.
class CTraduccionDlg : public CDialog {
public:
    explicit CTraduccionDlg(UINT plantilla) : CDialog(plantilla) {}

    /// The state of a run: true from `ActivaControles(false)` until the user confirms a stop or
    /// `ActivaControles(true)` ends it.
    bool EnMarcha = false;
    CString Estado;         ///< status text
    CProgressCtrl Progreso; ///< 0 to 100

protected:
    /// A field that has a control and a stored value.
    struct CCampo {
        UINT control;
        const char* clave; ///< in the dialog's section of the settings
        /// An edit's text, the index of a drop-down list, or the mark of a check box.
        std::variant<CString*, int*> valor;
    };
    /// A browse button: the field that it fills and the number of its filter string.
    struct CBusqueda {
        UINT boton;
        CString* campo;
        UINT filtro;
    };
    /// What a dialog tells of itself.
    struct CDescripcion {
        const char* seccion;
        std::span<const CCampo> campos;
        std::span<const CBusqueda> busquedas;
        bool ayudaDeControles = true; ///< answers a request for the help of one control
    };
    virtual CDescripcion Describe() = 0;
    /// Gives the fields what they hold where nothing is stored.
    virtual void PonValoresIniciales() {}

    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* dx) override;
    /// The run. What it can't read or write to its end ends it with CFileException, and memory that
    /// runs out with std::bad_alloc: both are told in a box, and no output replaces anything then.
    void OnOK() override = 0;
    /// Asks whether to stop a run; between runs stores the fields and closes the dialog.
    void OnCancel() override;
    void WinHelp(WPARAM dato, UINT mandato) override;
    LRESULT WindowProc(UINT mensaje, WPARAM wParam, LPARAM lParam) override;
    std::span<const CEntradaMensaje> GetMessageMap() const override;

    /// Switches the controls for a run (false) or for the time between runs (true).
    void ActivaControles(bool activar);

    /// Begin of `EjecutaLote`: makes the dialog, hidden, with its stored values. Raises
    /// CFileException where they are there and can't be read.
    void CreaParaLote(CWnd* padre);
    /// End of `EjecutaLote`, once the fields hold what the command line gave: shows them in the
    /// controls and runs. The user can stop such a run, but nothing of it is stored.
    void EjecutaEnLote();

    // What a translator calls. What looks for events, `Fase` and `Avanza`, throws CInterrumpido
    // where the process is to end.

    /// Begins a phase with its status text; what the log holds so far goes to the system.
    void Fase(UINT idTexto);
    /// Moves the bar and takes the user's clicks, inside a loop. False when the user wants to stop.
    /// \param posicion  how far the loop is, in any unit, against `total`; 32 bits count of both
    bool Avanza(std::uint64_t posicion, std::uint64_t total);

    /// Shows an error box with a text, or the form of one (box_texts.h, or a number of the string
    /// table) and its arguments.
    template <class F, class... T>
    void CajaError(F forma, const T&... argumentos)
    {
        CString texto;
        texto.Format(forma, argumentos...);
        MuestraError(texto);
    }

    /// First of all in a run, and what all below needs: heals what a killed one left in the folders
    /// of its files. Raises CFileException where a folder can't be read.
    void EmpiezaProceso(const std::vector<CString>& ficheros);
    /// Opens an input: a text, or a file of the drawing system. False, with a box, where it can't
    /// be opened for one of the usual reasons; raises CFileException for others (CFile::Open).
    bool AbreEntrada(CStdioFile& fichero, const CString& nombre);
    bool AbreDibujo(CFile& fichero, const CString& nombre);
    /// Opens the drawing and the topology of the orthophoto sheets, named by one of the two. False,
    /// with a box for each that is missing, unless both are there.
    bool AbreOrtos(CFile& bin, CFile& top, const CString& nombre);
    /// Creates the log of the run, in its place, and reserves the outputs for this run. Where the
    /// run writes nothing to its log, one that is there is kept beside it, which is told. False,
    /// with a box, where the log can't be created or would overwrite one of the inputs, and where
    /// two of log and outputs are one file. Raises CFileException where another program is writing
    /// one of them.
    enum class Registro { DeEsteProceso, SiempreVacio };
    bool CreaLog(const CString& nombre, const std::vector<CString>& entradas,
                 const std::vector<CString>& salidas, Registro que = Registro::DeEsteProceso);
    CStdioFile& Log() { return m_proceso->log; }
    /// Creates an output, which takes its target's place with all others. False, with a box of the
    /// form `queja`, where it can't be created or is one of `entradas`, which the run still reads.
    /// Raises CFileException as CFile::Open does.
    bool CreaSalida(CStdioFile& fichero, const CString& nombre, const char* queja,
                    const std::vector<CString>& entradas = {});
    /// Says of an output how many of its records have something that has no room in its column,
    /// where some do: whoever reads them by columns reads something else than the run knew.
    void ObservaDesbordes(const CStdioFile& salida, const CString& nombre);
    /// All outputs that were created take their places; an input that another program has written
    /// meanwhile is told before. Raises CFileException, with all targets as they were, where one of
    /// them can't.
    void ConfirmaSalidas();
    /// Says something beside the run's boxes, behind its end: a form of box_texts.h.
    template <class... T>
    void Observa(const char* forma, const T&... argumentos)
    {
        m_proceso->escritos.observaciones.emplace_back(Formatea(forma, argumentos...));
    }
    /// Says in the same way what speaks against an input being what it was read as, or whole.
    template <class... T>
    void Sospecha(const char* forma, const T&... argumentos)
    {
        Observa(forma, argumentos...);
        ConservaAnteriores();
    }
    struct CCuenta {
        int cuantas;
        const char* forma; ///< names the file, then says how many
    };
    /// The same of each thing of which the file has some.
    void SospechaCuentas(std::initializer_list<CCuenta> cuentas, const CString& archivo);
    /// What the outputs replace is to stay beside them.
    void ConservaAnteriores() { m_proceso->salidas.ConservaAnteriores(); }
    /// The same where lines of an input, which belong in code page 1252, are in another one.
    void SospechaPagina(const ansi::CMiraPagina& pagina, const CString& archivo);
    /// The same of a list that was read. False where its first line says nothing of a municipality.
    bool ObservaLista(const CString& lista, const CString& primera, int poligonos);
    /// The same of a drawing that was read.
    /// \param dañada    the topology doesn't end with its last whole record, or points to nothing
    /// \param partidos  labels of the drawing that part the rows where they are written
    void ObservaDibujo(const CFile& topologia, bool dañada, const CFile& dibujo, int partidos);
    /// The same where the entry of a list has a point, so that another drawing than its own, which
    /// is there, too, was read.
    /// \param carpeta  of the list, as `DamePath` gives it
    void ObservaEntradaConPunto(const CString& carpeta, const CString& entrada);
    /// The page of the run's report, where it isn't to have the log's name.
    void NombraInforme(const CString& pagina) { m_proceso->escritos.informe = pagina; }
    /// Shows the summary of a run that is done.
    void CajaDeCierre(const CString& texto);
    /// Last of all in a run, behind its closing box: tells of a log that isn't whole, and switches
    /// the controls on.
    void AcabaProceso();
    /// Takes the records of a run that is done. Behind a run from the command line nothing follows,
    /// so they are kept until the process ends (CWinApp::Conserva); others are freed here.
    void Suelta(std::shared_ptr<const void> datos) const;

private:
    void MuestraError(const CString& texto);
    void CajaError(const char* forma, const CFileException& fallo);
    void Sana(const std::vector<CString>& ficheros);
    bool Reserva(const CString& salida);
    bool HayRepetidas(const CString& log, const std::vector<CString>& salidas);
    void Obedece(WPARAM wParam, LPARAM lParam);
    void DejaProceso();
    void LimpiaProceso();
    void LeeCampos();
    void GuardaCampos();
    LRESULT OnEstadoId(WPARAM wParam, LPARAM lParam);
    LRESULT OnAvance(WPARAM wParam, LPARAM lParam);
    LRESULT OnLatido(WPARAM wParam, LPARAM lParam);
    LRESULT OnEstadoTexto(WPARAM wParam, LPARAM lParam);
    LRESULT OnHelpInfo(WPARAM wParam, LPARAM lParam);
    void OnAcercaDe();
    void OnBuscar(const CBusqueda& busqueda);

    /// An input, as it was when it was opened.
    struct CLeida {
        CString nombre;
        sistema::CEstado estado;
    };
    void AnotaLeida(const CFile& fichero, const CString& nombre);
    void ObservaCambiadas();

    /// What the frame knows of the run at work. It goes with the run, whatever ends it.
    struct CProceso {
        CProceso(); // elsewhere, as in here the dialog isn't whole yet

        CStdioFile log;
        CConjuntoSalidas salidas;
        CNombresEnDisco nombres; // of the folders in which drawings were looked for
        std::vector<CLeida> leidas;
        CEscritos escritos;
        std::optional<UINT> focoAntes; ///< before the run switched the controls off
        bool detenido = false;         ///< by its user, who has what was written by then
    };

    bool m_enLote = false;
    bool m_sinAjustes = false;         ///< they couldn't be read, so nothing is stored over them
    std::optional<CProceso> m_proceso; ///< from `EmpiezaProceso` to the end of the run
};
