#pragma once

#include "platform/resource_form.h"

/// The program's version block; what stands in it is told by the build, in one place.
const CRecursoVersion& BloqueDeVersion();
