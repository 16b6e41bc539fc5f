#include "shell/start_up.h"

#include <cstdio>
#include <string_view>

#include "platform/system.h"
#include "resources/program_resources.h"
#include "shell/campiva_app.h"
#include "shell/command_line.h"
#include "shell/exit_status.h"

namespace {

constexpr const char* kPrograma = "campiva"; // names the help file

constexpr const char* kUso = R"(Uso: campiva
     campiva 0 ENTRADA MODULOS TITULARES PARCELAS SUBPARCELAS PARAJES \
               COTITULARES
     campiva 1 MODULOS TITULARES PARCELAS SUBPARCELAS PARAJES COTITULARES \
               LISTA ORTOS MODIFICAR NO_EN_GRAFICO NO_EN_BD

Sin nombres de ficheros muestra los diálogos: en ventanas (campiva-gui) o como
texto (campiva), con mandatos que lee de la entrada: ID pulsa un control,
ID=texto lo rellena, ? enseña el diálogo, ? ID la ayuda de un control.
0: lleva un municipio del fichero de Catastro ENTRADA a las seis tablas de
   Vexa. Los errores y avisos quedan junto a ENTRADA, con la extensión ERR.
1: cruza las tablas del municipio que nombra LISTA con los dibujos de sus
   polígonos y escribe junto a LISTA los ficheros de Catastro, con las
   extensiones R y M, y los avisos, con ERR. Las tres opciones son 0 o 1:
   reescribir las tablas de parcelas y subparcelas; conservar lo que no está en
   el gráfico; crear las parcelas que sólo están en el gráfico.

Lo que no tiene lugar en la línea se toma de los ajustes guardados, en
VexaSoft/Campiva.ini bajo XDG_CONFIG_HOME o ~/.config:
  [CampivaAVexa]   TipoEntrada=1            ENTRADA es una relación de
                                            subparcelas con titulares
  [VexaACampiva2]  ModificarConcentradas=1  las parcelas concentradas toman la
                                            superficie del dibujo

Estado de salida: 0, hecho; 1, salió una caja de error o algo de lo pedido no
se pudo hacer; 2, no se pidió nada conocido; 130, el usuario lo detuvo.
)";

constexpr const char* kNoEsOpcion =
    "%s no es ninguna opción, o no está sola. campiva --help dice cómo se usa.\n";

// Never destroyed: the end of the process frees at once what it holds. It has its place without
// asking for any, as nobody could tell before `main` that there is none.
alignas(CCampivaApp) unsigned char g_lugar[sizeof(CCampivaApp)];
CCampivaApp& theApp = *new (g_lugar) CCampivaApp;

} // namespace

int ConSalida(int estado)
{
    const bool dicho = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return estado == 0 && !dicho ? 1 : estado;
}

std::optional<int> AtiendeOpcion(std::span<const std::string> argumentos)
{
    const std::string_view opcion = argumentos.size() > 1 ? argumentos[1] : std::string_view();
    const bool sola = argumentos.size() == 2;
    if (sola && (opcion == "--help" || opcion == "-h")) {
        std::fputs(kUso, stdout);
    } else if (sola && opcion == "--version") {
        std::printf("Campiva %s\n", RecursosDelPrograma().version.version);
    } else if (opcion.starts_with("--")) {
        std::fprintf(stderr, kNoEsOpcion, argumentos[1].c_str());
        return estado::kNadaPedido;
    } else {
        return std::nullopt;
    }
    return ConSalida(estado::kHecho);
}

int EjecutaPrograma(CFrontal& frontal, std::span<const std::string> argumentos)
{
    const CString mandato = UneArgumentos(argumentos.subspan(argumentos.empty() ? 0 : 1));
    if (EligeRuta(ParteMandato(mandato)) ==
        Ruta::Dialogos) // a line's names are those of its writer
        sistema::SalDeLaCarpetaDelPrograma();
    theApp.Arranca(frontal, RecursosDelPrograma(), mandato, CWinApp::FicheroAyuda(kPrograma));
    const int estado = EstadoSalida(theApp);
#ifdef __SANITIZE_ADDRESS__
    theApp.~CCampivaApp(); // so that what nobody else frees comes to light
#endif
    return ConSalida(estado);
}
