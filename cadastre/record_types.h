#pragma once

#include <algorithm>
#include <iterator>
#include <string_view>

// The types of records: how a line of the exchange file, or of what the way back writes, says what
// it tells of.

inline constexpr const char* kTipoModulo = "MD";
inline constexpr const char* kTipoTitular = "TL";
inline constexpr const char* kTipoParcela = "PR";
inline constexpr const char* kTipoCotitulares = "CT"; ///< is written alone
inline constexpr const char* kTipoSuelo = "SP";
inline constexpr const char* kTipoConstruccion = "SC"; ///< comes in the exchange file alone
inline constexpr const char* kTipoParaje = "PJ";

/// Tells whether lines of this type stand in an exchange file.
constexpr bool EsTipoDeIntercambio(std::string_view tipo)
{
    constexpr std::string_view kTipos[] = {kTipoModulo, kTipoTitular,      kTipoParcela,
                                           kTipoSuelo,  kTipoConstruccion, kTipoParaje};
    return std::ranges::find(kTipos, tipo) != std::end(kTipos);
}
