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

/// What stands behind the option at `i`, which goes on to it.
const std::string& Valor(std::span<const std::string> argumentos, std::size_t& i)
{
    if (++i == argumentos.size())
        throw CLineaMala(Formatea(textos::kFaltaValor, argumentos[i - 1]));
    return argumentos[i];
}

/// The same of one that is a name.
const std::string& Nombre(std::span<const std::string> argumentos, std::size_t& i)
{
    const std::string& nombre = Valor(argumentos, i);
    if (nombre.empty() || nombre.starts_with('-')) // or it is the next option
        throw CLineaMala(Formatea(textos::kFaltaValor, argumentos[i - 1]));
    return nombre;
}

} // namespace

COpciones LeeOpciones(std::span<const std::string> argumentos)
{
    COpciones opciones;
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        const bool ayuda = argumento == "--help" || argumento == "-h";
        if (ayuda || argumento == "--version") {
            opciones.pide = ayuda ? COpciones::Pide::Ayuda : COpciones::Pide::Version;
            return opciones;
        }
        if (argumento == "-j" || argumento == "--procesos")
            opciones.procesos = Procesos(Valor(argumentos, i));
        else if (argumento == "--sshlogin")
            opciones.maquinas = Nombre(argumentos, i);
        else if (argumento == "--resultados")
            opciones.resultados = Nombre(argumentos, i);
        else if (argumento == "--reanuda")
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
