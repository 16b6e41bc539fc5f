#include "evidence/paths.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/batch_outputs.h"
#include "evidence/report/writing/json_values.h"
#include "evidence/report/writing/run_json.h"

namespace informe {
namespace {

// Of what is written: another one where a program that reads it may err.
constexpr int kFormaResumen = 1;

const char* NombreDe(Suerte suerte)
{
    constexpr const char* kNombres[] = {"falló", "sin leer", "sin hacer", "hecho"};
    return kNombres[static_cast<std::size_t>(suerte)];
}

CValor Cifras(const CTrabajoVisto& uno)
{
    if (!uno.cifras)
        return {};
    CValor cifras;
    for (const CColumnaLote& columna : kColumnasLote) {
        const auto valor = (*uno.cifras).*columna.cifra;
        cifras[columna.nombre] = valor ? CValor(*valor) : CValor();
    }
    return cifras;
}

CValor Trabajo(const CTrabajoVisto& uno, const CString& carpeta)
{
    return {{"trabajo", uno.numero},
            {"carpeta", uno.carpeta},
            {"traduccion", uno.traduccion},
            {"suerte", NombreDe(uno.DameSuerte())},
            {"estado", uno.hecho ? CValor(uno.hecho->estado) : CValor()},
            {"segundos", uno.hecho ? CValor(uno.hecho->segundos) : CValor()},
            {"cifras", Cifras(uno)},
            {"informe", SiHay(Texto(Desde(EnCarpeta(carpeta, "resumen.json"), uno.informe)))},
            {"nota", Nota(uno)}};
}

CValor Suma(const CResumenLote& resumen)
{
    CValor suma = {{"trabajos", resumen.trabajos.size()}};
    for (const auto& [nombre, suerte] :
         {std::pair("fallaron", Suerte::Fallo), std::pair("sinLeer", Suerte::SinLeer),
          std::pair("sinHacer", Suerte::SinHacer), std::pair("hechos", Suerte::Hecho)})
        suma[nombre] = resumen.Cuantos(suerte);
    for (const CColumnaLote& columna : kColumnasLote)
        suma[columna.nombre] =
            resumen.Hay(columna) ? CValor(resumen.Suma(columna.cifra)) : CValor();
    suma["pierden"] = resumen.QuePierden();
    return suma;
}

} // namespace

std::string LoteEnJson(const CResumenLote& resumen, const CFirma& firma)
{
    const auto trabajo = [&](const CTrabajoVisto& uno) { return Trabajo(uno, resumen.carpeta); };
    return EnTexto({{"forma", kFormaResumen},
                    {"programa", Programa(firma)},
                    {"hecho", HoraUtc(firma.hecho)},
                    {"lote", resumen.nombre},
                    {"reparos", resumen.reparos},
                    {"suma", Suma(resumen)},
                    {"trabajos", Lista(resumen.trabajos, trabajo)}});
}

} // namespace informe
