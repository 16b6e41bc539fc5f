#pragma once

// The parts of a page that are files of their own: the build makes these functions from them.

namespace informe {

/// How the page looks.
const char* Estilo();
/// The few lines that filter and sort the list of messages; the page is read without them as well.
const char* Guion();
/// The form that they work.
const char* Filtro();

} // namespace informe
