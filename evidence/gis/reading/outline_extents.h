#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/files/cfile.h"
#include "vexa_libs/point.h"

/// The extents of outlines, their islands included.
using CExtensiones = std::vector<vexageo::CMaximas<int>>;

/// Reads how far the outlines of a topology reach as their records say it, without the drawing.
/// Raises CFileException where a read fails.
/// \param topologia  the open file; as many outlines come as `LeeTopologiaDibujada` gives
/// \param dañoEn     takes the byte at which the reading ended (see CTopologiaDibujada)
/// \return nothing where one of them can't be true: nobody but this reads them, so a drawing's
///         maker may have left them empty
std::optional<CExtensiones> LeeExtensiones(CFile& topologia, std::uint64_t& dañoEn);
