#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "vexa_libs/extent.h"

namespace vexageo {

/// Boxes of one frame near one another, with which a point is compared at once. What holds them all
/// is cut into 256 columns and as many rows, and of each box the first and the last ones that it
/// reaches are known, a byte each. The few boxes that those leave are compared to the unit.
class CCajasJuntas {
public:
    static constexpr std::size_t kCabida = 32;

    /// Some of the boxes, by their positions.
    class CSeleccion {
    public:
        bool Vacia() const { return m_bits == 0; }
        std::size_t Primera() const
        {
            const auto bit = static_cast<std::size_t>(std::countr_zero(m_bits));
            return bit / 8 * kTandas + bit % 8;
        }
        void Quita(std::size_t i)
        {
            m_bits &= ~(std::uint64_t{1} << (i / kTandas * 8 + i % kTandas));
        }
        void Corta(const CSeleccion& otra) { m_bits &= otra.m_bits; }

    private:
        friend class CCajasJuntas;
        std::uint64_t m_bits = 0; // the lowest `kTandas` bits of each byte
    };

    CCajasJuntas() = default;
    /// \param cajas  one at least, and no more than find room
    explicit CCajasJuntas(const std::vector<CCaja>& cajas);

    /// Those whose columns and rows a point lies in: all that hold it, and some more.
    CSeleccion Cerca(const CMedidas& medidas) const;
    bool Tiene(std::size_t i, const CMedidas& medidas) const { return m_cajas[i].Tiene(medidas); }

private:
    static constexpr std::size_t kTandas = kCabida / 8; // as many as bytes are compared in a word
    static constexpr unsigned kCeldas = 256;
    static constexpr int kPrimera = -128;
    using CFila = std::array<std::int8_t, kCabida>;

    static std::size_t SitioEnFila(std::size_t i);
    /// The column or row of a measure, from 0 on; one that there isn't outside all boxes.
    unsigned Celda(std::size_t k, int medida) const
    {
        return (static_cast<unsigned>(medida) - static_cast<unsigned>(m_origen[k])) >> m_paso[k];
    }
    /// Bytes with a sign are what most processors compare.
    static std::int8_t Octeto(unsigned celda)
    {
        return static_cast<std::int8_t>(static_cast<int>(celda) + kPrimera);
    }

    std::array<CFila, 2> m_minimo{}, m_maximo{};
    CMedidas m_origen{};
    std::array<int, 2> m_paso{}; // binary digits that a column or a row spans
    std::array<CCaja, kCabida> m_cajas{};
};

inline CCajasJuntas::CSeleccion CCajasJuntas::Cerca(const CMedidas& medidas) const
{
    constexpr std::uint64_t kFueraTodas = 0x0101'0101'0101'0101;
    const unsigned columna = Celda(0, medidas[0]);
    const unsigned fila = Celda(1, medidas[1]);
    CSeleccion cerca;
    if ((columna | fila) >= kCeldas)
        return cerca;
    const std::int8_t u = Octeto(columna);
    const std::int8_t v = Octeto(fila);
    CFila fuera;
    for (std::size_t i = 0; i < kCabida; ++i)
        fuera[i] = static_cast<std::int8_t>(
            static_cast<int>(u < m_minimo[0][i]) | static_cast<int>(m_maximo[0][i] < u) |
            static_cast<int>(v < m_minimo[1][i]) | static_cast<int>(m_maximo[1][i] < v));
    const auto tandas = std::bit_cast<std::array<std::uint64_t, kTandas>>(fuera);
    for (std::size_t tanda = 0; tanda < kTandas; ++tanda)
        cerca.m_bits |= (tandas[tanda] ^ kFueraTodas) << tanda;
    return cerca;
}

} // namespace vexageo
