#pragma once

#include <chrono>
#include <string>

/// The time of a run at work, and what the phase at work will still take.
class CRelojProceso {
public:
    using Reloj = std::chrono::steady_clock;

    void Empieza(Reloj::time_point ahora) { m_inicio = m_inicioFase = ahora; }
    void EmpiezaFase(Reloj::time_point ahora) { m_inicioFase = ahora; }
    /// Takes out the time in which the run waited for the user.
    void Descuenta(Reloj::duration espera);

    /// What has passed, as "0:12" or "1:02:03".
    std::string Pasado(Reloj::time_point ahora) const;
    /// The same, and what is left of the phase as far as its pace tells.
    /// \param hecho  per cent of the phase; too early in it nothing is foretold
    std::string PasadoYResto(Reloj::time_point ahora, int hecho) const;

private:
    Reloj::time_point m_inicio;
    Reloj::time_point m_inicioFase;
};
