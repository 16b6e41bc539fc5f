#pragma once

#include <string>

/// From here on the user's part of the registry is an empty one of the test's own.
void EmpiezaRegistroPropio(const std::wstring& nombre);
/// It is the user's again, and the test's is gone.
void AcabaRegistroPropio(const std::wstring& nombre);
