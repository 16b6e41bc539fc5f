#pragma once

#include <span>

#include "platform/resources.h"

/// All strings with their fixed numbers, the messages of the catalogue among them.
std::span<const CCadenaRecurso> TablaDeCadenas();
