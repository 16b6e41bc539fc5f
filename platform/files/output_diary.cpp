#include "platform/files/output_diary.h"

#include <charconv>

#include "platform/files/system_files.h"

namespace {

using Ruta = CReemplazo::Ruta;

// A diary is a row of texts, each closed by a zero: its mark, how many diaries there are and their
// names, three texts for each target, and its mark again. One that was cut short told of nothing
// that had begun.
// The mark's bytes stand in diaries on users' disks: they stay what they are, whatever the program
// is called.
constexpr std::string_view kMarca = "campiva: salidas en curso";

std::string Entera(const Ruta& ruta)
{
    return sistema::Nombre(sistema::Entera(ruta));
}

} // namespace

std::string EscribeDiario(const std::vector<Ruta>& diarios,
                          const std::vector<CEntradaDiario>& entradas)
{
    std::string bytes;
    const auto pon = [&](std::string_view texto) { bytes.append(texto).push_back('\0'); };
    pon(kMarca);
    pon(std::to_string(diarios.size()));
    for (const Ruta& diario : diarios)
        pon(Entera(diario));
    for (const CEntradaDiario& entrada : entradas) {
        pon(Entera(entrada.destino));
        pon(entrada.habia ? "1" : "0");
        pon(std::to_string(entrada.numero));
    }
    pon(kMarca);
    return bytes;
}

CDiarioLeido LeeDiario(std::string_view bytes)
{
    std::vector<std::string_view> textos;
    for (std::size_t fin = bytes.find('\0'); fin != std::string_view::npos;
         fin = bytes.find('\0')) {
        textos.push_back(bytes.substr(0, fin));
        bytes.remove_prefix(fin + 1);
    }
    const auto numero = [](std::string_view texto) {
        std::uint64_t valor = 0;
        std::from_chars(texto.data(), texto.data() + texto.size(), valor);
        return valor;
    };
    CDiarioLeido leido;
    if (!bytes.empty() || textos.size() < 3 || textos.front() != kMarca || textos.back() != kMarca)
        return leido;
    const std::uint64_t diarios = numero(textos[1]);
    if (diarios > textos.size() - 3 || (textos.size() - 3 - diarios) % 3 != 0)
        return leido;
    std::size_t i = 2;
    for (std::uint64_t k = 0; k < diarios; ++k)
        leido.diarios.push_back(sistema::Ruta(textos[i++]));
    for (; i + 1 < textos.size(); i += 3)
        leido.entradas.push_back(
            {sistema::Ruta(textos[i]), textos[i + 1] == "1", numero(textos[i + 2])});
    return leido;
}
