#pragma once

#include <array>

#include "platform/ansi.h"

// What the people, streets, places and crops of a synthetic municipality are called.

namespace sintetico {

inline constexpr std::array kApellidos = {
    "GARCÍA"_ansi,   "NÚÑEZ"_ansi,     "MUÑOZ"_ansi,     "IBÁÑEZ"_ansi,  "PEÑA"_ansi,
    "LÓPEZ"_ansi,    "PÉREZ"_ansi,     "GÓMEZ"_ansi,     "MARTÍN"_ansi,  "SÁNCHEZ"_ansi,
    "ROMERO"_ansi,   "ORTEGA"_ansi,    "CAÑIZARES"_ansi, "MORENO"_ansi,  "ESPAÑA"_ansi,
    "BOLAÑOS"_ansi,  "HIDALGO"_ansi,   "VELÁZQUEZ"_ansi, "ZURITA"_ansi,  "DEL POZO"_ansi,
    "ACUÑA"_ansi,    "FERNÁNDEZ"_ansi, "DÍAZ"_ansi,      "CASTAÑO"_ansi, "SERRANO"_ansi,
    "BLÁZQUEZ"_ansi, "TOLEDANO"_ansi,  "YÁÑEZ"_ansi,     "ROJO"_ansi,    "DE LA FUENTE"_ansi,
    "GALÁN"_ansi,    "ARRIBAS"_ansi,   "QUIÑONES"_ansi,  "SORIA"_ansi,   "MÉNDEZ"_ansi,
    "CORDERO"_ansi,  "PIÑA"_ansi,      "AGUADO"_ansi,    "BRAVO"_ansi,   "JIMÉNEZ"_ansi,
};
inline constexpr std::array kNombres = {
    "MARÍA"_ansi,      "JOSÉ"_ansi,   "BEGOÑA"_ansi,  "ANTONIO"_ansi, "ÁNGELA"_ansi,
    "ÍÑIGO"_ansi,      "LUCÍA"_ansi,  "JESÚS"_ansi,   "PILAR"_ansi,   "RAMÓN"_ansi,
    "MERCEDES"_ansi,   "JULIÁN"_ansi, "TERESA"_ansi,  "AGUSTÍN"_ansi, "ELVIRA"_ansi,
    "TOMÁS"_ansi,      "ROCÍO"_ansi,  "NICOLÁS"_ansi, "INÉS"_ansi,    "FÉLIX"_ansi,
    "CONCEPCIÓN"_ansi, "ANDRÉS"_ansi, "SOLEDAD"_ansi, "VÍCTOR"_ansi,  "AMPARO"_ansi,
    "GREGORIO"_ansi,
};
inline constexpr std::array kCalles = {
    "MAYOR"_ansi,         "DE LA IGLESIA"_ansi,  "DOÑA ELVIRA"_ansi,
    "CERVANTES"_ansi,     "DEL CAÑO"_ansi,       "LA CONSTITUCIÓN"_ansi,
    "SAN ANTÓN"_ansi,     "REAL"_ansi,           "DE LOS OLIVOS"_ansi,
    "RAMÓN Y CAJAL"_ansi, "DEL POZO DULCE"_ansi, "NUESTRA SEÑORA DE GRACIA"_ansi,
    "TOLEDO"_ansi,        "DE LA PEÑUELA"_ansi,
};
inline constexpr std::array kVias = {"CL", "CL", "CL", "AV", "PZ", "PS", "CM", "CR"};
inline constexpr std::array kParajes = {
    "LA CAÑADA"_ansi,    "CERRO DEL ÁGUILA"_ansi, "VEGA BAJA"_ansi,        "EL MAJUELO"_ansi,
    "LAS ERAS"_ansi,     "PEÑA NEGRA"_ansi,       "CAMINO DE TOLEDO"_ansi, "LA DEHESILLA"_ansi,
    "EL OLIVARÓN"_ansi,  "FUENTE FRÍA"_ansi,      "VALDEPEÑITAS"_ansi,     "LOS LLANOS"_ansi,
    "EL TEJAR"_ansi,     "LA MUÑECA"_ansi,        "ARROYO SECO"_ansi,      "HOYA DEL NIÑO"_ansi,
    "EL CARRASCAL"_ansi, "LAS VIÑAS VIEJAS"_ansi, "PRADO REDONDO"_ansi,
};

struct CCultivo {
    const char* clave;
    const char* nombre;
};
inline constexpr std::array kCultivos = {
    CCultivo{"C-", "LABOR SECANO"},    CCultivo{"CR", "LABOR REGADÍO"_ansi},
    CCultivo{"O-", "OLIVAR SECANO"},   CCultivo{"V-", "VIÑA SECANO"_ansi},
    CCultivo{"E-", "PASTOS"},          CCultivo{"MB", "MONTE BAJO"},
    CCultivo{"MM", "PINAR MADERABLE"}, CCultivo{"AM", "ALMENDRO SECANO"},
    CCultivo{"I-", "IMPRODUCTIVO"},    CCultivo{"FR", "FRUTALES REGADÍO"_ansi},
};
inline constexpr int kIntensidades = 3;
inline constexpr std::array kConstrucciones = {"NAVE AGRÍCOLA"_ansi, "CASETA APEROS"_ansi,
                                               "CORRAL"_ansi, "POZO"_ansi};

} // namespace sintetico
