#pragma once

#include <chrono>

/// A wait for what another program has in hand for a moment only.
class CEspera {
public:
    explicit CEspera(std::chrono::milliseconds comoMucho)
        : m_fin(std::chrono::steady_clock::now() + comoMucho)
    {
    }
    /// Waits a little. False when the time is over. Throws CInterrumpido where the process is to
    /// end.
    bool Sigue() const;

private:
    std::chrono::steady_clock::time_point m_fin;
};
