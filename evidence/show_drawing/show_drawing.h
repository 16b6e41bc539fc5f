#pragma once

#include <string>
#include <vector>

/// Prints the drawing or topology that the only argument names, as the usage text says.
/// \param argumentos  with the program's name in front
/// \return the exit status: 0; 1 where faults were found; 2 where the file can't be read,
///         or what it says can't be printed
int EnseñaDibujo(const std::vector<std::string>& argumentos);
