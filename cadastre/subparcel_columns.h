#pragma once

#include <array>

#include "cadastre/exchange_format.h"
#include "cadastre/record_types.h"
#include "cadastre/subparcel.h"

// How a subparcel stands in a line: what all lines have, land, and construction. A line must be
// longer than 16 characters to name a parcel.

// clang-format off
inline constexpr auto kColumnasComunes = std::to_array<CColumna<CSubparcela>>({
    // field                        read: column, width, least  list: the same  written: column, form  table: field, form
    {&CDatosLinea::Ger,             kNoSeLee,      kNoSeLee,     {0, "%03d"},      {0, "%03d"}},
    {&CDatosLinea::Mun,             kNoSeLee,      kNoSeLee,     {3, "%03d"},      {1, "%03d"}},
    {&CDatosLinea::EMenor,          kNoSeLee,      kNoSeLee,     {6, "%03d"},      kSinTabla},
    {kTipoSuelo,                    kNoSeLee,      kNoSeLee,     {9, "%s"},        kSinTabla},
    {&CDatosLinea::Zona,            kNoSeLee,      kNoSeLee,     {11, "%02d"},     {2, "% 4d"}},
    {&CDatosLinea::Polig,           {13, 3, 17},   kNoSeLee,     {13, "%03d"},     {3, "% 4d"}},
    {&CDatosLinea::Parcela,         {16, 5, 17},   kNoSeLee,     {16, "%05d"},     {4, "% 6d"}},
    {&CSubparcela::letra,           {21, 4, 0},    {29, 4, 30},  {21, "% 4.4s"},   {5, "% 4.4s", kObligado}, kSinBlancos},
    {&CDatosLinea::letra,           kNoSeLee,      kNoSeLee,     kNoSeEscribe,     {5}},
});

inline constexpr auto kColumnasSuelo = std::to_array<CColumna<CSubparcela>>({
    {&CSubparcela::tipo,            {25, 1, 27},   {87, 1, 88},  {25, "%c"},       {6, "%c"}},
    {&CSubparcela::cFiscal,         {26, 2, 28},   kNoSeLee,     {26, "%-2s"},     {7, "%-2s"}},
    {&CDatosLinea::hectareas,       {32, 5, 34},   kNoSeLee,     {28, "%05d"},     kSinTabla},
    {&CDatosLinea::areas,           {37, 2, 39},   kNoSeLee,     {33, "%02d"},     kSinTabla},
    {&CDatosLinea::centiareas,      {39, 2, 41},   kNoSeLee,     {35, "%02d"},     kSinTabla},
    {&CSubparcela::superfic,        kNoSeLee,      {77, 10, 78}, kNoSeEscribe,     {8, "% 10d"}},
    {&CSubparcela::cE,              {41, 2, 43},   kNoSeLee,     {37, "%-2s"},     {9, "%-2s"}},
    {&CSubparcela::iE,              {43, 2, 45},   kNoSeLee,     {39, "%02d"},     {10, "% 3d"}},
    {&CSubparcela::ejer,            {28, 4, 30},   kNoSeLee,     {41, "%04d"},     {11, "% 5d"}},
    {&CSubparcela::cA,              {45, 2, 47},   {33, 2, 34},  {45, "%-2s"},     {12, "%-2s"}},
    {&CSubparcela::iA,              {47, 2, 49},   {35, 2, 36},  {47, "%02d"},     {13, "% 3d"}},
    {&CSubparcela::ref1,            {49, 7, 51},   kNoSeLee,     {70, "%-7s"},     {14, "%-7.7s"}},
    {&CSubparcela::ref2,            {56, 7, 58},   kNoSeLee,     {77, "%-7s"},     {15, "%-7.7s"}},
    {&CSubparcela::descCultivo,     kNoSeLee,      {37, 40, 38}, kNoSeEscribe,     kSinTabla},
});

inline constexpr auto kColumnasConstruccion = std::to_array<CColumna<CSubparcela>>({
    {&CSubparcela::compCons,        {25, 3, 27},   kNoSeLee,     {84, "%03d"},     {16, "% 4d"}},
    {&CSubparcela::descComponente,  {28, 14, 28},  kNoSeLee,     {87, "%-14s"},    {17, "%-14s"}},
    {&CSubparcela::largo,           {42, 3, 44},   kNoSeLee,     {101, "%03d"},    {18, "% 4d"}},
    {&CSubparcela::ancho,           {45, 3, 47},   kNoSeLee,     {104, "%03d"},    {19, "% 4d"}},
    {&CSubparcela::alto,            {48, 2, 50},   kNoSeLee,     {107, "%02d"},    {20, "% 3d"}},
    {&CSubparcela::volumen,         {50, 6, 52},   kNoSeLee,     {109, "%07d"},    {21, "% 8d"}},
    {&CSubparcela::uso,             kNoSeLee,      kNoSeLee,     {116, "%02d"},    {22, "% 3d"}},
    {&CSubparcela::cl,              kNoSeLee,      kNoSeLee,     {118, "%01d"},    {23, "% 2d"}},
    {&CSubparcela::mod,             kNoSeLee,      kNoSeLee,     {119, "%01d"},    {24, "% 2d"}},
    {&CSubparcela::tipoC,           kNoSeLee,      kNoSeLee,     {120, "%01d"},    {25, "% 2d"}},
    {&CSubparcela::usoP,            {71, 1, 73},   kNoSeLee,     {121, "%01d"},    {26, "% 2d"}},
    {&CDatosLinea::cSing,           {73, 3, 75},   kNoSeLee,     kNoSeEscribe,     kSinTabla},
    {&CSubparcela::cSing,           kNoSeLee,      kNoSeLee,     {122, "%c"},      {27, "%c"}},
    {&CSubparcela::añoC,            {56, 4, 58},   kNoSeLee,     {123, "%04d"},    {28, "% 5d"}},
    {&CSubparcela::añoR,            {66, 4, 68},   kNoSeLee,     {127, "%04d"},    {29, "% 5d"}},
    {&CSubparcela::iC,              {60, 1, 62},   kNoSeLee,     {131, "%c"},      {30, "%c"}},
    {&CSubparcela::iR,              {70, 1, 72},   kNoSeLee,     {132, "%c"},      {31, "%c"}},
    {&CSubparcela::estC,            {72, 1, 74},   kNoSeLee,     {133, "%c"},      {32, "%c"}},
    {&CSubparcela::exencion,        kNoSeLee,      kNoSeLee,     {134, "%c"},      {33, "%c"}},
    {&CSubparcela::añoEx,           kNoSeLee,      kNoSeLee,     {135, "%04d"},    {34, "% 5d"}},
});
// clang-format on

inline constexpr auto kColumnasSubparcela =
    Une(Une(kColumnasComunes, kColumnasSuelo), kColumnasConstruccion);
