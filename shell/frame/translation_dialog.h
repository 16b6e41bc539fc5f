#pragma once

#include <array>
#include <span>
#include <variant>
#include <vector>

#include "platform/cfile.h"
#include "platform/dialog.h"
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
        const char* defecto = ""; ///< of a text; a number's is 0
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
        std::span<const UINT> conmutados; ///< controls that a run disables
        bool ayudaDeControles = true;     ///< answers a request for the help of one control
    };
    virtual CDescripcion Describe() = 0;

    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* dx) override;
    /// The run. What it can't write to its end ends it with CFileException.
    void OnOK() override = 0;
    /// Asks whether to stop a run; between runs stores the fields and closes the dialog.
    void OnCancel() override;
    void WinHelp(WPARAM dato, UINT mandato) override;
    LRESULT WindowProc(UINT mensaje, WPARAM wParam, LPARAM lParam) override;
    std::span<const CEntradaMensaje> GetMessageMap() const override;

    /// Switches the controls for a run (false) or for the time between runs (true).
    void ActivaControles(bool activar);

    /// End of `EjecutaLote`, once the fields hold what the command line gave: shows them in the
    /// controls and runs. The user can stop such a run, but nothing of it is stored.
    void EjecutaEnLote();

    // What a translator calls. A phase also brings the log's lines to the disk.
    /// \param log  the run's log, null where it is closed already
    void Fase(UINT idTexto, CStdioFile* log);
    /// Ticks inside a loop. False when the user wants to stop.
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
    /// Opens an input, with a box where it can't be opened; a text, or a file of the drawing
    /// system.
    bool AbreEntrada(CStdioFile& fichero, const CString& nombre);
    bool AbreDibujo(CFile& fichero, const CString& nombre);
    /// Opens the drawing and the topology of the orthophoto sheets, named by one of the two. False,
    /// with a box for each that is missing, unless both are there.
    bool AbreOrtos(CFile& bin, CFile& top, const CString& nombre);
    /// Creates an output that takes its target's place when it is closed. False, with a box of the
    /// form `queja`, where it can't be created: also where it would fall on one of the run's
    /// inputs, which would be lost.
    bool CreaSalida(CStdioFile& fichero, const CString& nombre, const char* queja,
                    const std::vector<CString>& entradas = {});
    /// Creates the log of a run in the same way, in its place.
    bool CreaLog(CStdioFile& log, const CString& nombre, const std::vector<CString>& entradas);

private:
    void MuestraError(const CString& texto);
    bool Abre(CFile& fichero, const CString& nombre, UINT modo);
    bool Crea(CStdioFile& fichero, const CString& nombre, UINT modo, const char* queja,
              const std::vector<CString>& entradas);
    LRESULT OnEstadoId(WPARAM wParam, LPARAM lParam);
    LRESULT OnAvance(WPARAM wParam, LPARAM lParam);
    LRESULT OnLatido(WPARAM wParam, LPARAM lParam);
    LRESULT OnEstadoTexto(WPARAM wParam, LPARAM lParam);
    LRESULT OnHelpInfo(WPARAM wParam, LPARAM lParam);
    void OnAcercaDe();
    void OnBuscar(const CBusqueda& busqueda);

    bool m_enLote = false;
    UINT m_focoAntes = 0; ///< where the focus was before the run
    CEscritos m_escritos; ///< by the run at work
};
