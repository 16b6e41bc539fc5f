#pragma once

#include <span>

#include "platform/resources.h"

std::span<const CDibujoRecurso> DibujosDelPrograma();
