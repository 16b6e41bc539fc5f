#include "vexa_libs/binary.h"

#include <array>
#include <bit>

namespace vexageo {
namespace {

constexpr std::array<std::uint32_t, 256> kTablaCrc = [] {
    std::array<std::uint32_t, 256> tabla{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t valor = i;
        for (int bit = 0; bit < 8; ++bit)
            valor = (valor >> 1U) ^ ((valor & 1U) != 0 ? 0xEDB88320U : 0U);
        tabla[i] = valor;
    }
    return tabla;
}();

} // namespace

std::uint32_t Crc32(std::string_view bytes)
{
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char c : bytes)
        crc = (crc >> 8U) ^ kTablaCrc[(crc ^ static_cast<unsigned char>(c)) & 0xFFU];
    return crc ^ 0xFFFFFFFFU;
}

std::uint64_t CLector::Toma(std::size_t n)
{
    std::uint64_t valor = 0;
    const std::string_view bytes = Bytes(n);
    for (std::size_t i = bytes.size(); i > 0; --i)
        valor = (valor << 8U) | static_cast<unsigned char>(bytes[i - 1]);
    return valor;
}

double CLector::F64()
{
    return std::bit_cast<double>(Toma(8));
}

std::string_view CLector::Bytes(std::size_t n)
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

void CEscritor::F64(double valor)
{
    Pon(std::bit_cast<std::uint64_t>(valor), 8);
}

void CEscritor::Pon(std::uint64_t valor, std::size_t n)
{
    for (std::size_t i = 0; i < n; ++i)
        m_bytes += static_cast<char>(static_cast<unsigned char>(valor >> (8U * i)));
}

} // namespace vexageo
