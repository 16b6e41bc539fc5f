#pragma once

#include "platform/cstring.h"

/// `orden` of a parcel's main holder, and of a co-holder that isn't numbered.
inline constexpr int kOrdenPrincipal = 0;
inline constexpr int kSinOrden = -1;

/// Codes of `CParcela::InsertaCotitular`: the holder is linked already, the number is taken.
inline constexpr int kTitularRepetido = -8;
inline constexpr int kOrdenRepetido = -9;

/// A link between a parcel and one of its holders.
struct CCotitular {
    int titular; ///< index in the municipality's holders, below 0 for a holder that wasn't found
    int orden;   ///< 0 the main holder, any other value a co-holder
    int partici; ///< share
    CString Tit; ///< title code
};
