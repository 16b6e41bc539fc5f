#pragma once

#include <array>

#include "cadastre/co_holder.h"
#include "cadastre/exchange_format.h"
#include "cadastre/record_types.h"

// How a parcel's links to its co-holders stand in a line: what stands in front of them, and each
// link. A row has one, a record of the written layout nine.

// clang-format off
inline constexpr auto kColumnasCabecera = std::to_array<CColumna<CCotitular>>({
    // field                        read      list      written: column, form  table: field, form
    {&CDatosLinea::Ger,             kNoSeLee, kNoSeLee, {0, "%03d"},           {0, "%03d"}},
    {&CDatosLinea::Mun,             kNoSeLee, kNoSeLee, {3, "%03d"},           {1, "%03d"}},
    {&CDatosLinea::EMenor,          kNoSeLee, kNoSeLee, {6, "%03d"},           kSinTabla},
    {kTipoCotitulares,              kNoSeLee, kNoSeLee, {9, "%s"},             kSinTabla},
    {&CDatosLinea::Zona,            kNoSeLee, kNoSeLee, {11, "%02d"},          {2, "% 4d"}},
    {&CDatosLinea::Polig,           kNoSeLee, kNoSeLee, {13, "%03d"},          {3, "% 4d"}},
    {&CDatosLinea::Parcela,         kNoSeLee, kNoSeLee, {16, "%05d"},          {4, "% 6d"}},
    {&CDatosLinea::numRegistro,     kNoSeLee, kNoSeLee, {21, "%02d"},          kSinTabla},
});

// A link: one of the nine groups of a CT record, and the rest of a table row.
inline constexpr auto kColumnasVinculo = std::to_array<CColumna<CCotitular>>({
    {&CDatosLinea::numImputa,       kNoSeLee, kNoSeLee, {0, "%07d"},           {5, "% 8d"}},
    {&CCotitular::Tit,              kNoSeLee, kNoSeLee, {7, "%-2s"},           {6, "%-2s", kObligado}},
    {&CCotitular::partici,          kNoSeLee, kNoSeLee, {9, "%05d"},           {7, "% 6d", kObligado}},
});
// clang-format on

inline constexpr auto kColumnasCotitular = Une(kColumnasCabecera, kColumnasVinculo);
