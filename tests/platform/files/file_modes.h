#pragma once

#include "platform/files/cfile.h"

// How the tests of files open theirs.
inline constexpr UINT kLee = CFile::modeRead;
inline constexpr UINT kEscribe = CFile::modeCreate | CFile::modeWrite;
inline constexpr UINT kRegistro = kEscribe | CFile::modeInPlace;
