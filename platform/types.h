#pragma once

#include <cstdint>

// The framework's basic types, with the sizes that they have on every system of ours.
using BOOL = int;
using UINT = unsigned int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
