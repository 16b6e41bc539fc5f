#include "platform/files/output_diary.h"

#include <charconv>
#include <optional>

#include "platform/files/system_files.h"

namespace {

// A diary is a row of texts, each closed by a zero: its mark, how many diaries there are and their
// names, three texts for each target, and its mark again. One that was cut short told of nothing
// that had begun.
// The mark's bytes stand in diaries on users' disks: they stay what they are, whatever the program
// is called.
constexpr std::string_view kMarca = "campiva: salidas en curso";

constexpr auto kAntesMasAlto = static_cast<std::uint64_t>(CEntradaDiario::Antes::FicheroEnSitio);

/// Takes the texts of a diary, one after another.
class CTextos {
public:
    explicit CTextos(std::string_view bytes) : m_quedan(bytes) {}
    bool Quedan() const { return !m_quedan.empty(); }
    /// The next one; nothing where it has no end, or is empty, as none of a diary's is.
    std::optional<std::string_view> Toma()
    {
        const std::size_t fin = m_quedan.find('\0');
        if (fin == std::string_view::npos || fin == 0)
            return std::nullopt;
        const std::string_view texto = m_quedan.substr(0, fin);
        m_quedan.remove_prefix(fin + 1);
        return texto;
    }
    std::optional<std::uint64_t> TomaNumero()
    {
        const auto texto = Toma();
        std::uint64_t valor = 0;
        if (!texto ||
            std::from_chars(texto->data(), texto->data() + texto->size(), valor).ec != std::errc())
            return std::nullopt;
        return valor;
    }

private:
    std::string_view m_quedan;
};

} // namespace

std::string EscribeDiario(const std::vector<std::filesystem::path>& diarios,
                          const std::vector<CEntradaDiario>& entradas)
{
    std::string bytes;
    const auto pon = [&](std::string_view texto) { bytes.append(texto).push_back('\0'); };
    pon(kMarca);
    pon(std::to_string(diarios.size()));
    for (const std::filesystem::path& diario : diarios)
        pon(sistema::Nombre(sistema::Entera(diario)));
    for (const CEntradaDiario& entrada : entradas) {
        pon(sistema::Nombre(entrada.destino));
        pon(std::to_string(static_cast<int>(entrada.antes)));
        pon(std::to_string(entrada.numero));
    }
    pon(kMarca);
    return bytes;
}

CDiarioLeido LeeDiario(std::string_view bytes)
{
    CTextos textos(bytes);
    CDiarioLeido leido;
    if (textos.Toma() != kMarca)
        return {};
    auto faltan = textos.TomaNumero();
    for (; faltan && *faltan > 0; --*faltan) {
        const auto diario = textos.Toma();
        if (!diario)
            return {};
        leido.diarios.push_back(sistema::Ruta(*diario));
    }
    while (faltan) {
        const auto destino = textos.Toma();
        if (destino == kMarca && !textos.Quedan())
            return leido;
        const auto antes = textos.TomaNumero();
        const auto numero = textos.TomaNumero();
        if (!destino || !antes || *antes > kAntesMasAlto || !numero)
            return {};
        leido.entradas.push_back(
            {sistema::Ruta(*destino), static_cast<CEntradaDiario::Antes>(*antes), *numero});
    }
    return {};
}
