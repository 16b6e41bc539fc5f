#pragma once

#include "platform/files/system_files.h"

/// The lock of a target: a file beside it, which is there as long as a run has the target in hand.
/// One that a killed run left is taken over.
class CCandado {
public:
    CCandado() = default;
    CCandado(const CCandado&) = delete;
    CCandado& operator=(const CCandado&) = delete;
    ~CCandado() { Suelta(); }

    /// Takes it for this run alone.
    /// \return `DeOtro` where another program has it; `NoHay` with the reason in `error` where
    ///         there can be none, and without one where the share knows no locks: then it is held
    ///         all the same, and keeps nobody out
    sistema::Bloqueo Toma(const std::filesystem::path& ruta, sistema::Error& error);
    void Suelta() noexcept;

private:
    std::filesystem::path m_ruta;
    sistema::CAbierto m_fichero;
};
