#pragma once

#include <array>

#include "cadastre/exchange_format.h"
#include "cadastre/parcel.h"
#include "cadastre/record_types.h"

// How a parcel stands in a line. A line must be longer than 71 characters to say anything of its
// holder and place. A row names its numbers a second time as they stand there, for the messages.

// clang-format off
inline constexpr auto kColumnasParcela = std::to_array<CColumna<CParcela>>({
    // field                        read: column, width, least  list: the same  written: column, form  table: field, form
    {&CDatosLinea::Ger,             kNoSeLee,     kNoSeLee,     {0, "%03d"},       {0, "%03d"}},
    {&CDatosLinea::Mun,             kNoSeLee,     kNoSeLee,     {3, "%03d"},       {1, "%03d"}},
    {&CDatosLinea::EMenor,          kNoSeLee,     kNoSeLee,     {6, "%03d"},       kSinTabla},
    {kTipoParcela,                  kNoSeLee,     kNoSeLee,     {9, "%s"},         kSinTabla},
    {&CParcela::Zona,               {11, 2, 13},  {19, 2, 21},  {11, "%02d"},      {2, "% 4d", kObligado}},
    {&CParcela::Polig,              {13, 3, 15},  {21, 3, 23},  {13, "%03d"},      {3, "% 4d", kObligado}},
    {&CParcela::Parcela,            {16, 5, 18},  {24, 5, 26},  {16, "%05d"},      {4, "% 6d", kObligado}},
    {&CDatosLinea::Polig,           kNoSeLee,     kNoSeLee,     kNoSeEscribe,      {3}},
    {&CDatosLinea::Parcela,         kNoSeLee,     kNoSeLee,     kNoSeEscribe,      {4}},
    {&CDatosLinea::hectareas,       {21, 5, 23},  kNoSeLee,     {21, "%05d"},      kSinTabla},
    {&CDatosLinea::areas,           {26, 2, 28},  kNoSeLee,     {26, "%02d"},      kSinTabla},
    {&CDatosLinea::centiareas,      {28, 2, 30},  kNoSeLee,     {28, "%02d"},      kSinTabla},
    {&CParcela::Superficie,         kNoSeLee,     {67, 10, 69}, kNoSeEscribe,      {5, "% 10d"}},
    {&CParcela::valorCatastral,     {30, 12, 32}, kNoSeLee,     kNoSeEscribe,      {6, "% 13d"}},
    {&CParcela::añoVal,             {42, 4, 44},  kNoSeLee,     kNoSeEscribe,      {7, "% 5d"}},
    {&CDatosLinea::numImputa,       {46, 7, 72},  kNoSeLee,     {30, "%07d"},      {8, "% 8d", kObligado}},
    {&CDatosLinea::Tit,             {53, 2, 72},  {65, 2, 66},  {37, "%-2.2s"},    kSinTabla},
    {&CDatosLinea::Tit,             kNoSeLee,     kNoSeLee,     kNoSeEscribe,      {9, "%-2s", kObligado}},
    {&CDatosLinea::partici,         kNoSeLee,     kNoSeLee,     {39, "%05d"},      {10, "% 6d", kObligado}},
    {&CDatosLinea::numVinculos,     kNoSeLee,     kNoSeLee,     {44, "%03d"},      kSinTabla},
    {&CDatosLinea::gruposVinculos,  kNoSeLee,     kNoSeLee,     {47, "%02d"},      kSinTabla},
    {&CParcela::numOrtofoto,        {55, 10, 57}, kNoSeLee,     {58, "%-10.10s"},  {11, "%-10.10s"}},
    {&CParcela::x,                  {65, 3, 67},  kNoSeLee,     {68, "%03d"},      {12, "% 4d"}},
    {&CParcela::y,                  {68, 3, 70},  kNoSeLee,     {71, "%03d"},      {13, "% 4d"}},
    {&CDatosLinea::nombreParaje,    kNoSeLee,     {35, 30, 0},  kNoSeEscribe,      kSinTabla},
    {&CDatosLinea::numParaje,       {71, 5, 72},  kNoSeLee,     {94, "%05d"},      {14, "% 6d"}},
    {&CParcela::clase,              kNoSeLee,     kNoSeLee,     {108, "%c"},       kSinTabla},
    {&CParcela::subclase,           kNoSeLee,     kNoSeLee,     {109, "%02d"},     kSinTabla},
    {&CParcela::claveConc,          {76, 1, 78},  kNoSeLee,     {111, "%c"},       {15, "%c"}},
});
// clang-format on
