#pragma once

#include <cstddef>
#include <string>

namespace vexageo {

/// Marks an entity as deleted and seals it anew, in the bytes of a drawing. Nothing changes where
/// no whole one stands. \param desde  where it begins, from 0
void MarcaBorrada(std::string& bytes, std::size_t desde);

} // namespace vexageo
