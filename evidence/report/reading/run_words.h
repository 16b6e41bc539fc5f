#pragma once

#include <string>
#include <vector>

namespace informe {

/// What a run said to who wasn't there to read it, but for its summary and for where it keeps what
/// it replaced: its error boxes, a line each, and what it observed of its inputs.
/// \param dicho  all that it printed: boxes with an empty line behind each, then what it observed
std::vector<std::string> Observado(const std::string& dicho);

} // namespace informe
