#include "platform/system.h"
#include "platform/windows/windows_front_end.h"
#include "shell/start_up.h"

int main(int argc, char* argv[])
{
    sistema::PreparaFlujos();
    const std::vector<std::string> argumentos = sistema::Argumentos(argc, argv);
    if (const auto estado = AtiendeOpcion(argumentos))
        return *estado;
    sistema::DejaConsola();
    CFrontalWindows frontal;
    return EjecutaPrograma(frontal, argumentos);
}
