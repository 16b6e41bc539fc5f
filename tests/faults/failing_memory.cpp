#include <cstdlib>
#include <new>

#include "tests/faults/fault_plan.h"

// The program's allocation, which the plan in force lets fail.

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
