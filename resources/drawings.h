#pragma once

#include <span>

#include "platform/resource_form.h"

/// The program's pictures and icons as SVG; they live as long as the program.
std::span<const CDibujoRecurso> DibujosDelPrograma();
