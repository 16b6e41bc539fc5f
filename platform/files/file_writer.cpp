#include "platform/files/file_writer.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kBufer = std::size_t{64} * 1024;

} // namespace

void CEscritorFichero::Abre(std::unique_ptr<CDestino> destino)
{
    Suelta();
    m_bufer.Cabe(kBufer);
    m_destino = std::move(destino);
}

void CEscritorFichero::Escribe(std::string_view bytes)
{
    while (!bytes.empty()) {
        if (m_bufer.Libre() == 0)
            Vuelca();
        const std::size_t n = std::min(bytes.size(), m_bufer.Libre());
        std::copy_n(bytes.data(), n, m_bufer.Final());
        m_bufer.Crece(n);
        bytes.remove_prefix(n);
    }
}

void CEscritorFichero::HazSitio(std::size_t bytes)
{
    Vuelca();
    m_bufer.Cabe(bytes);
}

void CEscritorFichero::Vuelca()
{
    auto destino = std::move(m_destino); // gone, if it raises
    m_volcado += m_bufer.Lleno();
    const std::string_view bytes = m_bufer.Bytes();
    m_bufer.Deja(0);
    destino->Escribe(bytes);
    m_destino = std::move(destino);
}

void CEscritorFichero::Cierra()
{
    Vuelca();
    const auto destino = std::move(m_destino);
    Olvida();
    destino->Acaba();
}

void CEscritorFichero::Suelta() noexcept
{
    if (m_destino != nullptr)
        m_destino->Abandona(m_bufer.Bytes());
    Olvida();
}

void CEscritorFichero::Olvida()
{
    m_destino.reset();
    m_bufer.Deja(0);
    m_volcado = 0;
}
