#pragma once

#include <cstddef>

#include "platform/files/fault_point.h"

/// What goes wrong while a test looks on, in this program alone: the n-th call to the system fails,
/// or kills the process; the n-th allocation finds no memory.
struct CPlanDeFallos {
    enum class Que { Nada, FallaLlamada, MataEnLlamada, FaltaMemoria };

    Que que = Que::Nada;
    long en = 0;          ///< counted from 1
    bool siempre = false; ///< and all behind it too
    int error = 0;        ///< with which a call fails
    long llamadas = 0;    ///< made since the plan began
    long reservas = 0;    ///< of memory, likewise

    bool Toca(long vez) const { return vez == en || (siempre && vez > en); }
};

/// The plan in force.
CPlanDeFallos& Plan();
