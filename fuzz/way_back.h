#pragma once

#include "fuzz/work_bench.h"

/// A bench with a small municipality: its six tables, the drawings of its one polygon, its sheets,
/// and its list, under the names of kTablas and kDibujos.
class CVuelta : public CBanco {
public:
    static constexpr const char* kTablas[] = {"Parajes.txt",  "Modulos.txt",     "Titulares.txt",
                                              "Parcelas.txt", "Subparcelas.txt", "Cotitulares.txt"};
    static constexpr const char* kDibujos[] = {"poligonos.txt", "001.BIN",   "001.PAR",  "001.SUB",
                                               "001.POL",       "ortos.BIN", "ortos.TOP"};

    static constexpr const char* kSalidas[] = {"045127.R", "045127.M", "045127.CSP"};

    CVuelta();

    /// The first translation, of entrada.txt as the stored settings take it.
    void AVexa();
    /// The second translation, with its options by their numbers: rewrite the tables, keep what is
    /// in no drawing, create what only the drawing knows; concentrated parcels with the first.
    void ACatastro(const CEntrada& entrada);
    /// The third translation.
    void AInfograf(const CEntrada& entrada);
};
