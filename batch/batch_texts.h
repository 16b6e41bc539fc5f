#pragma once

// All that the batch says to its users, in UTF-8. Those with a "%" are forms for AnexaFormato.

namespace lote::textos {

inline constexpr const char* kUso = R"(Uso: campiva-lote [opciones] TRABAJOS

Lleva a cabo los trabajos de una tabla, uno por línea, con los campos separados por tabuladores:
  TRADUCCION  CARPETA  [CAMPO=VALOR ...]
TRADUCCION es ida, vuelta o infograf; CARPETA, la del municipio. Las líneas en blanco y las que empiezan
por # no cuentan. Los ficheros están en la carpeta con sus nombres usuales si no se dice otra cosa:
  ida       entrada=entrada.txt  tipo=catastro (o lista)
  vuelta    lista=poligonos.txt  ortos=ortos.TOP  modificar=0  no_en_grafico=0  no_en_bd=0
            concentradas=0
  infograf  lista=poligonos.txt  ortos=ortos.TOP
  ida y vuelta: modulos=Modulos.txt  titulares=Titulares.txt  parcelas=Parcelas.txt
            subparcelas=Subparcelas.txt  parajes=Parajes.txt  cotitulares=Cotitulares.txt

Opciones:
  -j, --procesos N    trabajos a la vez; si no, tantos como núcleos
  --sshlogin MAQUINAS reparte los trabajos, por GNU parallel, entre máquinas que ven las mismas carpetas
  --reanuda           sólo lo que falló o quedó sin hacer la última vez
  --resumen           al final, una página y una hoja de todos (campiva-informe --resumen DIR)
  --resultados DIR    donde quedan el estado y las salidas; si no, TRABAJOS.resultados
  -h, --help          esta ayuda
  --version           la versión

En DIR quedan estado.tsv (una línea por trabajo: número, traducción, carpeta, estado de salida, errores,
warnings, segundos), trabajos.log (lo mismo según se acaban), trabajos.tsv (la tabla) y salidas/N.err (lo
que dijo cada uno).

Estado de salida: 0; 1 si algún trabajo falló o no se hizo; 2 si la línea o la tabla están mal; 130 si se
detuvo.
)";

// What is wrong with the line or the table.
inline constexpr const char* kQueja = "campiva-lote: %s\n";
inline constexpr const char* kFaltaValor = "falta el valor de %s";
inline constexpr const char* kNoEsNumero = "%s no es un número de procesos";
inline constexpr const char* kNoHayOpcion = "no hay opción %s";
inline constexpr const char* kSobra = "sobra %s";
inline constexpr const char* kNoSeLee = "no se puede leer %s";
inline constexpr const char* kSinTrabajos = "%s no tiene ningún trabajo";
inline constexpr const char* kEnLinea = "%s, línea %d: %s";
inline constexpr const char* kNoHayTraduccion = "no hay traducción \"%s\"";
inline constexpr const char* kFaltaCarpeta = "falta la carpeta";
inline constexpr const char* kNoHayCampo = "no hay campo \"%s\"";
inline constexpr const char* kDosVeces = "el campo %s está dos veces";
inline constexpr const char* kNoEsSuyo = "el campo %s no es de la traducción %s";
inline constexpr const char* kNoHayValor = "%s ha de ser %s o %s, no \"%s\"";
inline constexpr const char* kRepite = "repite el trabajo de la línea %d";
inline constexpr const char* kEscribeLoMismo = "escribe %s, como el trabajo de la línea %d";
inline constexpr const char* kLeeLoQueEscribe =
    "lee %s, que escribe el trabajo de la línea %d; han de ir en tablas de trabajos distintas, una "
    "tras otra";
inline constexpr const char* kDesdeOtraCarpeta =
    "el lote de %s empezó en la carpeta %s; --reanuda ha de ser desde ella";
inline constexpr const char* kSinPrograma = "no se encuentra campiva";
inline constexpr const char* kSinParallel = "para --sshlogin hace falta GNU parallel";
inline constexpr const char* kNadaQueReanudar = "en %s no hay nada que reanudar";
inline constexpr const char* kEsDeResultados =
    "%s es un fichero de los resultados en %s, que se perdería";
inline constexpr const char* kNoEsDeResultados =
    "en %s hay ficheros y no son resultados de campiva-lote; --resultados ha de dar otra carpeta";
inline constexpr const char* kEnManosDeOtro = "otro campiva-lote trabaja en %s";
inline constexpr const char* kSinMemoria = "campiva-lote: no hay memoria bastante\n";

// While it works, and at the end.
inline constexpr const char* kAvance = "%d de %d trabajos, %d con fallos";
inline constexpr const char* kQuedan = ", quedan %s";
inline constexpr const char* kNoEmpieza = "No se pudo empezar en %s: %s\n";
inline constexpr const char* kFin = "%d trabajos, %d con fallos o sin hacer; estado en %s\n";

inline constexpr const char* kSinInforme =
    "No hay resumen, porque no se encuentra campiva-informe; campiva-informe --resumen %s lo "
    "hace.\n";
inline constexpr const char* kSinResumen = "No hay resumen: %s\n";
inline constexpr const char* kSeCorto = "campiva-informe no llegó a su fin";

inline constexpr const char* kCabeceraEstado =
    "trabajo\ttraduccion\tcarpeta\testado\terrores\twarnings\tsegundos\n";

} // namespace lote::textos
