#pragma once

#include <cstdint>
#include <optional>

#include "evidence/gis/geometry.h"
#include "platform/files/cfile.h"

/// Reads how far the outlines of a topology reach, their islands included, as their records say it,
/// without the drawing. Raises CFileException where a read fails.
/// \param topologia  the open file; as many outlines come as `LeeTopologiaDibujada` gives
/// \param dañoEn     takes the byte at which the reading ended (see CTopologiaDibujada)
/// \return nothing where one of them can't be true: nobody but this reads them, so a drawing's
///         maker may have left them empty
std::optional<CCajas> LeeExtensiones(CFile& topologia, std::uint64_t& dañoEn);
