#pragma once

#include <string_view>

#include "platform/cstring.h"

struct CDatosLinea;

/// `orden` of a parcel's main holder, and of a co-holder that isn't numbered.
inline constexpr int kOrdenPrincipal = 0;
inline constexpr int kSinOrden = -1;

/// Codes of `CParcela::InsertaCotitular`: the holder is linked already, the number is taken.
inline constexpr int kTitularRepetido = -8;
inline constexpr int kOrdenRepetido = -9;

/// A link between a parcel and one of its holders.
struct CCotitular {
    int titular = -1; ///< index in the municipality's holders, below 0 for one that wasn't found
    int orden = kSinOrden; ///< 0 the main holder, any other value a co-holder
    int partici = 0;       ///< share, as the input has it; square metres while a list is read
    CString Tit;           ///< title code

    /// Fills share and title from a row of Cotitulares.txt, without its line end.
    /// \param datos  takes what the row says beside them: the parcel's numbers and the holder's
    /// \return false, with the fields unset, for a row without `Tit` or `partici`
    bool Lee(std::string_view fila, CDatosLinea& datos);
};
