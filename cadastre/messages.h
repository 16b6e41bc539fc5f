#pragma once

#include "platform/ansi.h"
#include "platform/types.h"

// The catalogue of messages. It is known when the program is built, so that raising a message with
// the wrong arguments doesn't compile.

/// Numbers of the messages in the string table. They never change: a technician's notes and the
/// help name them.
enum Mensaje : UINT {
    kResumenCatastro = 155,
    kTitularNoEncontrado = 156,     // E101
    kParajeNoEncontrado = 157,      // E102
    kSubparcelaSinParcela = 158,    // E103
    kCotitularSinParcela = 159,     // E104
    kCotitularSinTitular = 160,     // E105
    kParcelaNoEnBase = 161,         // E106
    kParFueraDeFecha = 162,         // E107
    kSubFueraDeFecha = 163,         // E108
    kSubparcelaFuera = 164,         // E109
    kSubparcelaNoEnBase = 165,      // E110
    kParcelaNoEnGrafico = 166,      // E111
    kSubparcelaNoEnGrafico = 167,   // E113
    kSuperficieDifiere = 168,       // E112
    kSinSubparcelas = 169,          // E201
    kSinPropietarios = 170,         // E202
    kSubparcelaDuplicada = 171,     // W301
    kModuloRepetido = 172,          // E203
    kMismoNombre = 173,             // E204
    kMismoDNI = 174,                // E205
    kSinTitular = 175,              // W302
    kParcelaRepetida = 176,         // E206
    kParcelaNoValida = 177,         // E207
    kSubparcelaRepetida = 178,      // E208
    kSubparcelaSinSuperficie = 179, // E209
    kMismoIndice = 180,             // E210
    kYaCotitular = 181,             // E211
    kYaTitular = 182,               // E212
    kParcelaNoInsertada = 183,      // E213
    kSinNumImputa = 184,            // E214
    kResumenVexa = 186,
    kAbstractaDifiere = 187,    // W303
    kSuperficieCorregida = 188, // W304
};

enum class Contador { Ninguno, Errores, Warnings };

/// One message: its number, the counter that it raises, and its text with printf forms.
struct CMensaje {
    Mensaje numero;
    Contador contador;
    const char* texto; ///< code page 1252
};

