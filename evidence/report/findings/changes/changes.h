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

/// Finds which parcels came of which, polygon by polygon, and notes it in the changes, whose
/// parcels are in order. A parcel that is gone has the surface of a new one (another number); what
/// one parcel lost is the sum of new ones (a split); what one gained is the sum of ones that are
/// gone (a join). Half a square metre of difference for each surface is taken for rounding. Runs of
/// numbers come first; other choices count where hardly one fits by chance. Each parcel is part of
/// one.
void BuscaRepartos(CCambios& cambios);

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
