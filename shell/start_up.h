#pragma once

#include "platform/front_end.h"

/// Options that stand alone on a program's line and are answered with a text: --help and --version.
/// \return true where there was one
bool AtiendeOpcion(int argc, const char* const* argv);

/// The exit status of a program that has done all: 1 where what it said couldn't be written.
int ConSalida(int estado);

/// The whole life of the program behind a front end. Gives its exit status.
int EjecutaPrograma(CFrontal& frontal, int argc, const char* const* argv);
