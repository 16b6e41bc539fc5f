#include <filesystem>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/batch_outputs.h"
#include "platform/files/system_files.h"

namespace informe {
namespace {

/// What the sums come to, in words.
std::string EnBreve(const CResumenLote& resumen)
{
    std::string texto;
    const auto anota = [&](std::int64_t cuantos, const char* uno, const char* varios) {
        if (cuantos > 0)
            texto += Cuantos(cuantos, uno, varios) + ", ";
    };
    anota(resumen.Cuantos(Suerte::Fallo), "falló", "fallaron");
    anota(resumen.Cuantos(Suerte::SinHacer), "sin hacer", "sin hacer");
    anota(resumen.Cuantos(Suerte::SinLeer), "sin leer", "sin leer");
    if (const std::int64_t perdida = resumen.Suma(&CCifras::perdida); perdida > 0)
        texto += Superficie(perdida) + " perdidos en " +
                 Cuantos(resumen.Suma(&CCifras::parcelas), "parcela", "parcelas") + " de " +
                 Cuantos(resumen.QuePierden(), "trabajo", "trabajos") + ", ";
    anota(resumen.Suma(&CCifras::sinPadre), "recinto sin padre", "recintos sin padre");
    return texto;
}

} // namespace

std::string ResumenLote(const CResumenLote& resumen, const CString& pagina)
{
    std::string texto =
        resumen.nombre + ": " + Cuantos(resumen.trabajos.size(), "trabajo", "trabajos") + ", " +
        EnBreve(resumen) + Cuantos(resumen.Suma(&CCifras::errores), "error", "errores") + ", " +
        Cuantos(resumen.Suma(&CCifras::warnings), "warning", "warnings") + ", " +
        Miles(resumen.Suma(&CCifras::sinExplicar)) + " sin explicar\n";
    for (const std::string& reparo : resumen.reparos)
        texto += "  " + reparo + "\n";
    return texto + (pagina.IsEmpty() ? "" : "  Resumen en " + Texto(pagina) + "\n");
}

std::string EnPalabras(const CTrabajoVisto& uno)
{
    switch (uno.DameSuerte()) {
    case Suerte::SinHacer:
        return "sin hacer";
    case Suerte::Fallo:
        return (uno.hecho->estado == lote::kMuerto ? "cortado (" : "falló (") +
               std::to_string(uno.hecho->estado) + ")";
    case Suerte::SinLeer:
        return "hecho, sin leer";
    case Suerte::Hecho:
        break;
    }
    return "hecho";
}

std::string Nota(const CTrabajoVisto& uno)
{
    std::string nota;
    const auto anota = [&](const std::string& otra) {
        nota += (nota.empty() || otra.empty() ? "" : " ") + otra;
    };
    for (const std::string& reparo : uno.reparos)
        anota(reparo);
    if (uno.cifras) {
        anota(uno.cifras->alarma);
        anota(uno.cifras->sinComprobar);
        anota(uno.cifras->incompleto);
    }
    return nota;
}

std::string Desde(const CString& pagina, const CString& fichero)
{
    if (fichero.IsEmpty())
        return {};
    const std::filesystem::path donde =
        sistema::EnteraSinPuntos(sistema::Ruta(pagina)).parent_path();
    std::string camino;
    for (const std::filesystem::path& parte :
         sistema::EnteraSinPuntos(sistema::Ruta(fichero)).lexically_relative(donde))
        camino += (camino.empty() ? "" : "/") + sistema::Nombre(parte);
    return camino;
}

} // namespace informe
