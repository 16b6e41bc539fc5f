#pragma once

/// Prints the drawing or topology that the only argument names, as the usage text says.
/// \return the exit status: 0; 1 where faults were found; 2 where the file can't be read,
///         or what it says can't be printed
int EnseñaDibujo(int argc, const char* const* argv);
