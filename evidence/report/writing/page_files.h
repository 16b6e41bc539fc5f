#pragma once

// The parts of a page that are files of their own: the build makes these texts of them.

namespace informe {

/// How the page looks.
extern const char* const kEstilo;
/// What it needs beside that for changes against another state.
extern const char* const kEstiloCambios;
/// The lines that have the heads of long tables sort them. The page is read without these and the
/// next ones as well.
extern const char* const kGuionOrden;
/// The lines that filter the list of messages, and lead to them.
extern const char* const kGuion;
/// The lines that move and label the maps.
extern const char* const kGuionMapas;
/// The form that the first ones work.
extern const char* const kFiltro;

} // namespace informe
