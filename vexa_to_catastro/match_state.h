#pragma once

#include <vector>

#include "platform/cstring.h"
#include "vexa_libs/drawing.h"
#include "vexa_libs/ring_index.h"

// What the matching of the drawings with the database keeps while it runs.

/// A subparcel that a polygon touched: index of its parcel, and its own in the parcel.
struct CSubparcelaVista {
    int parcela;
    int subparcela;

    friend auto operator<=>(const CSubparcelaVista&, const CSubparcelaVista&) = default;
};

/// Indexes of what the polygons of one municipality touched; a parcel in several pieces stands here
/// several times.
struct CVistas {
    std::vector<int> ParcelasVistas;
    std::vector<CSubparcelaVista> SubparcelasVistas;
};

/// What the parcels of one entry of the list leave for its subparcels. It lives as long as the
/// entry is matched.
struct CPoligonoEnCurso {
    CString entrada;
    vexageo::CDibujoVexa LineasParcelas; ///< boundary of each parcel that was accepted
    vexageo::CDibujoVexa TextosParcelas; ///< its label, at the same index
    std::vector<int> numeros;            ///< and the number that the label gives
    vexageo::CIndiceAnillos indice;      ///< of the boundaries, the smallest first

    /// Number of the smallest parcel that holds the point, its boundary included, -1 if none does.
    int ParcelaEn(const vexageo::CPunto<int>& punto) const
    {
        const int i = indice.Busca(punto);
        return i < 0 ? -1 : numeros[static_cast<std::size_t>(i)];
    }
};
