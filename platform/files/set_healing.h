#pragma once

#include <vector>

#include "platform/cstring.h"

/// Heals what killed runs left in the folders of these files: by the diary of a set of outputs
/// (output_set.h) that took only some of its places, its targets get back what they held; then
/// outputs that were never finished, and what targets held before, are put away. What belongs to a
/// run that is alive stays, and so does what a diary tells that its owner couldn't have done
/// himself. Empty names are passed over.
/// Raises CFileException where a folder or a diary can't be read, or a target can't get back what
/// it held; the diary stays then, for whoever comes next. A folder that isn't there or is forbidden
/// is passed over: whoever opens a file there will be told.
void SanaConjuntos(const std::vector<CString>& nombres);
