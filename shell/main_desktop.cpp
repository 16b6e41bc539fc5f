#include <cstdio>

#include "platform/desktop/desktop_front_end.h"
#include "shell/start_up.h"

int main(int argc, char* argv[])
{
    if (AtiendeOpcion(argc, argv))
        return 0;
    CFrontalEscritorio frontal(argc, argv);
    if (!frontal.Funciona()) {
        std::fputs("campiva-gui: no hay pantalla donde mostrar ventanas.\n", stderr);
        return 1;
    }
    return EjecutaPrograma(frontal, argc, argv);
}
