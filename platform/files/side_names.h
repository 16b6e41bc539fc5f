#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Names of what stands beside a target while a run has it in hand. All but the lock bear the mark
/// of their run, so that two runs never have one of them, even where no lock keeps them apart.
namespace lado {

using Ruta = std::filesystem::path;

inline constexpr std::string_view kCandado = ".~candado"; ///< locked by who has the target in hand
inline constexpr std::string_view kNuevo = ".~nuevo";     ///< the output in the making
inline constexpr std::string_view kAntes = ".~antes";     ///< what the target held
inline constexpr std::string_view kConjunto = ".~conjunto"; ///< the diary of a set of outputs
inline constexpr std::string_view kAnterior = ".anterior";  ///< what a target held, to be kept

/// A mark that no other run has.
std::string Marca();

/// Path of such a file. The name of a target that is too long for what is added is cut, and a sum
/// of it added.
Ruta De(const Ruta& destino, std::string_view sufijo, std::string_view marca = {});

/// A name taken apart.
struct CPartes {
    std::string base;        ///< the target's name, or what it was cut to
    std::string marca;       ///< empty where it has none
    std::string_view sufijo; ///< one of those above; empty where the name is no such file's
};
CPartes Parte(const Ruta& nombre);

} // namespace lado
