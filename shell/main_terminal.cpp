#include <cstdio>
#include <string_view>

#include "platform/ansi.h"
#include "platform/terminal/terminal_front_end.h"
#include "resources/resources.h"
#include "shell/campiva_app.h"
#include "vexa_libs/ccadena.h"

namespace {

constexpr const char* kUso =
    "Uso: campiva 0 ENTRADA MODULOS TITULARES PARCELAS SUBPARCELAS PARAJES COTITULARES\n"
    "\n"
    "Lleva un municipio del fichero de Catastro ENTRADA a las seis tablas de Vexa.\n"
    "Los errores y avisos quedan junto a ENTRADA, en un fichero con la extensión ERR.\n"
    "\n"
    "Estado de salida: 0; 1 si hubo una caja de error; 2 si la línea no pide nada conocido.\n";

CCampivaApp theApp;

} // namespace

int main(int argc, char* argv[])
{
    if (argc == 2 && std::string_view(argv[1]) == "--help") {
        std::fputs(kUso, stdout);
        return 0;
    }
    if (argc == 2 && std::string_view(argv[1]) == "--version") {
        std::printf("Campiva %s\n", RecursosDelPrograma().Version().version);
        return 0;
    }
    CString mandato;
    for (int i = 1; i < argc; ++i)
        mandato += (i > 1 ? CString("\t") : CString()) + argv[i];
    CCadena ayuda(argc > 0 ? argv[0] : "");
    ayuda.CambiaExtension("HLP");
    CFrontalTerminal frontal;
    theApp.Arranca(frontal, RecursosDelPrograma(), mandato, ayuda);
    return theApp.EstadoSalida();
}
