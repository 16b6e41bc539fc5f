#pragma once

#include <span>
#include <vector>

#include "evidence/report/findings/changes/change_list.h"

namespace informe {

/// Which municipalities are compared: those of the newer state, or all.
enum class Municipios { DelNuevo, Todos };

/// Compares two states of the municipalities that the newer one has. Both must outlive the answer.
/// Nothing in common but a municipality makes all parcels new and gone; not even that leaves all of
/// the older one's in `deOtroMunicipio`.
CCambios Compara(const CEstadoMunicipio& antes, const CEstadoMunicipio& ahora,
                 Municipios cuales = Municipios::DelNuevo);

/// A subparcel that differs: null on the side that lacks it.
struct CCambioSubparcela {
    const CEstadoMunicipio::CSubparcela* antes;
    const CEstadoMunicipio::CSubparcela* ahora;
};
/// Those of a parcel, by letter; several of one letter go by their order.
std::vector<CCambioSubparcela>
CambiosDeSubparcelas(std::span<const CEstadoMunicipio::CSubparcela> antes,
                     std::span<const CEstadoMunicipio::CSubparcela> ahora);

} // namespace informe
