#include <cstdlib>
#include <new>

#include "tests/faults/fault_plan.h"

// What the address sanitizer keeps of freed memory goes into each copy of the process, and there is
// one for each fault: the usual quarter of a gigabyte would be a third of all that these tests
// take.
extern "C" const char* __asan_default_options() // NOLINT: the sanitizer's own name
{
    return "quarantine_size_mb=16";
}

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
