#pragma once

#include <array>

#include "cadastre/exchange_format.h"
#include "cadastre/module_place.h"
#include "cadastre/record_types.h"

// How modules and places stand in a line.

inline constexpr int kAnchoModulo = 80; // the one record that isn't 150 wide

// clang-format off
inline constexpr auto kColumnasModulo = std::to_array<CColumna<CModulo>>({
    // field                    read: column, width, least   list      written: column, form   table: field, form
    {&CDatosLinea::Ger,         kNoSeLee,      kNoSeLee, {0, "%03d"},   {0, "%03d"}},
    {&CDatosLinea::Mun,         kNoSeLee,      kNoSeLee, {3, "%03d"},   {1, "%03d"}},
    {&CDatosLinea::EMenor,      kNoSeLee,      kNoSeLee, {6, "%03d"},   kSinTabla},
    {kTipoModulo,               kNoSeLee,      kNoSeLee, {9, "%s"},     kSinTabla},
    {&CModulo::Cal,             {11, 2, 13},   kNoSeLee, {11, "%-2s"},  {2, "%-2s", kObligado}},
    {&CModulo::Inten,           {13, 2, 15},   kNoSeLee, {13, "%02d"},  {3, "% 3d"}},
    {"-",                       kNoSeLee,      kNoSeLee, {15, "%s"},    kSinTabla},
    {&CModulo::Denominacion,    {16, 40, 18},  kNoSeLee, kNoSeEscribe,  {4, "%-40s", kObligado}, kSinCola},
    {&CModulo::TipoEvalua,      {56, 6, 58},   kNoSeLee, {16, "%06d"},  {5, "% 7d"}},
    {"00",                      kNoSeLee,      kNoSeLee, {22, "%s"},    kSinTabla},
    {&CModulo::Jornadas,        {62, 8, 64},   kNoSeLee, {60, "%08d"},  kSinTabla},
    {&CDatosLinea::jornadas,    kNoSeLee,      kNoSeLee, kNoSeEscribe,  {6, "% 11.2lf", kObligado}},
    {&CModulo::EConce1,         {70, 4, 72},   kNoSeLee, kNoSeEscribe,  {7, "% 5d"}},
    {&CModulo::VConce1,         {74, 6, 76},   kNoSeLee, kNoSeEscribe,  {8, "% 7d"}},
    {&CModulo::EConce2,         {80, 4, 82},   kNoSeLee, kNoSeEscribe,  {9, "% 5d"}},
    {&CModulo::VConce2,         {84, 6, 86},   kNoSeLee, kNoSeEscribe,  {10, "% 7d"}},
    {&CModulo::EConce3,         {90, 4, 92},   kNoSeLee, kNoSeEscribe,  {11, "% 5d"}},
    {&CModulo::VConce3,         {94, 6, 96},   kNoSeLee, kNoSeEscribe,  {12, "% 7d"}},
    {&CModulo::Exen,            {100, 1, 102}, kNoSeLee, kNoSeEscribe,  {13, "%c"}},
    {&CModulo::ConIBI,          {101, 1, 103}, kNoSeLee, kNoSeEscribe,  {14, "%c"}},
    {&CModulo::ConJornadas,     {102, 1, 104}, kNoSeLee, kNoSeEscribe,  {15, "%c"}},
});

inline constexpr auto kColumnasParaje = std::to_array<CColumna<CParaje>>({
    {&CDatosLinea::Ger,         kNoSeLee,      kNoSeLee, {0, "%03d"},   {0, "%03d"}},
    {&CDatosLinea::Mun,         kNoSeLee,      kNoSeLee, {3, "%03d"},   {1, "%03d"}},
    {&CDatosLinea::EMenor,      kNoSeLee,      kNoSeLee, {6, "%03d"},   {2, "% 4d"}},
    {kTipoParaje,               kNoSeLee,      kNoSeLee, {9, "%s"},     kSinTabla},
    {&CParaje::NumOrden,        {11, 5, 12},   kNoSeLee, {11, "%05d"},  {3, "% 6d", kObligado}},
    {&CParaje::Nombre,          {16, 30, 17},  kNoSeLee, {16, "%-30s"}, kSinTabla, kSinCola},
    {&CParaje::Nombre,          kNoSeLee,      kNoSeLee, kNoSeEscribe,  {4, "%-30s", kObligado}},
});
// clang-format on
