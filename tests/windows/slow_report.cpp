#include <cstdio>
#include <string_view>

#include <windows.h>

// Stands for the program that makes reports: waits until the test has it go on, and makes a page.
int main(int argc, char* argv[])
{
    HANDLE sigue = OpenEventW(SYNCHRONIZE, FALSE, L"informe_de_prueba");
    WaitForSingleObject(sigue, INFINITE);
    for (int i = 1; i + 1 < argc; ++i)
        if (std::string_view(argv[i]) == "--html")
            if (std::FILE* pagina = std::fopen(argv[i + 1], "w"))
                std::fclose(pagina);
    return 0;
}
