#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/files/fault_point.h"

/// What goes wrong while a test or a fuzzer looks on, in its program alone: the n-th call to the
/// system fails, or kills the process; the n-th allocation finds no memory, where the program has
/// the allocation of failing_memory.cpp in it.
struct CPlanDeFallos {
    enum class Que { Nada, FallaLlamada, MataEnLlamada, FaltaMemoria };
    static constexpr unsigned kMuerto = 137; ///< status of a killed process on Windows
    enum class Alcance { EsaSola, YLasDeSuClase, YTodas }; ///< what else fails from then on

    Que que = Que::Nada;
    long en = 0; ///< counted from 1
    Alcance alcance = Alcance::EsaSola;
    int error = 0;                              ///< with which a call fails
    std::optional<sistema::Llamada> clase = {}; ///< whose calls all fail
    bool sinCandados = false;                   ///< the disk knows no locks
    bool sinDerechos = false;                   ///< no file can get another's owner and rights
    std::function<void()> entretanto = {};      ///< what others do before the n-th call
    long entretantoEn = 0;                      ///< counted from 1
    bool anota = false;                         ///< keeps the calls in `hechas`
    std::vector<sistema::Llamada> hechas = {};
    long llamadas = 0; ///< made since the plan began
    long reservas = 0; ///< of memory, likewise

    bool Toca(long vez) const { return vez == en || (alcance == Alcance::YTodas && vez > en); }
    bool TocaLlamada(sistema::Llamada llamada) const { return Toca(llamadas) || clase == llamada; }
};

// From one call before which a child dies to the next that is tried. To fork a program with a
// sanitizer's memory takes long, and how a child ends is seen call by call without one.
#ifdef __SANITIZE_ADDRESS__
inline constexpr long kPasoDeMuertes = 4;
#else
inline constexpr long kPasoDeMuertes = 1;
#endif

/// The plan in force.
CPlanDeFallos& Plan();
