#pragma once

#include <span>

#include "platform/resource_form.h"

/// The templates of all dialogs; they live as long as the program.
std::span<const CPlantillaDialogo> PlantillasDeDialogo();
