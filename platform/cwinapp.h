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

class CWnd;

/// The application: the one global object of the program. It holds what the process is given at its
/// start, its front end, its resources and its command line, and the store of its settings.
class CWinApp {
public:
    CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;
    virtual ~CWinApp();

    /// Hands over what the process starts with, then runs `InitInstance`.
    void Arranca(CFrontal& frontal, const CRecursos& recursos, const CString& mandato,
                 const CString& ficheroAyuda);

    /// The life of the process. False: there is no message loop to run behind it.
    virtual BOOL InitInstance() { return 0; }

    /// Default path of a program's help file: beside the program, or where an installed program has
    /// its data. It ends in ".HLP", whatever the file that is there ends in.
    static CString FicheroAyuda(const CString& programa);

    /// A command that no window has a handler for.
    virtual void OnCommand(UINT /*mandato*/) {}
    /// The help file on its default topic.
    void OnHelp() const;

    /// Key above all stored settings. Without it nothing is stored, and all values are the
    /// defaults.
    void SetRegistryKey(const CString& empresa) { m_empresa = empresa; }

    /// A stored value; the default where it isn't there or is no number. Raises CFileException
    /// where the store is there and can't be read.
    int GetProfileInt(const CString& seccion, const CString& clave, int defecto) const;
    CString GetProfileString(const CString& seccion, const CString& clave,
                             const CString& defecto) const;
    /// The same of several keys of a section in one reading of the store; nothing for those that
    /// aren't there.
    std::vector<std::optional<CString>> LeeAjustes(const CString& seccion,
                                                   std::span<const CString> claves) const;
    /// The number that a stored value is, the default where it is none.
    static int NumeroGuardado(const CString& guardado, int defecto);
    /// Stores a value at once. False, with the store as it was, if that can't be done.
    BOOL WriteProfileInt(const CString& seccion, const CString& clave, int valor);
    BOOL WriteProfileString(const CString& seccion, const CString& clave, const CString& valor);
    /// Stores all values in one step. Raises CFileException, with the store as it was, if that
    /// can't be done.
    void GuardaAjustes(std::span<const CAjuste> ajustes);

    /// Shows a box and notes whether it told an error.
    int Caja(const CString& texto, const CString& titulo, UINT flags);
    bool HuboCajaDeError() const { return m_huboCajaDeError; }
    /// Tells that something kept the program from its end, which was told then.
    bool Interrumpida() const { return m_interrumpida; }
    /// Tells that memory ran out, with what was kept back for that.
    void CajaSinMemoria() noexcept;
    /// Does what must be done whatever happens: where it finds no memory once more, with what was
    /// kept back.
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

    /// Keeps what the last work of the process leaves in memory, for as long as the application
    /// stands. The end of the process frees millions of records at once; one by one they take a
    /// fifth of the work.
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
    bool m_interrumpida = false;       ///< `InitInstance` didn't come to its end
    std::unique_ptr<char[]> m_reserva; ///< for the box that tells that memory ran out
    std::shared_ptr<const void> m_conservado;
};

/// The application object. There is one as long as `main` runs.
CWinApp* AfxGetApp();
