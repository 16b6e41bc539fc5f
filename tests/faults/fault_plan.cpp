#include "tests/faults/fault_plan.h"

#include <cerrno>
#ifdef _WIN32
#include <windows.h>
#else
#include <csignal>
#endif

CPlanDeFallos& Plan()
{
    static CPlanDeFallos plan;
    return plan;
}

namespace {

/// Ends the process as if somebody had killed it.
void Muere()
{
#ifdef _WIN32
    TerminateProcess(GetCurrentProcess(), CPlanDeFallos::kMuerto);
#else
    std::raise(SIGKILL);
#endif
}

} // namespace

int sistema::Tropiezo(Llamada llamada)
{
    CPlanDeFallos& plan = Plan();
    if (++plan.llamadas == plan.entretantoEn && plan.entretanto)
        plan.entretanto();
    if (plan.anota)
        plan.hechas.push_back(llamada);
    if (plan.sinCandados && llamada == Llamada::Bloquear)
        return ENOLCK;
    if (plan.sinDerechos && llamada == Llamada::Derechos)
        return EPERM;
    if (plan.entretanto && llamada == Llamada::Esperar)
        return ETIMEDOUT; // for the other run, which stands still here
    if (!plan.TocaLlamada(llamada))
        return 0;
    if (plan.que == CPlanDeFallos::Que::MataEnLlamada)
        Muere();
    if (plan.que != CPlanDeFallos::Que::FallaLlamada)
        return 0;
    if (plan.alcance == CPlanDeFallos::Alcance::YLasDeSuClase)
        plan.clase = llamada;
    return plan.error;
}
