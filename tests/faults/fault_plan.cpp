#include "tests/faults/fault_plan.h"

#include <csignal>

CPlanDeFallos& Plan()
{
    static CPlanDeFallos plan;
    return plan;
}

int sistema::Tropiezo(Llamada llamada)
{
    CPlanDeFallos& plan = Plan();
    ++plan.llamadas;
    if (!plan.TocaLlamada(llamada))
        return 0;
    if (plan.que == CPlanDeFallos::Que::MataEnLlamada)
        std::raise(SIGKILL);
    if (plan.que != CPlanDeFallos::Que::FallaLlamada)
        return 0;
    if (plan.alcance == CPlanDeFallos::Alcance::YLasDeSuClase)
        plan.clase = llamada;
    return plan.error;
}
