#pragma once

#include <list>
#include <span>
#include <vector>

#include "platform/cstring.h"
#include "platform/safe_replacement.h"

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

    /// Keeps an output for this run, before anything is written to it. `Ocupado` where another
    /// program is writing it; what can't be created is told when it is opened.
    CReemplazo::Apertura Reserva(const CString& nombre);

    /// Opens an output, reserved or not. Null with the reason where that can't be done. It belongs
    /// to the set.
    CReemplazo* Abre(const CString& nombre, sistema::Error& error);

    /// All outputs that were opened take their places. Raises CFileException, with all targets as
    /// they were, where one of them can't.
    void Confirma();
    /// Nothing takes any place; what was written is gone.
    void Desecha();

private:
    struct CSalida {
        CString nombre;
        CReemplazo reemplazo;
        bool usada = false;
    };

    std::list<CSalida> m_salidas; // an output keeps its address
};

/// The same for outputs that stand each by itself: named as they were asked for.
struct CSalidaNombrada {
    CString nombre;
    CReemplazo* reemplazo;
};
void ConfirmaSalidas(std::span<const CSalidaNombrada> salidas);
