#pragma once

#include "platform/resources.h"

/// The program's strings, dialog templates and version block, handed to the application at its
/// start.
const CRecursos& RecursosDelPrograma();
