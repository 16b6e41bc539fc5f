#pragma once

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "evidence/report/reading/run_files.h"

// What can be seen of a run's files from outside.

namespace informe {

/// A file of the run as it was found.
struct CFicheroVisto {
    std::string papel = {}; ///< what it was to the run
    CString nombre = {};
    bool salida = false;
    bool hay = false;
    bool viejo = false;                    ///< an output that is older than the log
    std::uint64_t largo = 0;               ///< bytes
    std::optional<std::time_t> fecha = {}; ///< of the last write
    std::uint32_t crc = 0;                 ///< of all its bytes (vexageo::Crc32)
};

/// Looks at all files of the run, the log first, and reads each whole for its sum. One that is
/// there and can't be read raises CFileException.
/// \param recibido  the log, where it came by the standard input
std::vector<CFicheroVisto> MiraFicheros(const CFicheros& ficheros,
                                        const std::optional<std::string>& recibido);

/// Tells whether the run left its log and no outputs: it was stopped, or ended by a fault. False
/// for a way out none of whose tables is there, unless it is told where they are: they may stand in
/// another folder.
bool Detenido(const std::vector<CFicheroVisto>& vistos, const CFicheros& ficheros);
/// Tells whether no output was found.
bool SinSalidas(const std::vector<CFicheroVisto>& vistos);

} // namespace informe
