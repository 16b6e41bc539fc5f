#pragma once

#include <string>

#include <cpl_error.h>

/// Tells whether all came that a dataset was to take. No driver is told that its source broke off:
/// whoever writes in transactions says so himself, and of all others the last complaint says it.
class CFinDelOrigen {
public:
    /// Begins with the dataset: a complaint that is there already is none of its source.
    CFinDelOrigen();

    void Empieza() { m_abierta = m_porPartes = true; }
    void Acaba();
    void Deshace() { m_deshecho = true; }

    /// Asked where the dataset is closed, before anything else is done there.
    bool Llego() const;

private:
    bool HayQuejaNueva() const;

    GUInt32 m_quejas;
    std::string m_ultima;
    bool m_porPartes = false;
    bool m_abierta = false;
    bool m_deshecho = false;
};
