#include "tests/support/interruption.h"

#include <windows.h>

bool PuedeInterrumpir()
{
    return GetConsoleCP() != 0;
}

void Interrumpe()
{
    constexpr DWORD kUnMomento = 200; // it comes on a thread of its own
    GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    Sleep(kUnMomento);
}
