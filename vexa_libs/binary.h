#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "vexa_libs/point.h"

// Numbers as the drawing files carry them: little-endian two's complement.

namespace vexageo {

/// Bytes that a record may have. No honest one comes near: it would be a line of 22 million points.
/// A length past it is damage, also where a file with holes in it is long enough.
inline constexpr std::uint64_t kRegistroMayor = std::uint64_t{256} << 20U;

inline constexpr std::size_t kBytesPunto = 12; ///< of a point's three coordinates
inline constexpr std::size_t kBytesCrc = 4;    ///< of the sum behind a record

/// CRC-32 as in zip and PNG, polynomial 0xEDB88320.
/// \param anterior  that of what stands in front of the bytes, for a sum taken piece by piece
std::uint32_t Crc32(std::string_view bytes, std::uint32_t anterior = 0);

/// Takes numbers from the front of a piece of memory. A number or text that passes its end reads as
/// 0 or empty, and so do all behind it; `Bien` is false from then on.
class CLector {
public:
    explicit CLector(std::string_view bytes) : m_resto(bytes) {}

    std::uint8_t U8() { return static_cast<std::uint8_t>(Toma<1>()); }
    std::uint16_t U16() { return static_cast<std::uint16_t>(Toma<2>()); }
    std::int16_t I16() { return static_cast<std::int16_t>(Toma<2>()); }
    std::uint32_t U32() { return static_cast<std::uint32_t>(Toma<4>()); }
    std::int32_t I32() { return static_cast<std::int32_t>(Toma<4>()); }
    std::uint64_t U64() { return Toma<8>(); }
    double F64() { return std::bit_cast<double>(U64()); }
    CPunto<int> Punto()
    {
        const int x = I32();
        const int y = I32();
        return {x, y, I32()};
    }
    std::string_view Bytes(std::size_t n)
    {
        if (n > m_resto.size()) {
            m_bien = false;
            m_resto = {};
            return {};
        }
        const std::string_view bytes = m_resto.substr(0, n);
        m_resto.remove_prefix(n);
        return bytes;
    }

    std::size_t Quedan() const { return m_resto.size(); }
    bool Bien() const { return m_bien; }
    void Falla() { m_bien = false; } ///< marks it bad: what was read makes no sense

private:
    template <std::size_t N>
    std::uint64_t Toma()
    {
        const std::string_view bytes = Bytes(N);
        if (bytes.empty())
            return 0;
        std::uint64_t valor = 0;
        for (std::size_t i = N; i-- > 0;)
            valor = (valor << 8U) | static_cast<unsigned char>(bytes[i]);
        return valor;
    }

    std::string_view m_resto;
    bool m_bien = true;
};

/// Puts numbers behind one another.
class CEscritor {
public:
    void U8(std::uint8_t valor) { Pon(valor, 1); }
    void U16(std::uint16_t valor) { Pon(valor, 2); }
    void I16(std::int16_t valor) { Pon(static_cast<std::uint16_t>(valor), 2); }
    void U32(std::uint32_t valor) { Pon(valor, 4); }
    void I32(std::int32_t valor) { Pon(static_cast<std::uint32_t>(valor), 4); }
    void F64(double valor) { Pon(std::bit_cast<std::uint64_t>(valor), 8); }
    void Punto(const CPunto<int>& punto)
    {
        I32(punto.X);
        I32(punto.Y);
        I32(punto.Z);
    }
    void Bytes(std::string_view bytes) { m_bytes.append(bytes); }
    const std::string& Hecho() const { return m_bytes; }

private:
    void Pon(std::uint64_t valor, std::size_t n);

    std::string m_bytes;
};

} // namespace vexageo
