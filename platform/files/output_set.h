#pragma once

#include <list>
#include <span>
#include <vector>

#include "platform/cstring.h"
#include "platform/files/safe_replacement.h"

/// The outputs of one run: all of them take their targets' places, or none does.
///
/// They are brought to the disk first. Then, beside a target in each folder, a diary tells what is
/// about to be replaced, each target gets a second name for what it holds, and the outputs are
/// renamed. When the folders are on the disk the diaries go, and with them the second names. A
/// program that is killed in between leaves its diary; the next run that works in the folder finds
/// it, gives all targets back what they held, and clears away what else was left.
class CConjuntoSalidas {
public:
    CConjuntoSalidas() = default;
    CConjuntoSalidas(const CConjuntoSalidas&) = delete;
    CConjuntoSalidas& operator=(const CConjuntoSalidas&) = delete;
    ~CConjuntoSalidas() { Desecha(); }

    /// Heals what a killed run left in the folders of these files. What belongs to a run that is
    /// alive stays. Raises CFileException where a folder or a diary can't be read.
    static void Sana(const std::vector<CString>& nombres);

    /// Keeps an output for this run, before anything is written to it.
    /// \return `Ocupado` where another program is writing it; `NoSePuede` where it can't be
    ///         created, for a reason that `Abre` will give. The set stays as it was in both cases.
    CReemplazo::Apertura Reserva(const CString& nombre);

    /// Opens an output, reserved or not. Null with the reason where that can't be done. Raises
    /// CFileException where another program is writing it. The object belongs to the set, which
    /// lets go of it in `Confirma` and `Desecha`.
    CReemplazo* Abre(const CString& nombre, sistema::Error& error);

    /// All outputs that were opened take their targets' places; the set is empty then. Those that
    /// were only reserved are let go of. Raises CFileException, with all targets as they were,
    /// where one of them can't.
    void Confirma();
    /// Throws away all that was written and empties the set; the targets stay as they were.
    void Desecha();

private:
    struct CSalida {
        CString nombre;
        CReemplazo reemplazo;
        bool usada = false;
    };

    std::list<CSalida> m_salidas; // an output keeps its address
};

/// An output, and the name by which the program asked for it, which complaints name.
struct CSalidaNombrada {
    CString nombre;
    CReemplazo* reemplazo;
};
/// Does what CConjuntoSalidas::Confirma does, for outputs that the caller owns. They are closed
/// afterwards, also where it raises CFileException.
void ConfirmaSalidas(std::span<const CSalidaNombrada> salidas);
