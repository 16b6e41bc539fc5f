#pragma once

#include <filesystem>
#include <vector>

#include "batch/batch_options.h"
#include "batch/job_states.h"

namespace lote {

/// GNU parallel. Raises CLineaMala where it isn't there.
std::filesystem::path Parallel();

/// Raises CLineaMala where a part that an earlier run gave out is still at work, which it is when
/// that run was killed.
void ExigePartesLibres(const CEstados& estados);

/// Has the jobs done on several machines: in parts, each of which a batch of its own works off
/// where GNU parallel sends it. What parallel said stands in the results, and on the standard error
/// where it failed. Raises CFileException.
void HazEnMaquinas(const std::vector<const CTrabajo*>& trabajos, const COpciones& opciones,
                   const std::filesystem::path& parallel, CEstados& estados);

} // namespace lote
