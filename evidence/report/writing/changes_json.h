#pragma once

#include <nlohmann/json.hpp>

#include "evidence/report/findings/changes/contrast.h"

namespace informe {

/// The changes between two states, for programs.
nlohmann::ordered_json CambiosEnValor(const CContraste& contraste);

} // namespace informe
