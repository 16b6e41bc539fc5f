#include "tests/support/interruption.h"

#include <csignal>

bool PuedeInterrumpir()
{
    return true;
}

void Interrumpe()
{
    std::raise(SIGINT);
}
