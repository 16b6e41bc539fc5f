#pragma once

#include <deque>
#include <string_view>
#include <vector>

#include "cadastre/database.h"
#include "cadastre/message_catalogue.h"
#include "catastro_to_vexa/record_queue.h"

// What an exchange file leaves pending until its last line is read. A record may name another one
// that stands further on, so parcels, subparcels and links wait.

/// What a PR line says beyond its parcel.
struct CVinculoParcela {
    int numImputa = 0;
    int Polig = 0;
    int Parcela = 0;
    int numParaje = 0;
    CString Tit;                ///< empty for a line too short to name a holder
    int indice = kNoEncontrado; ///< of the parcel, once it is settled
};

/// The parcel that an SP or SC line names.
struct CRefSubparcela {
    int Polig = 0;
    int Parcela = 0;

    friend bool operator==(const CRefSubparcela&, const CRefSubparcela&) = default;
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
    CLecturaCatastro(CBaseCatastro& baseQueLlena, const CAvisos& avisosDelRun)
        : base(baseQueLlena), avisos(avisosDelRun)
    {
    }

    CMunicipio& Municipio() { return base.DameMunicipio(municipioActual); }

    CBaseCatastro& base;
    CAvisos avisos;
    int municipioActual = -1; ///< index of the municipality of the last line taken
    // A record and what its line says beyond it stand at the same position of two queues: parcels
    // and their links, then subparcels and their references.
    CCola<CParcela> parcelasLeidas;
    std::deque<CVinculoParcela> vinculosParcela;
    CCola<CSubparcela> subparcelasLeidas;
    std::deque<CRefSubparcela> refSubparcelas;
    std::vector<CTitularLeido> titularesLeidos;
};

/// Does what the line's record type calls for; a line of an unknown type does nothing. A module, a
/// holder or a place enters the municipality of the line at once, with its messages.
/// \param linea  keeps its line end
void TomaRegistro(std::string_view linea, CLecturaCatastro& lectura);
