#pragma once

#include <deque>
#include <optional>
#include <span>
#include <type_traits>

#include "platform/cstring.h"
#include "platform/help_info.h"
#include "platform/resource_form.h"
#include "platform/types.h"
#include "platform/window_messages.h"

// Windows and dialogs as the program sees them. A control is plain state, made from the dialog's
// template; a front end shows that state and turns what the user does into messages.

class CDialog;

/// Readies the controls that dialogs are made of. The program calls it before anything else.
void InitCommonControls();

/// One control of a dialog.
class CControl {
public:
    CControl(CDialog& dialogo, const CPlantillaControl& plantilla);

    UINT Id() const { return m_plantilla->id; }
    const CPlantillaControl& Plantilla() const { return *m_plantilla; }
    ClaseControl Clase() const { return m_plantilla->clase; }
    bool SeManeja() const { return Clase() < ClaseControl::Texto; }
    /// Tells whether it is a label: it names what stands behind it, and is never asked for.
    bool EsRotulo() const { return Clase() == ClaseControl::Texto && Id() == kSinId; }

    /// Text of an edit or a label, caption of everything else.
    const CString& GetWindowText() const { return m_texto; }
    void SetWindowText(const CString& texto);
    bool IsWindowEnabled() const { return m_activo; }
    void EnableWindow(bool activo);
    /// Mark of a check box or radio button, 0 or 1.
    int GetCheck() const { return m_marca; }
    void SetCheck(int marca);
    /// Index of the item that a drop-down list shows, -1 for none. An index that it doesn't have
    /// selects none.
    int GetCurSel() const { return m_seleccion; }
    void SetCurSel(int seleccion);
    /// Position of a progress bar, 0 to 100.
    int GetPos() const { return m_posicion; }
    /// PBM_SETPOS sets the bar's position to `wParam`, cut to 0 to 100, and gives the one before.
    /// All other messages do nothing and give 0.
    LRESULT SendMessage(UINT mensaje, WPARAM wParam, LPARAM lParam);

private:
    CDialog* m_dialogo;
    const CPlantillaControl* m_plantilla;
    CString m_texto;
    bool m_activo = true;
    int m_marca = 0;
    int m_seleccion = -1;
    int m_posicion = 0;
};

class CWnd;

/// One line of a message map: the handler of a message and, for WM_COMMAND, of one command.
struct CEntradaMensaje {
    UINT mensaje;
    UINT mandato;
    LRESULT (*manejador)(CWnd& ventana, WPARAM wParam, LPARAM lParam);
};

/// A window: something that takes messages.
class CWnd {
public:
    CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    virtual ~CWnd() = default;

    /// Runs the message's handler and gives its result; 0 where there is none.
    LRESULT SendMessage(UINT mensaje, WPARAM wParam, LPARAM lParam)
    {
        return WindowProc(mensaje, wParam, lParam);
    }
    /// Shows a box with this window as its owner and gives the answer.
    int MessageBox(const CString& texto, const CString& titulo, UINT flags);
    /// Command "help": ends in `WinHelp`.
    void OnHelp() { WinHelp(0, 0); }

protected:
    /// The message map; the first line that fits is taken.
    virtual std::span<const CEntradaMensaje> GetMessageMap() const { return {}; }
    virtual void WinHelp(WPARAM /*dato*/, UINT /*mandato*/) {}
    /// Finds the handler of a message and gives its result. A command without a handler goes to the
    /// application. What a handler throws passes through.
    virtual LRESULT WindowProc(UINT mensaje, WPARAM wParam, LPARAM lParam);
};

template <class D>
D* ClaseDe(void (D::*)());
template <class D>
D* ClaseDe(LRESULT (D::*)(WPARAM, LPARAM));

/// A line of a message map for a command whose handler takes and gives nothing.
template <auto Manejador>
constexpr CEntradaMensaje EnMandato(UINT mandato)
{
    using D = std::remove_pointer_t<decltype(ClaseDe(Manejador))>;
    return {WM_COMMAND, mandato, [](CWnd& ventana, WPARAM, LPARAM) -> LRESULT {
                (static_cast<D&>(ventana).*Manejador)();
                return 0;
            }};
}

/// A line of a message map for any other message.
template <auto Manejador>
constexpr CEntradaMensaje EnMensaje(UINT mensaje)
{
    using D = std::remove_pointer_t<decltype(ClaseDe(Manejador))>;
    return {mensaje, 0, [](CWnd& ventana, WPARAM wParam, LPARAM lParam) {
                return (static_cast<D&>(ventana).*Manejador)(wParam, lParam);
            }};
}

class CProgressCtrl;

/// The way between fields and controls: to the fields with `m_bSaveAndValidate`, else to the
/// controls.
class CDataExchange {
public:
    CDataExchange(CDialog& dialogo, bool guarda) : m_pDlg(&dialogo), m_bSaveAndValidate(guarda) {}

    CDialog* m_pDlg;
    bool m_bSaveAndValidate;
};

/// Attaches a bar to its control in either direction; to none where that isn't there.
void DDX_Control(CDataExchange* dx, UINT id, CProgressCtrl& control);
// One field and its control each, in the direction of the exchange. A field whose control isn't
// there stays as it is.
void DDX_Text(CDataExchange* dx, UINT id, CString& valor);
void DDX_Check(CDataExchange* dx, UINT id, int& valor);
void DDX_CBIndex(CDataExchange* dx, UINT id, int& valor);
/// The value is the position of the marked button in the group that `id` opens, -1 for none.
void DDX_Radio(CDataExchange* dx, UINT id, int& valor);

