#include "shell/start_up.h"

#include <cstdio>
#include <string_view>

#include "resources/resources.h"
#include "shell/campiva_app.h"

namespace {

constexpr const char* kPrograma = "campiva"; // names the help file

constexpr const char* kUso =
    "Uso: campiva\n"
    "     campiva 0 ENTRADA MODULOS TITULARES PARCELAS SUBPARCELAS PARAJES COTITULARES\n"
    "     campiva 1 MODULOS TITULARES PARCELAS SUBPARCELAS PARAJES COTITULARES LISTA ORTOS \\\n"
    "               MODIFICAR NO_EN_GRAFICO NO_EN_BD\n"
    "\n"
    "Sin nombres de ficheros muestra los diálogos: en ventanas (campiva-gui) o como texto "
    "(campiva),\n"
    "con mandatos que lee de la entrada: ID pulsa un control, ID=texto lo rellena, ? enseña el "
    "diálogo.\n"
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
    "Estado de salida: 0; 1 si una traducción de la línea mostró una caja de error; 2 si la línea\n"
    "no pide nada conocido.\n";

CCampivaApp theApp;

} // namespace

bool AtiendeOpcion(int argc, const char* const* argv)
{
    if (argc != 2)
        return false;
    const std::string_view opcion = argv[1];
    if (opcion == "--help")
        std::fputs(kUso, stdout);
    else if (opcion == "--version")
        std::printf("Campiva %s\n", RecursosDelPrograma().Version().version);
    else
        return false;
    return true;
}

int EjecutaPrograma(CFrontal& frontal, int argc, const char* const* argv)
{
    CString mandato;
    for (int i = 1; i < argc; ++i)
        mandato += (i > 1 ? CString("\t") : CString()) + argv[i];
    theApp.Arranca(frontal, RecursosDelPrograma(), mandato, CWinApp::FicheroAyuda(kPrograma));
    return theApp.EstadoSalida();
}
