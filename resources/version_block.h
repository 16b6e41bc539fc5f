#pragma once

#include "platform/resource_form.h"

/// The program's version block. The build tells what stands in it.
const CRecursoVersion& BloqueDeVersion();
