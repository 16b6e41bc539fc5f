#include "batch/batch_options.h"

#include "batch/batch_texts.h"
#include "batch/job_table.h"
#include "platform/plain_texts.h"

namespace lote {
namespace {

int Procesos(const std::string& texto)
{
    const int valor = NumeroDe<int>(texto).value_or(0);
    if (valor < 1)
        throw CLineaMala(Formatea(textos::kNoEsNumero, texto));
    return valor;
}

/// Takes an option that has a value; false for one that has none.
bool TomaConValor(std::span<const std::string> argumentos, std::size_t& i, COpciones& opciones)
{
    const std::string& opcion = argumentos[i];
    const bool procesos = opcion == "-j" || opcion == "--procesos";
    if (!procesos && opcion != "--sshlogin" && opcion != "--resultados")
        return false;
    if (++i == argumentos.size())
        throw CLineaMala(Formatea(textos::kFaltaValor, opcion));
    if (procesos)
        opciones.procesos = Procesos(argumentos[i]);
    else if (argumentos[i].empty() || argumentos[i].starts_with('-')) // or it is the next option
        throw CLineaMala(Formatea(textos::kFaltaValor, opcion));
    else
        (opcion == "--sshlogin" ? opciones.maquinas : opciones.resultados) = argumentos[i];
    return true;
}

} // namespace

COpciones LeeOpciones(std::span<const std::string> argumentos)
{
    COpciones opciones;
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        if (TomaConValor(argumentos, i, opciones))
            continue;
        if (argumento == "--help" || argumento == "-h") {
            opciones.pide = COpciones::Pide::Ayuda;
            return opciones;
        }
        if (argumento == "--version") {
            opciones.pide = COpciones::Pide::Version;
            return opciones;
        }
        if (argumento == "--reanuda")
            opciones.reanuda = true;
        else if (argumento == "--resumen")
            opciones.resume = true;
        else if (argumento.starts_with('-'))
            throw CLineaMala(Formatea(textos::kNoHayOpcion, argumento));
        else if (!opciones.tabla.empty())
            throw CLineaMala(Formatea(textos::kSobra, argumento));
        else
            opciones.tabla = argumento;
    }
    if (opciones.tabla.empty())
        opciones.pide = COpciones::Pide::NoSeEntiende;
    if (opciones.resultados.empty())
        opciones.resultados = opciones.tabla + kExtensionResultados;
    return opciones;
}

} // namespace lote
