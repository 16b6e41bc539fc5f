#include "platform/system.h"
#include "platform/terminal/terminal_front_end.h"
#include "shell/start_up.h"

int main(int argc, char* argv[])
{
    sistema::AbreFlujosCerrados();
    if (AtiendeOpcion(argc, argv))
        return ConSalida(0);
    CFrontalTerminal frontal;
    return EjecutaPrograma(frontal, argc, argv);
}
