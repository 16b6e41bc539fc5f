#pragma once

#include "batch/job_states.h"

namespace lote {

/// Has the report sum the results up, and prints what it says. Where there is no such program, or
/// it can't be started, that is told: it changes nothing of what became of the jobs.
void Resume(const CEstados& estados);

} // namespace lote
