#pragma once

#include <vector>

#include "cadastre/message_catalogue.h"
#include "cadastre/municipality.h"
#include "vexa_libs/drawing.h"
#include "vexa_libs/ring_index.h"

// What the matching of the drawings with the database keeps while it runs.

/// A subparcel that a polygon touched: index of its parcel, and its own in the parcel.
struct CSubparcelaVista {
    int parcela;
    int subparcela;

    friend auto operator<=>(const CSubparcelaVista&, const CSubparcelaVista&) = default;
};

/// Alive for the matching of one municipality.
struct CCruce {
    CAvisos avisos;
    CMunicipio& municipio;
    /// Indexes of what a polygon touched; a parcel in several pieces stands here several times.
    std::vector<int> ParcelasVistas;
    std::vector<CSubparcelaVista> SubparcelasVistas;
};

/// Alive for one entry of the list: what its parcels leave for its subparcels.
struct CPoligonoEnCurso {
    CString entrada;
    vexageo::CDibujoVexa LineasParcelas; ///< boundary of each parcel that was accepted
    vexageo::CDibujoVexa TextosParcelas; ///< its label, at the same index
    vexageo::CIndiceAnillos indice;      ///< of the boundaries, the smallest first
};
