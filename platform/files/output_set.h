#pragma once

#include <list>
#include <string>
#include <vector>

#include "platform/cstring.h"
#include "platform/files/safe_replacement.h"

/// A target whose older content was to stay beside it.
struct CConservada {
    CString destino;
    CString anterior;             ///< the name that it has there; empty where it couldn't be kept
    bool escritoMientras = false; ///< another program wrote it while the outputs were in the making

    CString Frase() const; ///< that says so to the user
};

/// The outputs of one run: all of them take their targets' places, or none does.
///
/// They are brought to the disk first. Then, beside a target in each folder, a diary tells what is
/// about to be replaced, each target gets a second name for what it holds, and the outputs are
/// renamed. When the folders are on the disk the diaries go, and with them the second names. A
/// program that is killed in between leaves its diary; the next run that works in the folder heals
/// by it (set_healing.h).
class CConjuntoSalidas {
public:
    CConjuntoSalidas() = default;
    CConjuntoSalidas(const CConjuntoSalidas&) = delete;
    CConjuntoSalidas& operator=(const CConjuntoSalidas&) = delete;
    ~CConjuntoSalidas() { Desecha(); }

    // Another program may have an output for a moment, for which both of these wait.

    /// Keeps an output for this run, before anything is written to it.
    /// \return `Ocupado` where another program is writing it; `NoSePuede` with the reason where it
    ///         can't be created. The set stays as it was in both cases.
    CReemplazo::Apertura Reserva(const CString& nombre, sistema::Error& error);

    /// Opens an output, reserved or not. Null with the reason where that can't be done. Raises
    /// CFileException where another program is writing it. The object belongs to the set, which
    /// lets go of it in `Confirma` and `Desecha`.
    CReemplazo* Abre(const CString& nombre, sistema::Error& error);

    /// All outputs that were opened take their targets' places; the set is empty then. Those that
    /// were only reserved are kept from others until then, and let go of. Raises CFileException,
    /// with all targets as they were, where one of them can't; those that couldn't be given back
    /// what they held are named in it.
    void Confirma();
    /// From now on `Confirma` leaves what the outputs replace beside them, under names of their
    /// own.
    void ConservaAnteriores() { m_conserva = true; }
    /// Those that were there, where all are to be kept, and those that another program wrote in the
    /// meantime, which always are.
    const std::vector<CConservada>& Conservadas() const { return m_conservadas; }
    /// Throws away all that was written and empties the set; the targets stay as they were.
    void Desecha() { m_salidas.clear(); }

private:
    struct CSalida {
        CString nombre;
        CReemplazo reemplazo;
        bool usada = false;
    };

    std::string m_marca;          // of this run, from the first output on
    std::list<CSalida> m_salidas; // an output keeps its address
    bool m_conserva = false;
    std::vector<CConservada> m_conservadas;
};
