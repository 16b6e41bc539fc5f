#include "batch/summary_run.h"

#include "batch/batch_texts.h"
#include "platform/ansi.h"
#include "platform/files/cfile_exception.h"
#include "platform/system.h"

namespace lote {

void Resume(const CEstados& estados)
{
    const std::string carpeta = sistema::Nombre(estados.Carpeta());
    COrden orden;
    orden.programa = sistema::BuscaPrograma("campiva-informe");
    if (orden.programa.empty())
        return sistema::Imprime(stderr, Formatea(textos::kSinInforme, carpeta));
    orden.argumentos = {"--resumen", carpeta};
    orden.carpeta = estados.Carpeta();
    orden.dicho = estados.DichoResumen();
    sistema::Error error;
    const std::optional<int> estado = Corre(orden, error);
    if (error)
        return sistema::Imprime(
            stderr, Formatea(textos::kSinResumen, ansi::AUtf8(CFileException("", error).Causa())));
    if (!estado)
        sistema::Imprime(stderr, Formatea(textos::kSinResumen, textos::kSeCorto));
    sistema::Imprime(estado == 0 ? stdout : stderr, LoDicho(orden.dicho));
}

} // namespace lote