// In the order of the numbers. Some raise no counter of their own: E107 and E108 are shown in a
// box; E214 is counted by the caller of CBaseCatastro::AsignaNumOrden; the summaries end a run.
// E208 and E210 are never raised and only keep their numbers taken.
// clang-format off
inline constexpr CMensaje kCatalogo[] = {
    {kResumenCatastro, Contador::Ninguno,
     "Proceso finalizado con éxito.\n\nNúmero de municipios leidos  : % 6d\nNúmero de parcelas leidas    : % 6d\nNúmero de titulares leidos   : % 6d\n\nNúmero de errores producidos : % 6d\nNúmero de warnings producidos : % 6d\n"_ansi},
    {kTitularNoEncontrado, Contador::Errores,
     "E101: Titular % 6d no encontrado en parcela % 4d % 6d\n"_ansi},
    {kParajeNoEncontrado, Contador::Errores,
     "E102: Paraje % 4d no encontrado en parcela % 4d % 6d\n"_ansi},
    {kSubparcelaSinParcela, Contador::Errores,
     "E103: Parcela % 4d % 6d inexistente en subparcela %s\n"_ansi},
    {kCotitularSinParcela, Contador::Errores,
     "E104: Parcela % 4d % 6d no encontrada en el fichero de cotitulares.\n"_ansi},
    {kCotitularSinTitular, Contador::Errores,
     "E105: Titular % 6d no encontrado en el fichero de cotitulares.\n"_ansi},
    {kParcelaNoEnBase, Contador::Errores,
     "E106: La parcela % 4d % 6d en gráfico no tiene correspondencia en base de datos\n"_ansi},
    {kParFueraDeFecha, Contador::Ninguno,
     "E107: Archivo topológico del polígono %s.PAR fuera de fecha\n"_ansi},
    {kSubFueraDeFecha, Contador::Ninguno,
     "E108: Archivo topológico del polígono %s.SUB fuera de fecha\n"_ansi},
    {kSubparcelaFuera, Contador::Errores,
     "E109: La subparcela % 4s de coordenadas %.2lf %.2lf no se encuentra en ninguna parcela\n"_ansi},
    {kSubparcelaNoEnBase, Contador::Errores,
     "E110: La subparcela % 4d % 6d % 4s en gráfico no tiene correspondencia en base de datos\n"_ansi},
    {kParcelaNoEnGrafico, Contador::Errores,
     "E111: La parcela % 4d % 6d en base de datos no tiene correspondencia en gráfico\n"_ansi},
    {kSubparcelaNoEnGrafico, Contador::Errores,
     "E113: La subparcela % 4d % 6d % 4s en base de datos no tiene correspondencia en gráfico\n"_ansi},
    {kSuperficieDifiere, Contador::Errores,
     "E112: La parcela % 4d % 6d difiere en superficie % 8d de sus subparcelas % 8d\n"_ansi},
    {kSinSubparcelas, Contador::Errores,
     "E201: Parcela % 4d % 6d sin subparcelas\n"_ansi},
    {kSinPropietarios, Contador::Errores,
     "E202: Parcela % 4d % 6d sin propietarios\n"_ansi},
    {kSubparcelaDuplicada, Contador::Warnings,
     "W301: La subparcela % 4d % 6d % 4s está duplicada\n"_ansi},
    {kModuloRepetido, Contador::Errores,
     "E203: El módulo %s con calificación %s e intensidad %d ya insertado.\n"_ansi},
    {kMismoNombre, Contador::Errores,
     "E204: Ya existe otro titular con el mismo nombre y distinto DNI para %s\n"_ansi},
    {kMismoDNI, Contador::Errores,
     "E205: Ya existe otro titular con el mismo DNI y distinto nombre que %s\n"_ansi},
    {kSinTitular, Contador::Warnings,
     "W302: Parcela % 4d % 6d no tiene titular\n"_ansi},
    {kParcelaRepetida, Contador::Errores,
     "E206: La parcela % 4d % 6d ya existe\n"_ansi},
    {kParcelaNoValida, Contador::Errores,
     "E207: Referencia de parcela % 4d % 6d no válida\n"_ansi},
    {kSubparcelaRepetida, Contador::Errores,
     "E208: La subparcela % 4d % 6d % 4s ya existe\n"_ansi},
    {kSubparcelaSinSuperficie, Contador::Errores,
     "E209: Subparcela % 4d % 6d %s con superficie 0\n"_ansi},
    {kMismoIndice, Contador::Errores,
     "E210: Existe otro titular con el mismo índice en la parcela % 4d % 6d el titular %s\n"_ansi},
    {kYaCotitular, Contador::Errores,
     "E211: Ya existía como cotitular en la parcela % 4d % 6d el titular %s\n"_ansi},
    {kYaTitular, Contador::Errores,
     "E212: El cotitular %s ya era titular en la parcela % 4d % 6d\n"_ansi},
    {kParcelaNoInsertada, Contador::Errores,
     "E213: La parcela % 4d % 6d no pudo ser insertada.\n"_ansi},
    {kSinNumImputa, Contador::Ninguno,
     "E214: El cotitular %s no tiene asignado número imputación. Se le asigna el número %d.\n"_ansi},
    {kResumenVexa, Contador::Ninguno,
     "Proceso finalizado con éxito.\n\nMuncipio leido  : %03d %03d\nNúmero de parcelas leidas    : % 6d\nNúmero de titulares leidos   : % 6d\n\nNúmero de errores producidos : % 6d\nNúmero de warnings producidos : % 6d\n"_ansi},
    {kAbstractaDifiere, Contador::Warnings,
     "W303: La subparcela abstracta % 4d % 6d % 4s difiere en superficie % 8d del gráfico\n"_ansi},
    {kSuperficieCorregida, Contador::Warnings,
     "W304: La parcela % 4d % 6d difiere en superficie % 8d de sus subparcelas % 8d. Se asigna nueva superficie a la parcela\n"_ansi},
};
// clang-format on
