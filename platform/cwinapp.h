#pragma once

#include <memory>
#include <new>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/cstring.h"
#include "platform/front_end.h"
#include "platform/resource_form.h"
#include "platform/settings.h"
#include "platform/types.h"

class CFileException;
class CWnd;

/// The application: the one global object of the program. It holds what the process is given at its
/// start, its front end, its resources and its command line, and the store of its settings.
class CWinApp {
public:
    CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp();

    /// Hands over what the process starts with, then runs `InitInstance`. A CFileException or a
    /// std::bad_alloc that leaves it is told in a box and ends here; `Interrumpida` is true then.
    /// \param frontal       must live as long as the application
    /// \param mandato       the tokens behind the program's name, joined by tabs
    /// \param ficheroAyuda  path of the help file
    void Arranca(CFrontal& frontal, const CRecursos& recursos, const CString& mandato,
                 const CString& ficheroAyuda);

    /// The life of the process. Its result is 0, as no message loop runs behind it.
    virtual BOOL InitInstance() { return 0; }

    /// Default path of a program's help file: beside the program, or where an installed program has
    /// its data. It ends in ".HLP", whatever the file that is there ends in.
    static CString FicheroAyuda(const CString& programa);

    /// A command that no window has a handler for: the map of the application has `OnHelp` alone.
    void OnCommand(UINT mandato) const;
    /// The help file on its default topic.
    void OnHelp() const;
    /// Where the help's texts of the controls stand, as HtmlHelp takes it for a popup.
    CString TemasDeControles() const;

    /// Key above all stored settings. Without it nothing is stored, and all values are the
    /// defaults.
    void SetRegistryKey(const CString& empresa) { m_empresa = empresa; }

    /// A stored value; the default where it isn't there or is no number. Raises CFileException
    /// where the store is there and can't be read.
    int GetProfileInt(const CString& seccion, const CString& clave, int defecto) const;
    CString GetProfileString(const CString& seccion, const CString& clave,
                             const CString& defecto) const;
    /// The same of several keys of a section, which cost one reading of the store; nothing for
    /// those that aren't there. Raises CFileException as above.
    std::vector<std::optional<CString>> LeeAjustes(const CString& seccion,
                                                   std::span<const CString> claves) const;
    /// The number that a stored value is, the default where it is none. What a person wrote behind
    /// a ";" or "#" is passed over.
    static int NumeroGuardado(const CString& guardado, int defecto);
    /// Stores a value at once. False, with the store as it was, if that can't be done or there is
    /// no registry key. The second one stands for the framework's; a dialog stores its texts with
    /// all its other values by `GuardaAjustes`, so that never half of them are there.
    BOOL WriteProfileInt(const CString& seccion, const CString& clave, int valor);
    BOOL WriteProfileString(const CString& seccion, const CString& clave, const CString& valor);
    /// Stores all values in one step; nothing where there is no registry key. Raises
    /// CFileException, with the store as it was, if that can't be done.
    void GuardaAjustes(std::span<const CAjuste> ajustes);

    /// Shows a box and gives the user's answer (see CFrontal). Notes whether it told an error.
    int Caja(const CString& texto, const CString& titulo, UINT flags);
    bool HuboCajaDeError() const { return m_huboCajaDeError; }
    /// Tells that an exception kept `InitInstance` from its end. A box told the user.
    bool Interrumpida() const { return m_interrumpida; }
    /// Tells the user that his settings couldn't be read or stored: once, and without its being an
    /// error of what he asked for.
    /// \param forma  takes the name of the store
    void CajaDeAjustes(const char* forma, const CFileException& fallo);
    /// Notes that a run ended early because the user stopped it.
    void NotaParada() { m_huboParada = true; }
    bool HuboParada() const { return m_huboParada; }
    /// Shows the box that memory ran out. It uses memory that was kept back for that, and writes
    /// to the standard error where even that isn't enough.
    void CajaSinMemoria() noexcept;
    /// Calls `hace`, which must come to its end whatever happens. Where memory runs out in it, it
    /// is called a second time with the memory that was kept back.
    template <class F>
    void ConReserva(F hace)
    {
        try {
            hace();
        } catch (const std::bad_alloc&) {
            m_reserva.reset();
            hace();
        }
    }

    /// Keeps the records of the last run in memory as long as the application stands. To free
    /// millions of them one by one would take a fifth of the run's time; the end of the process
    /// frees them at once.
    void Conserva(std::shared_ptr<const void> datos) { m_conservado = std::move(datos); }

    CFrontal& Frontal() const { return *m_frontal; }
    const CRecursos& Recursos() const { return m_recursos; }

    CString m_lpCmdLine;       ///< the tokens behind the program's name, joined by tabs
    CString m_pszHelpFilePath; ///< the help file
    CWnd* m_pMainWnd = nullptr;

private:
    BOOL Guarda(const CAjuste& ajuste);
    CAlmacenAjustes Ajustes() const; ///< the store, below the company's key by the program's name

    CFrontal* m_frontal = nullptr;
    CRecursos m_recursos;
    CString m_empresa;
    bool m_huboCajaDeError = false;
    bool m_huboParada = false;
    bool m_huboCajaDeAjustes = false;
    bool m_interrumpida = false;       ///< `InitInstance` didn't come to its end
    std::unique_ptr<char[]> m_reserva; ///< for the box that tells that memory ran out
    std::shared_ptr<const void> m_conservado;
};

/// The application object. There is one as long as `main` runs.
CWinApp* AfxGetApp();
