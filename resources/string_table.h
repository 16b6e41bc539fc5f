#pragma once

#include <span>

#include "platform/resource_form.h"

/// All strings with their fixed numbers, the messages of the catalogue among them.
std::span<const CCadenaRecurso> TablaDeCadenas();
