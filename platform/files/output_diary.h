#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// The diary of a set of outputs, as it stands in its file: what is about to be replaced. Each
// folder has one, of its own targets.

/// What a diary says of one target.
struct CEntradaDiario {
    /// What there was before the set. The numbers are those of the file.
    enum class Antes { Nada = 0, Fichero = 1, FicheroEnSitio = 2 /* it is overwritten as it is */ };

    std::filesystem::path destino; ///< its name; by an older diary with its whole path
    Antes antes = Antes::Nada;
    std::uint64_t numero = 0; ///< of the file that takes its place
};

struct CDiarioLeido {
    std::vector<std::filesystem::path> diarios; ///< whole paths of all diaries of the set
    std::vector<CEntradaDiario> entradas;
};

/// No diary is longer; sets of so many outputs aren't made.
inline constexpr std::size_t kDiarioMasLargo = std::size_t{4} << 20U;

/// The bytes of a diary.
std::string EscribeDiario(const std::vector<std::filesystem::path>& diarios,
                          const std::vector<CEntradaDiario>& entradas);

/// Reads the bytes of a diary. One that was cut short or damaged reads as empty.
CDiarioLeido LeeDiario(std::string_view bytes);
