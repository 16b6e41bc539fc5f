#include "batch/summary_run.h"

#include <chrono>
#include <iterator>
#include <utility>

#include "batch/batch_texts.h"
#include "platform/ansi.h"
#include "platform/files/cfile_exception.h"
#include "platform/system.h"

namespace lote {

void Resume(const CEstados& estados)
{
    constexpr std::chrono::milliseconds kUnRato{200};
    const std::string carpeta = sistema::Nombre(estados.Carpeta());
    COrden orden;
    orden.programa = sistema::BuscaPrograma("campiva-informe");
    if (orden.programa.empty())
        return sistema::Imprime(stderr, Formatea(textos::kSinInforme, carpeta));
    orden.argumentos = {"--resumen", carpeta};
    orden.carpeta = estados.Carpeta();
    orden.dicho = estados.DichoResumen();
    CHijos hijos;
    sistema::Error error;
    hijos.Empieza(orden, error);
    if (error)
        return sistema::Imprime(
            stderr, Formatea(textos::kSinResumen, ansi::AUtf8(CFileException("", error).Causa())));
    std::optional<CHijos::CFin> fin;
    for (bool avisado = false; !fin; fin = hijos.Espera(kUnRato))
        if (sistema::HayQueAcabar() && !std::exchange(avisado, true))
            hijos.PideAcabar();
    if (!fin->estado)
        sistema::Imprime(stderr, Formatea(textos::kSinResumen, textos::kSeCorto));
    std::ifstream dicho(orden.dicho, std::ios::binary);
    sistema::Imprime(fin->estado == 0 ? stdout : stderr,
                     std::string{std::istreambuf_iterator<char>(dicho), {}});
}

} // namespace lote
