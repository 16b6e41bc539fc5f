#include "tests/faults/fault_plan.h"

#include <csignal>
#include <cstdlib>
#include <new>

CPlanDeFallos& Plan()
{
    static CPlanDeFallos plan;
    return plan;
}

int sistema::Tropiezo(Llamada /*llamada*/)
{
    CPlanDeFallos& plan = Plan();
    ++plan.llamadas;
    if (plan.que == CPlanDeFallos::Que::FallaLlamada && plan.Toca(plan.llamadas))
        return plan.error;
    if (plan.que == CPlanDeFallos::Que::MataEnLlamada && plan.Toca(plan.llamadas))
        std::raise(SIGKILL);
    return 0;
}

void* operator new(std::size_t bytes)
{
    CPlanDeFallos& plan = Plan();
    if (plan.que == CPlanDeFallos::Que::FaltaMemoria && plan.Toca(++plan.reservas))
        throw std::bad_alloc();
    if (void* bloque = std::malloc(bytes > 0 ? bytes : 1))
        return bloque;
    throw std::bad_alloc();
}

void* operator new(std::size_t bytes, const std::nothrow_t& /*marca*/) noexcept
{
    CPlanDeFallos& plan = Plan();
    if (plan.que == CPlanDeFallos::Que::FaltaMemoria && plan.Toca(++plan.reservas))
        return nullptr;
    return std::malloc(bytes > 0 ? bytes : 1);
}

void operator delete(void* bloque) noexcept
{
    std::free(bloque);
}

void operator delete(void* bloque, std::size_t /*bytes*/) noexcept
{
    std::free(bloque);
}
