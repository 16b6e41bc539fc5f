#include <algorithm>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/page_content.h"

namespace informe {
namespace {

const char* NombreCorto(Sentido sentido)
{
    return sentido == Sentido::Ida ? "ida, " : sentido == Sentido::Vuelta ? "vuelta, " : "";
}

std::string Renglon(std::string_view codigo, std::int64_t cuantos, const std::string& que)
{
    constexpr std::size_t kAncho = 9;
    std::string cifra = Miles(cuantos);
    cifra.insert(0, kAncho - std::min(cifra.size(), kAncho), ' ');
    return "  " + std::string(codigo) + " " + cifra + "  " + que + "\n";
}

} // namespace

std::string Resumen(const CContenido& contenido, const CString& pagina)
{
    const CRegistroLeido& registro = contenido.proceso.registro;
    std::string texto = Texto(contenido.proceso.ficheros.registro) + ": " +
                        NombreCorto(contenido.proceso.ficheros.sentido) +
                        Cuantos(registro.Errores(), "error", "errores") + ", " +
                        Cuantos(registro.Warnings(), "warning", "warnings") + ", " +
                        Cuantos(contenido.asuntos.cuantos, "asunto", "asuntos") + ", " +
                        Miles(contenido.SinExplicar()) + " sin explicar\n";
    for (const CMensaje& mensaje : Catalogo())
        if (const std::int64_t cuantos = registro.Cuenta(mensaje.numero); cuantos > 0)
            texto += Renglon(CodigoMensaje(mensaje), cuantos, Enunciado(mensaje));
    if (registro.Ajenas() > 0)
        texto += Renglon("-   ", registro.Ajenas(), "líneas que no son ningún mensaje");
    if (contenido.proceso.Detenido())
        texto += "  El proceso se detuvo: lo que debía escribir falta o es más viejo.\n";
    return texto + "  Informe en " + Texto(pagina) + "\n";
}

} // namespace informe
