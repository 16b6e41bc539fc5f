#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace informe {

/// What a run came to, in numbers; none where the translation has no such thing, or nothing can be
/// said of it.
struct CCifras {
    std::optional<std::int64_t> sinExplicar;
    std::optional<std::int64_t> perdida;  ///< square metres
    std::optional<std::int64_t> parcelas; ///< that lose them
    std::optional<std::int64_t> sinPadre; ///< outlines that Infograf didn't get
    std::optional<std::int64_t> errores;
    std::optional<std::int64_t> warnings;
    std::int64_t lineasE = 0; ///< of the log, by the letter of their numbers alone
    std::int64_t lineasW = 0;
    std::string alarma;       ///< what is wrong with the run as a whole; empty for nothing
    std::string sinComprobar; ///< what of it can't be checked; empty for nothing
    std::string incompleto;   ///< whose drawings aren't whole; empty for none
    bool hayPerdidas = false; ///< something was lost, isn't explained, or can't be checked
};

} // namespace informe
