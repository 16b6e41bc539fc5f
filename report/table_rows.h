#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

#include "platform/cstring.h"

namespace informe {

// Fields that rows of all tables have, and those of parcels and of what hangs on them.
inline constexpr std::size_t kCampoMun = 1;
inline constexpr std::size_t kCampoPolig = 3;
inline constexpr std::size_t kCampoParcela = 4;
inline constexpr std::size_t kCampoLetra = 5;
inline constexpr std::size_t kCampoSuperficie = 5; ///< of a parcel
inline constexpr std::size_t kCampoNumImputa = 8;
inline constexpr std::size_t kCampoTit = 9;
inline constexpr std::size_t kCampoPartici = 10;
inline constexpr std::size_t kCampoClaveConc = 15;
inline constexpr std::size_t kCamposTabla = 35; ///< of the widest one

using CTomaFila =
    std::function<void(std::string_view fila, std::span<const std::string_view> campos)>;

/// Goes through the rows behind the header line; lines without anything are none. False where the
/// table can't be opened. A read that fails raises CFileException.
bool RecorreTabla(const CString& nombre, const CTomaFila& toma);

} // namespace informe
