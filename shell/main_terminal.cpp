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
    "     campiva 1 MODULOS TITULARES PARCELAS SUBPARCELAS PARAJES COTITULARES LISTA ORTOS \\\n"
    "               MODIFICAR NO_EN_GRAFICO NO_EN_BD\n"
    "\n"
    "0: lleva un municipio del fichero de Catastro ENTRADA a las seis tablas de Vexa. Los errores "
    "y\n"
    "   avisos quedan junto a ENTRADA, en un fichero con la extensión ERR.\n"
    "1: cruza las tablas del municipio que nombra LISTA con los dibujos de sus polígonos y "
    "escribe\n"
    "   junto a LISTA los ficheros de Catastro, con las extensiones R y M, y los avisos, con ERR.\n"
    "   Las tres opciones son 0 o 1: reescribir las tablas de parcelas y subparcelas; conservar "
    "lo\n"
    "   que no está en el gráfico; crear las parcelas que sólo están en el gráfico.\n"
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
