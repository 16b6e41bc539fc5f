#pragma once

#include <optional>
#include <span>
#include <string>

#include "platform/front_end.h"

/// Options that stand alone on a program's line and are answered with a text: --help or -h,
/// --version. Another first word that begins with two hyphens is told on the standard error.
/// \param argumentos  the line's, the program's own name first
/// \return the exit status; nothing where the line has no option
std::optional<int> AtiendeOpcion(std::span<const std::string> argumentos);

/// The exit status of a program that has done all: 1 where what it said couldn't be written.
int ConSalida(int estado);

/// The whole life of the program behind a front end. Gives its exit status (exit_status.h).
/// \param argumentos  the line's, the program's own name first
int EjecutaPrograma(CFrontal& frontal, std::span<const std::string> argumentos);
