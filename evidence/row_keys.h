#pragma once

#include <string_view>

#include "evidence/record_key.h"

// What records are told by, read out of lines that say much more of them: the rest of the record
// isn't made, which would take the most of the time.

/// The numbers of a row of parcels or of co-holders.
struct CNumerosDeFila {
    int polig;
    int parcela;
    int numImputa; ///< the holder's

    CClaveRegistro Clave() const { return CClaveRegistro::DeParcela(polig, parcela); }
};

CNumerosDeFila NumerosDeFilaParcela(std::string_view fila);
CNumerosDeFila NumerosDeFilaCotitular(std::string_view fila);
CClaveRegistro ClaveDeFilaSubparcela(std::string_view fila);
/// A row without number, name or DNI names nobody.
CClaveRegistro ClaveDeFilaTitular(std::string_view fila);

// The same of the lines of an exchange file.

/// What a PR line names.
struct CNumerosDeLinea {
    short polig;
    int parcela;
    int numParaje;
    int numImputa; ///< the holder's
    bool enlaza;   ///< the line is long enough to name a holder
};

CNumerosDeLinea NumerosDeLineaParcela(std::string_view linea);
/// Of an SP or SC line.
CClaveRegistro ClaveDeLineaSubparcela(std::string_view linea);
