#include "evidence/show_drawing/show_drawing.h"
#include "platform/system.h"

int main(int argc, char* argv[])
{
    sistema::PreparaFlujos();
    return EnseñaDibujo(sistema::Argumentos(argc, argv));
}
