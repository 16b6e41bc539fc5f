#pragma once

#include <span>

#include "platform/resource_form.h"

std::span<const CPlantillaDialogo> PlantillasDeDialogo();
