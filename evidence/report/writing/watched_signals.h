#pragma once

#include "platform/system.h"

namespace informe {

/// As long as it is there, a signal that ends the process is only noted, and ends it behind this
/// object. What is written meanwhile is to be put away first, so it stands in front of all outputs.
class CVigilancia {
public:
    CVigilancia() { sistema::VigilaSenales(false); }
    CVigilancia(const CVigilancia&) = delete;
    CVigilancia& operator=(const CVigilancia&) = delete;
    ~CVigilancia() { sistema::OlvidaSenales(); }

    /// Throws CInterrumpido where the process is to end.
    static void Mira()
    {
        if (sistema::HayQueAcabar())
            throw CInterrumpido();
    }
};

} // namespace informe
