#pragma once

#include <chrono>

/// How often a window looks for the user's events and draws its bar while a run is at work. A tick
/// of a run costs less than a microsecond, a look for events about one and a redrawn bar thousands.
/// So both are done as often as a person can tell, and no more.
class CRitmoProceso {
public:
    using Reloj = std::chrono::steady_clock;

    /// Tells whether it is time to look for an event.
    bool TocaMirar(Reloj::time_point ahora) const { return ahora >= m_calma; }
    /// No event was pending; for a moment none is looked for.
    void EstaEnCalma(Reloj::time_point ahora) { m_calma = ahora + kEntreMiradas; }
    /// Tells whether it is time to draw the bar, and takes it for done.
    bool TocaPintar(Reloj::time_point ahora)
    {
        if (ahora < m_pintada + kEntrePintadas)
            return false;
        m_pintada = ahora;
        return true;
    }

private:
    static constexpr std::chrono::milliseconds kEntreMiradas{10};
    static constexpr std::chrono::milliseconds kEntrePintadas{100};

    Reloj::time_point m_calma;
    Reloj::time_point m_pintada;
};
