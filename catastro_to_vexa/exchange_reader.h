#pragma once

#include <deque>
#include <string_view>
#include <vector>

#include "cadastre/database.h"
#include "cadastre/exchange_lines.h"
#include "cadastre/message_catalogue.h"
#include "catastro_to_vexa/line_queue.h"
#include "catastro_to_vexa/seen_input.h"

// What an exchange file leaves pending until its last line is read. A record may name another one
// that stands further on, so parcels, subparcels and links wait.

static_assert(kLineaCatastro <= CColaLineas::kMasLarga);

/// What a PR line says beyond its parcel, once that was read.
struct CVinculoParcela {
    int numImputa = 0;
    int Polig = 0;
    int Parcela = 0;
    CString Tit;                ///< empty for a line too short to name a holder
    int indice = kNoEncontrado; ///< of the parcel; a dropped one has none
};

/// What a TL line says beyond its holder.
struct CTitularLeido {
    int indice = 0;    ///< of the holder, in the municipality of the line
    int NumOrden = 0;  ///< as the line gave it; the stored holder may have another
    int partici = 0;   ///< share of the parcels that name the number
    int municipio = 0; ///< index of the line's municipality
};

/// State of the reading of one exchange file. The base must outlive it.
struct CLecturaCatastro {
    CMunicipio& Municipio() { return base.DameMunicipio(municipioActual); }

    CBaseCatastro& base;
    CAvisos avisos;
    CEntradaVista& vista;
    int municipioActual = -1;           ///< index of the municipality of the last line taken
    CColaLineas parcelasLeidas = {};    ///< PR lines
    CColaLineas subparcelasLeidas = {}; ///< SP and SC lines
    std::deque<CVinculoParcela> vinculosParcela = {}; ///< of the PR lines that are read
    std::vector<CTitularLeido> titularesLeidos = {};
};

/// Does what the line's record type calls for; a line of an unknown type does nothing. A module, a
/// holder or a place enters the municipality of the line at once, with its messages.
/// \param linea  keeps its line end
void TomaRegistro(std::string_view linea, CLecturaCatastro& lectura);
