#include "evidence/show_drawing/show_drawing.h"
#include "platform/system.h"

int main(int argc, char* argv[])
{
    sistema::PreparaFlujos();
    const std::vector<std::string> textos = sistema::Argumentos(argc, argv);
    std::vector<const char*> argumentos;
    argumentos.reserve(textos.size());
    for (const std::string& texto : textos)
        argumentos.push_back(texto.c_str());
    return EnseñaDibujo(static_cast<int>(argumentos.size()), argumentos.data());
}
