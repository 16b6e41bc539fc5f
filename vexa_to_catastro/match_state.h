#pragma once

#include <vector>

#include "platform/cstring.h"
#include "vexa_libs/ccadena.h"
#include "vexa_libs/drawing.h"
#include "vexa_libs/ring_index.h"
#include "vexa_to_catastro/ortho_zones.h"

// What the matching of the drawings with the database knows while it runs, and hands from stage to
// stage. Nothing of it outlives the run.

/// A subparcel that a polygon touched: index of its parcel, and its own in the parcel.
struct CSubparcelaVista {
    int parcela;
    int subparcela;

    friend auto operator<=>(const CSubparcelaVista&, const CSubparcelaVista&) = default;
};

/// What one run of the matching knows of the whole municipality.
struct CCruce {
    CZonasOrto ortos; ///< loaded before the first polygon, read by all of them
    // Indexes of what the polygons touched; a parcel in several pieces stands here several times.
    std::vector<int> ParcelasVistas;
    std::vector<CSubparcelaVista> SubparcelasVistas;
};

/// What one entry of the list knows, as long as it is matched.
struct CPoligonoEnCurso {
    CString entrada;

    // The label read last, and the parcel's number that it gives, -1 before the first one. A record
    // that is no parcel, such as an island behind a parcel without a label, speaks of that parcel.
    vexageo::CTexto<int> rotulo = vexageo::CTexto<int>("nuevo");
    int parcela = -1;

    // What the parcels leave for the subparcels.
    vexageo::CDibujoVexa LineasParcelas; ///< boundary of each parcel that was accepted
    vexageo::CDibujoVexa TextosParcelas; ///< its label, at the same index
    vexageo::CIndiceAnillos indice;      ///< of the boundaries, the smallest first

    /// Number of the smallest parcel that holds the point, its boundary included, -1 if none does.
    int ParcelaEn(const vexageo::CPunto<int>& punto) const
    {
        const int i = indice.Busca(punto);
        return i < 0 ? -1 : LeeEntero(TextosParcelas.Texto(static_cast<unsigned>(i)).Texto());
    }
};
