#pragma once

#include "batch/batch_options.h"

namespace lote {

/// The exit status of the batch.
enum EstadoDeSalida { kHecho = 0, kAlgunFallo = 1, kMal = 2, kDetenido = 130 };

/// Works off the jobs of a table: here, so many at a time, or on the machines that the line names.
/// When it is asked to end it starts no more, has those at work end, and writes down what became of
/// all. Raises CLineaMala before anything is begun, and CFileException where the results can't be
/// written.
EstadoDeSalida Ejecuta(const COpciones& opciones);

} // namespace lote
