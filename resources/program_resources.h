#pragma once

#include "platform/resource_form.h"

/// The program's strings, dialog templates, drawings and version block, handed to the application
/// at its start.
const CRecursos& RecursosDelPrograma();
