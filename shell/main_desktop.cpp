#include <cstdio>

#include "platform/desktop/desktop_front_end.h"
#include "platform/system.h"
#include "shell/start_up.h"

int main(int argc, char* argv[])
{
    sistema::PreparaFlujos();
    const std::vector<std::string> argumentos = sistema::Argumentos(argc, argv);
    if (const auto estado = AtiendeOpcion(argumentos))
        return *estado;
    CFrontalEscritorio frontal(argv[0], "campiva"); // of packaging/campiva.desktop
    if (!frontal.Funciona()) {
        std::fputs("campiva-gui: no hay pantalla donde mostrar ventanas.\n", stderr);
        return 1;
    }
    return EjecutaPrograma(frontal, argumentos);
}