/// A progress bar, attached to its control by DDX_Control.
class CProgressCtrl {
public:
    LRESULT SendMessage(UINT mensaje, WPARAM wParam, LPARAM lParam)
    {
        return m_control != nullptr ? m_control->SendMessage(mensaje, wParam, lParam) : 0;
    }

private:
    friend void DDX_Control(CDataExchange* dx, UINT id, CProgressCtrl& control);
    CControl* m_control = nullptr;
};

/// A dialog: controls made from a template, and the fields of the derived class that they show.
class CDialog : public CWnd {
public:
    explicit CDialog(UINT plantilla) : m_idPlantilla(plantilla) {}
    ~CDialog() override;

    /// Makes the controls and runs `OnInitDialog`; the dialog stays hidden. False where the
    /// application has no such template.
    bool Create(UINT plantilla, CWnd* padre);
    /// Shows the dialog until it is closed and gives the result that it was closed with; -1 where
    /// the application has no such template.
    int DoModal();
    /// Closes the dialog; what runs in one of its handlers goes on.
    void EndDialog(int resultado) { m_resultado = resultado; }
    bool Terminado() const { return m_resultado.has_value(); }

    /// With true reads the controls into the fields, with false writes the fields to the controls.
    void UpdateData(bool guarda);

    /// The control with the id, null where there is none.
    CControl* GetDlgItem(UINT id);
    UINT IdPlantilla() const { return m_idPlantilla; }
    const CPlantillaDialogo& Plantilla() const { return *m_plantilla; }
    std::deque<CControl>& Controles() { return m_controles; } ///< in the template's order
    const std::deque<CControl>& Controles() const { return m_controles; }
    void GotoDlgCtrl(UINT id); ///< gives the control the focus
    /// The control that has the focus, 0 before anything got it.
    UINT Foco() const { return m_foco; }
    /// The front end tells that the user took the focus to a control.
    void NotaFoco(UINT id) { m_foco = id; }
    /// Asks for its window in the middle of the screen, or of its parent's window.
    void CenterWindow() { m_centrada = true; }
    bool Centrada() const { return m_centrada; }
    /// The big icon of its window, by its id among the resources.
    void SetIcon(UINT icono) { m_icono = icono; }
    UINT Icono() const { return m_icono; }

    /// What a click of the user on a control does: a button sends its command, a check box changes
    /// its mark, a radio button takes it from the others of its group. Nothing on all other
    /// controls, and on one that is switched off.
    void Pulsa(CControl& control);
    /// What the control is called by a person who doesn't see the dialog's layout: its caption
    /// without the mnemonic's mark, else the label before it, else its group. A caption that
    /// several controls have is followed by the name of the control before it.
    CString NombreDe(const CControl& control) const;
    /// Tells that what the control shows says that, or enough, to who only hears it.
    bool SeLlamaComoSuLeyenda(const CControl& control) const;

    /// Tells whether what its button IDOK does can be tried first, by the program that makes
    /// reports.
    virtual bool SeEnsaya() const { return false; }
    /// What that program is to be told for it, by the controls as they are: its options, and last
    /// the file that the trial is named by. To be asked for of a dialog that can be tried.
    virtual std::vector<CString> OrdenDeEnsayo() { return {}; }
    /// The bar of a translation's dialog, null in others.
    const CControl* Avance() const;
    /// What F1 does: asks the dialog for the help of the control that has the focus, and for the
    /// manual where it has none to give.
    /// \param control  null where none has the focus
    /// \param punto    of the screen, where the help is to stand
    void PideAyuda(const CControl* control, const POINT& punto);

    /// Tells the front end that the control changed. The controls call it.
    void Refleja(const CControl& control) const;
    /// Hands at most one pending event of the user to this dialog. A Ctrl-C counts as a click on
    /// its button IDCANCEL. Throws CInterrumpido where the process is to end.
    void AtiendeUno();

protected:
    virtual void DoDataExchange(CDataExchange* /*dx*/) {}
    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel() { EndDialog(IDCANCEL); }
    std::span<const CEntradaMensaje> GetMessageMap() const override;

private:
    UINT m_idPlantilla;
    const CPlantillaDialogo* m_plantilla = nullptr;
    std::deque<CControl> m_controles; // a control keeps its address
    std::optional<int> m_resultado;
    UINT m_foco = 0;
    UINT m_icono = 0;
    bool m_centrada = false;
};

inline constexpr UINT OFN_HIDEREADONLY = 0x4; ///< no front end of ours offers that button
inline constexpr UINT OFN_FILEMUSTEXIST = 0x1000;

/// The platform's box for opening a file, in front of the window of the moment.
class CFileDialog {
public:
    /// \param inicial  the path that the box starts with; may be empty
    /// \param filtros  pairs of a text and a pattern, all ended by "|", the whole by one more
    CFileDialog(const CString& inicial, UINT flags, const CString& filtros)
        : m_ruta(inicial), m_flags(flags), m_filtros(filtros)
    {
    }

    /// Shows the box. IDOK, and the path chosen in `GetPathName`; IDCANCEL if the user gave up.
    int DoModal();
    CString GetPathName() const { return m_ruta; }
    void SetPathName(const CString& ruta) { m_ruta = ruta; }
    UINT Flags() const { return m_flags; }
    const CString& Filtros() const { return m_filtros; }

private:
    CString m_ruta;
    UINT m_flags;
    CString m_filtros;
};
