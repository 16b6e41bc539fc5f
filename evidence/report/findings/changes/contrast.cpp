#include "evidence/report/findings/changes/contrast.h"

#include <algorithm>
#include <utility>

#include "evidence/report/reading/text.h"

namespace informe {
namespace {

std::string Reparo(const CEstadoLeido& leido)
{
    if (leido.reparo.empty())
        return {};
    return (leido.nombre == CString(".") ? "La carpeta de trabajo" : Texto(leido.nombre)) + " " +
           leido.reparo;
}

/// Municipalities of different offices may have one number.
bool SonDeOtraGerencia(const CEstadoMunicipio& antes, const CEstadoMunicipio& ahora)
{
    return !antes.gerencias.empty() && !ahora.gerencias.empty() &&
           std::ranges::find_first_of(antes.gerencias, ahora.gerencias) == antes.gerencias.end();
}

} // namespace

CContraste::CContraste(CEstadoLeido viejo, CEstadoLeido nuevo, Municipios cuales)
    : antes(std::move(viejo)), ahora(std::move(nuevo))
{
    for (const CEstadoLeido* leido : {&antes, &ahora})
        if (reparo.empty())
            reparo = Reparo(*leido);
    if (!reparo.empty())
        return;
    cambios = Compara(antes.estado, ahora.estado, cuales);
    if (cambios.antes.parcelas == 0 || SonDeOtraGerencia(antes.estado, ahora.estado))
        reparo = Texto(antes.nombre) + " es de otro municipio que " + Texto(ahora.nombre);
}

CEstadoLeido EstadoDeProceso(const CProceso& proceso)
{
    const CFicheros& ficheros = proceso.ficheros;
    if (proceso.Detenido())
        return {.nombre = ficheros.registro,
                .reparo = "es de un proceso que se detuvo, y no dejó con qué comparar"};
    if (ficheros.sentido == Sentido::Vuelta)
        return LeeEstado(ficheros.ficheroR);
    if (ficheros.sentido == Sentido::Ida)
        return LeeEstado(ficheros.tablas, CCadena(ficheros.tablas[kParcelas]).DamePath());
    return {.nombre = ficheros.registro,
            .reparo = "no es de una ida ni de una vuelta, y no hay con qué comparar"};
}

} // namespace informe
