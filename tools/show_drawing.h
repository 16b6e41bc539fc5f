#pragma once

/// Prints the drawing or topology that the only argument names, as the usage text says. Gives the
/// exit status.
int EnseñaDibujo(int argc, const char* const* argv);
