#include "evidence/report/findings/changes/contrast.h"

#include <utility>

#include "evidence/report/reading/text.h"

namespace informe {
namespace {

std::string Reparo(const CEstadoLeido& leido)
{
    return leido.reparo.empty() ? std::string() : Texto(leido.nombre) + " " + leido.reparo;
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
    if (cambios.antes.parcelas == 0)
        reparo = Texto(antes.nombre) + " es de otro municipio que " + Texto(ahora.nombre);
}

CEstadoLeido EstadoDeProceso(const CProceso& proceso)
{
    const CFicheros& ficheros = proceso.ficheros;
    CEstadoLeido leido;
    leido.nombre = ficheros.registro;
    if (proceso.Detenido())
        leido.reparo = "es de un proceso que se detuvo, y no dejó con qué comparar";
    else if (ficheros.sentido == Sentido::Vuelta)
        return LeeEstado(ficheros.ficheroR);
    else if (ficheros.sentido == Sentido::Ida)
        return LeeEstado(ficheros.tablas, CCadena(ficheros.tablas[kParcelas]).DamePath());
    else
        leido.reparo = "no es de una ida ni de una vuelta, y no hay con qué comparar";
    return leido;
}

} // namespace informe
