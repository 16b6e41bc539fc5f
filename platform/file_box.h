#pragma once

#include <filesystem>

#include "platform/cstring.h"

/// The folder that the box for choosing a file opens: that of the path in the field, else the last
/// one chosen from. The field's is a whole path.
std::filesystem::path CarpetaInicial(const CString& enCampo, const CString& ultima);
