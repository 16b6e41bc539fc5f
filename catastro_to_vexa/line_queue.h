#pragma once

#include <cstddef>
#include <cstring>
#include <deque>
#include <limits>
#include <memory>
#include <string_view>

/// Lines that wait, the first one in front. A record of the exchange file waits as the line that it
/// came in, which is half as large, and is read when its place is known. The lines stand in blocks
/// of many, each of which goes when its last line was taken.
class CColaLineas {
public:
    static constexpr std::size_t kMasLarga = std::numeric_limits<unsigned char>::max();

    std::size_t Cuantas() const { return m_cuantas; }

    /// \param linea  of up to kMasLarga characters
    void Añade(std::string_view linea)
    {
        if (m_bloques.empty() || kBloque - m_bloques.back().llenos < 1 + linea.size())
            m_bloques.emplace_back();
        CBloque& bloque = m_bloques.back();
        char* const sitio = bloque.bytes.get() + bloque.llenos;
        *sitio = static_cast<char>(linea.size());
        std::memcpy(sitio + 1, linea.data(), linea.size());
        bloque.llenos += 1 + linea.size();
        ++m_cuantas;
    }

    /// The line in front; there must be one. It stands until it is dropped.
    std::string_view Primera() const { return m_bloques.front().LineaEn(m_tomados); }
    /// Drops the line in front.
    void Quita()
    {
        --m_cuantas;
        m_tomados += 1 + Primera().size();
        if (m_tomados == m_bloques.front().llenos) {
            m_bloques.pop_front();
            m_tomados = 0;
        }
    }

    /// How many lines, from the one in front to the end of its block, follow one another with the
    /// same characters in those columns.
    std::size_t CuantasIguales(std::size_t columna, std::size_t ancho) const
    {
        const CBloque& bloque = m_bloques.front();
        const auto campo = [=](std::string_view linea) {
            return linea.size() > columna ? linea.substr(columna, ancho) : std::string_view();
        };
        std::size_t cuantas = 0;
        for (std::size_t i = m_tomados; i < bloque.llenos; ++cuantas) {
            const std::string_view linea = bloque.LineaEn(i);
            if (campo(linea) != campo(Primera()))
                break;
            i += 1 + linea.size();
        }
        return cuantas;
    }

private:
    static constexpr std::size_t kBloque = std::size_t{64} * 1024;

    struct CBloque {
        std::unique_ptr<char[]> bytes = std::make_unique_for_overwrite<char[]>(kBloque);
        std::size_t llenos = 0; // each line stands behind its length

        std::string_view LineaEn(std::size_t i) const
        {
            return {bytes.get() + i + 1, static_cast<unsigned char>(bytes[i])};
        }
    };

    std::deque<CBloque> m_bloques;
    std::size_t m_tomados = 0; // bytes of the block in front
    std::size_t m_cuantas = 0;
};
