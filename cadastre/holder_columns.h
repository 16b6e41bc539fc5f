#pragma once

#include <array>

#include "cadastre/exchange_format.h"
#include "cadastre/holder.h"
#include "cadastre/record_types.h"

// How a holder stands in a line.

// clang-format off
inline constexpr auto kColumnasTitular = std::to_array<CColumna<CTitular>>({
    // field                read: column, width, least  list: the same    written: column, form   table: field, form
    {&CDatosLinea::Ger,     kNoSeLee,       kNoSeLee,       {0, "%03d"},      {0, "%03d"}},
    {&CDatosLinea::Mun,     kNoSeLee,       kNoSeLee,       {3, "%03d"},      {1, "%03d"}},
    {&CDatosLinea::EMenor,  kNoSeLee,       kNoSeLee,       {6, "%03d"},      kSinTabla},
    {kTipoTitular,          kNoSeLee,       kNoSeLee,       {9, "%s"},        kSinTabla},
    {&CTitular::NumOrden,   {11, 7, 12},    {8, 7, 9},      {11, "%07d"},     {2, "% 8d", kObligado}},
    {&CDatosLinea::partici, {18, 5, 19},    kNoSeLee,       kNoSeEscribe,     kSinTabla},
    {&CTitular::Nombre,     {23, 60, 24},   {49, 62, 50},   {19, "%-60.60s"}, {3, "%-60s", kObligado}, kSinCola},
    {&CTitular::CJurid,     {83, 1, 84},    {111, 1, 112},  {79, "%c"},       {4, "%c"}},
    {&CTitular::DNI,        {84, 8, 85},    {40, 8, 41},    {80, "%-8.8s"},   {5, "%-8s", kObligado}},
    {&CTitular::letra,      {92, 1, 93},    {48, 1, 49},    {88, "%c"},       {6, "%c"}},
    {"00000",               kNoSeLee,       kNoSeLee,       {89, "%s"},       kSinTabla},
    {&CTitular::Exen,       {93, 1, 94},    kNoSeLee,       {141, "%c"},      {7, "%c"}},
    {&CTitular::Del,        {94, 2, 95},    {112, 2, 113},  {130, "%02d"},    {8, "%03d"}},
    {&CTitular::MunDom,     {96, 3, 97},    {129, 3, 130},  {132, "%03d"},    {9, "%03d"}},
    {&CTitular::sig,        {99, 5, 100},   {167, 5, 168},  {95, "%-2.2s"},   {10, "%-2.2s"}},
    {&CTitular::nombreVia,  {104, 25, 105}, {172, 25, 173}, {97, "%-15.15s"}, {11, "%-25s"}, kSinCola},
    {&CTitular::numPol,     {129, 4, 130},  {197, 4, 198},  {117, "%04d"},    {12, "% 5d"}},
    {&CTitular::bloq,       {144, 4, 145},  kNoSeLee,       {122, "%-2.2s"},  {13, "%-2s"}},
    {&CTitular::esc,        {173, 2, 174},  {202, 2, 203},  {124, "%-2.2s"},  {14, "%-2s"}},
    {&CTitular::plant,      {175, 3, 176},  {204, 3, 205},  {126, "%-2.2s"},  {15, "%-2s"}},
    {&CTitular::puert,      {178, 3, 179},  {207, 3, 208},  {128, "%-2.2s"},  {16, "%-3s"}},
    {&CTitular::CP,         {181, 5, 182},  {210, 5, 211},  {135, "%05d"},    {17, "%05d"}},
});
// clang-format on
