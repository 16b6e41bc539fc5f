#include "vexa_libs/binary.h"

#include <array>

namespace vexageo {
namespace {

constexpr std::size_t kPalabra = 8;
constexpr std::size_t kCrc = 4;
constexpr std::size_t kBytesALaVez = 2 * kPalabra;

using CTablaCrc = std::array<std::uint32_t, 256>;

/// What a byte does to the sum, and what it does with 1 to 15 zero bytes behind it: so many bytes
/// are taken at a time.
constexpr std::array<CTablaCrc, kBytesALaVez> kTablasCrc = [] {
    std::array<CTablaCrc, kBytesALaVez> tablas{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t valor = i;
        for (int bit = 0; bit < 8; ++bit)
            valor = (valor >> 1U) ^ ((valor & 1U) != 0 ? 0xEDB88320U : 0U);
        tablas[0][i] = valor;
    }
    for (std::size_t detras = 1; detras < kBytesALaVez; ++detras)
        for (std::size_t i = 0; i < 256; ++i) {
            const std::uint32_t valor = tablas[detras - 1][i];
            tablas[detras][i] = (valor >> 8U) ^ tablas[0][valor & 0xFFU];
        }
    return tablas;
}();

/// What `N` bytes, the first one the lowest, do to the sum with `detras` zero bytes behind them.
template <std::size_t N>
std::uint32_t DeBytes(std::uint64_t bytes, std::size_t detras)
{
    std::uint32_t crc = 0;
    for (std::size_t i = N; i-- > 0; bytes >>= 8U)
        crc ^= kTablasCrc[detras + i][bytes & 0xFFU];
    return crc;
}

} // namespace

std::uint32_t Crc32(std::string_view bytes, std::uint32_t anterior)
{
    std::uint32_t crc = anterior ^ 0xFFFFFFFFU;
    for (; bytes.size() >= kBytesALaVez; bytes.remove_prefix(kBytesALaVez)) {
        // The sum so far meets the first four bytes alone; what waits for it is kept short.
        CLector lector(bytes);
        const std::uint64_t primera = lector.U64();
        const std::uint32_t resto =
            DeBytes<kPalabra>(lector.U64(), 0) ^ DeBytes<kCrc>(primera >> 32U, kPalabra);
        crc = resto ^ DeBytes<kCrc>((primera ^ crc) & 0xFFFFFFFFU, kPalabra + kCrc);
    }
    if (bytes.size() >= kPalabra) {
        crc = DeBytes<kPalabra>(CLector(bytes).U64() ^ crc, 0);
        bytes.remove_prefix(kPalabra);
    }
    for (const char c : bytes)
        crc = (crc >> 8U) ^ kTablasCrc[0][(crc ^ static_cast<unsigned char>(c)) & 0xFFU];
    return crc ^ 0xFFFFFFFFU;
}

void CEscritor::Pon(std::uint64_t valor, std::size_t n)
{
    for (std::size_t i = 0; i < n; ++i)
        m_bytes += static_cast<char>(static_cast<unsigned char>(valor >> (8U * i)));
}

} // namespace vexageo
