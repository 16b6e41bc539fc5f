#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/files/byte_buffer.h"
#include "platform/files/output_destination.h"

/// What is written to a file gathers in a buffer, and goes from there to its destination. So a
/// write that fails may show later: what the destination raises passes through, and nothing is open
/// then. But for `Abre` and `Suelta` a file must be open.
class CEscritorFichero {
public:
    CEscritorFichero() = default;
    CEscritorFichero(const CEscritorFichero&) = delete;
    CEscritorFichero& operator=(const CEscritorFichero&) = delete;
    ~CEscritorFichero() { Suelta(); }

    /// Begins with nothing written; lets go of what was open.
    void Abre(std::unique_ptr<CDestino> destino);
    bool Abierto() const { return m_destino != nullptr; }

    /// Writes the bytes.
    void Escribe(std::string_view bytes);
    /// Room in the buffer for so many bytes; `Escrito` tells how many of them were filled.
    char* Sitio(std::size_t bytes)
    {
        if (m_bufer.Libre() < bytes)
            HazSitio(bytes);
        return m_bufer.Final();
    }
    void Escrito(std::size_t bytes) { m_bufer.Crece(bytes); }
    /// Hands what was written so far to the destination.
    void Vuelca();
    /// All was written.
    void Cierra();
    /// Lets go of the file, if one is open, as `CDestino::Abandona` says.
    void Suelta() noexcept;

    /// Number of bytes written so far.
    std::uint64_t Posicion() const { return m_volcado + m_bufer.Lleno(); }

private:
    void HazSitio(std::size_t bytes);
    void Olvida();

    std::unique_ptr<CDestino> m_destino;
    CBufer m_bufer;
    std::uint64_t m_volcado = 0; // bytes that the destination has
};
