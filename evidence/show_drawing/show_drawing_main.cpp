#include "evidence/show_drawing/show_drawing.h"

int main(int argc, char* argv[])
{
    return EnseñaDibujo(argc, argv);
}
