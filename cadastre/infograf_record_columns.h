#pragma once

#include <array>

#include "cadastre/exchange_format.h"
#include "cadastre/infograf_record.h"

// How a record of Infograf stands in its line, which no translation reads back.

// clang-format off
inline constexpr auto kColumnasInfograf = std::to_array<CColumna<CRegistroInfograf>>({
    // field                          read      list      written: column, form
    {&CRegistroInfograf::tipo,        kNoSeLee, kNoSeLee, {0, "%-3s"},         kSinTabla},
    {"000",                           kNoSeLee, kNoSeLee, {3, "%s"},           kSinTabla},
    {"00",                            kNoSeLee, kNoSeLee, {6, "%s"},           kSinTabla},
    {&CRegistroInfograf::Polig,       kNoSeLee, kNoSeLee, {8, "%03d"},         kSinTabla},
    {&CRegistroInfograf::Parcela,     kNoSeLee, kNoSeLee, {11, "%05d"},        kSinTabla},
    {&CRegistroInfograf::codigo,      kNoSeLee, kNoSeLee, {16, "%-16s"},       kSinTabla},
    {&CRegistroInfograf::valor,       kNoSeLee, kNoSeLee, {32, "% 4s"},        kSinTabla},
    {&CRegistroInfograf::x,           kNoSeLee, kNoSeLee, {36, "% 9d"},        kSinTabla},
    {&CRegistroInfograf::y,           kNoSeLee, kNoSeLee, {45, "% 10d"},       kSinTabla},
    {&CRegistroInfograf::area,        kNoSeLee, kNoSeLee, {55, "% 16.2lf"},    kSinTabla},
    {&CRegistroInfograf::numOrtofoto, kNoSeLee, kNoSeLee, {71, "%-10s"},       kSinTabla},
    {&CRegistroInfograf::marca,       kNoSeLee, kNoSeLee, {81, "%-1s"},        kSinTabla},
    {&CRegistroInfograf::letras,      kNoSeLee, kNoSeLee, {82, "%-4s"},        kSinTabla},
});
// clang-format on
