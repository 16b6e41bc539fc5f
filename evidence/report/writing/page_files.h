#pragma once

// The parts of a page that are files of their own: the build makes these texts of them.

namespace informe {

/// How the page looks.
extern const char* const kEstilo;
/// The few lines that filter and sort the list of messages; the page is read without them as well.
extern const char* const kGuion;
/// The form that they work.
extern const char* const kFiltro;

} // namespace informe
