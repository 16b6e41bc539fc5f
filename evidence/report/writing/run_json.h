#pragma once

#include <ctime>
#include <string>
#include <string_view>

#include "evidence/report/writing/page_content.h"

namespace informe {

/// The build found the library that it takes; without it `ProcesoEnJson` gives nothing.
extern const bool kHayJson;
inline constexpr const char* kSinJson =
    "Este programa se hizo sin nlohmann-json, y no tiene --json";

/// How all that is written for programs begins: with the number of its form.
inline constexpr std::string_view kPrincipioJson = "{\n \"forma\": ";

/// "2026-11-26T05:56:51Z"
std::string HoraUtc(std::time_t hora);

/// What a page tells, for programs: docs/report.schema.json says in which form.
std::string ProcesoEnJson(const CContenido& contenido);
std::string CambiosEnJson(const CContenidoCambios& contenido);

} // namespace informe
