#pragma once

#include "evidence/report/findings/changes/change_list.h"

namespace informe {

/// Finds which parcels came of which, polygon by polygon, and notes it in the changes, whose
/// parcels are in order. A parcel that is gone has the surface of a new one (another number); what
/// one parcel lost is the sum of new ones (a split); what one gained is the sum of ones that are
/// gone (a join). Half a square metre of difference for each surface is taken for rounding. Runs of
/// numbers come first; other choices count where hardly one fits by chance. Each parcel is part of
/// one.
void BuscaRepartos(CCambios& cambios);

} // namespace informe
