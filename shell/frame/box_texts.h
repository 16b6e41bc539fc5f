#pragma once

#include "platform/ansi.h"

// The texts of the translations' own boxes that have no number in the string table. The log's
// messages and the summaries stand in the catalogue, the layer's own texts in
// platform/layer_texts.h.

namespace cajas {

inline constexpr const char* kError = "Error";
inline constexpr const char* kFin = "Fin del proceso";
inline constexpr const char* kPausa = "Pausa de usuario";

inline constexpr const char* kDetener = "¿ Quiere detener el proceso ?"_ansi;
inline constexpr const char* kNoExiste = "El archivo %s no existe";
inline constexpr const char* kNoSePuedeCrear = "El archivo %s no se puede crear";
inline constexpr const char* kNoSeCrea = "Imposible crear el archivo %s";
inline constexpr const char* kNoSeSalvanParcelas = "Imposible salvar el archivo %s";
/// Cut short by whoever wrote it first; users' scripts know it so.
inline constexpr const char* kNoSeSalvanSubparcelas = "Imposib salvar el archivo %s";
inline constexpr const char* kSalidaRepetida =
    "El archivo %s es a la vez dos de los que el proceso escribe";
/// Before a run: the output, and the program that has it open.
inline constexpr const char* kLoTieneOtro =
    "El archivo %s no se puede escribir: lo tiene abierto %s.\n\nCiérrelo. ¿ Se intenta otra vez ?"_ansi;
inline constexpr const char* kOtroPrograma = "otro programa";
inline constexpr const char* kNoSeGuardan =
    "No se han podido guardar los nombres y opciones del diálogo en %s"_ansi;
inline constexpr const char* kNoSeLeenAjustes =
    "No se han podido leer los nombres y opciones guardados en %s"_ansi;
inline constexpr const char* kOrtosFueraDeFecha =
    "Archivo topológico de ortofotos fuera de fecha.\n"_ansi;
inline constexpr const char* kAlgunasNoSalvadas =
    "ATENCION: Algunas parcelas no fueras salvadas en el archivo de Campiva.\n\n"
    "                         Revisar archivo de errores.\n";

} // namespace cajas

// What a run says behind its summary where its input may not be what it was read as, or its outputs
// aren't what they seem.
namespace observaciones {

inline constexpr const char* kNoEsIntercambio =
    "Ninguna línea de %s es de un fichero de intercambio. ¿Será una relación de subparcelas con "
    "titulares (TipoEntrada=1)?"_ansi;
inline constexpr const char* kNoEsRelacion =
    "Ninguna línea de %s es de una relación de subparcelas con titulares. ¿Será un fichero de "
    "intercambio (TipoEntrada=0)?"_ansi;
inline constexpr const char* kVacia = "El archivo %s está vacío"_ansi;
inline constexpr const char* kSoloRetornos =
    "Las líneas de %s acaban en retorno de carro sin salto de línea, y se han leído como una sola"_ansi;
inline constexpr const char* kParecenUtf8 =
    "El archivo %s parece estar en UTF-8: sus acentos y eñes se han leído mal"_ansi;
inline constexpr const char* kLineasEnUtf8 =
    "En %s hay líneas en UTF-8, %d, entre otras que no lo están: sus acentos y eñes se han leído mal"_ansi;
inline constexpr const char* kLineasDeDos =
    "En %s hay líneas con letras de la página de códigos de DOS, %d: sus acentos y eñes se han leído mal"_ansi;
inline constexpr const char* kEnUtf16 =
    "El archivo %s está en UTF-16 y se ha leído mal: guárdelo como ANSI"_ansi;
inline constexpr const char* kConMarca =
    "El archivo %s empieza por una marca de Unicode y se ha leído mal: guárdelo como ANSI"_ansi;
inline constexpr const char* kLineasSinTipo =
    "En %s hay líneas que no empiezan como un registro, %d. No se han leído"_ansi;
inline constexpr const char* kLineasConFines = "En %s hay líneas con retornos de carro o fines de "
                                               "fichero dentro, %d. Lo que va detrás no se ha "
                                               "leído"_ansi;
inline constexpr const char* kLineasDobles =
    "En %s hay líneas con más de un registro, %d. Sólo se ha leído el primero"_ansi;
inline constexpr const char* kEntradaCortada = "El archivo %s acaba a mitad de una línea"_ansi;
inline constexpr const char* kSinParcelas =
    "En %s hay titulares, y ninguna parcela que se haya podido leer"_ansi;
inline constexpr const char* kLineasLargas =
    "Todas las líneas de %s son más largas que las de su forma"_ansi;
inline constexpr const char* kLineasCortas =
    "Todas las líneas de %s son más cortas que las de su forma"_ansi;
inline constexpr const char* kOtraUltima = "En %s hay parcelas, %d, de otro municipio que el de su "
                                           "última línea, %03d, que es donde se han "
                                           "buscado los datos de todas. ¿Sobra esa línea?"_ansi;
inline constexpr const char* kLineasDeOtraGer =
    "En %s hay líneas de otra gerencia que la primera, %d. Las tablas llevan la de ella"_ansi;
inline constexpr const char* kParajesDeOtro =
    "En %s hay parajes con el número de otro, %d. Sus parcelas van al primero"_ansi;
inline constexpr const char* kQuedanSinNumero = "En %s hay líneas de titulares con el número de "
                                                "otro, %d. Quedan sin número, y sus parcelas sin "
                                                "titular"_ansi;
inline constexpr const char* kParcelasSinReferencia =
    "En %s hay parcelas sin número o sin polígono, %d. No se han leído, ni sus subparcelas"_ansi;
inline constexpr const char* kParcelasConOtrosDatos =
    "En %s hay parcelas que vienen otra vez con otra superficie, zona o paraje, %d. Vale la "
    "primera"_ansi;
inline constexpr const char* kSubparcelasSinTitular =
    "En %s hay subparcelas de un titular de otro municipio, %d. Quedan sin él"_ansi;
inline constexpr const char* kTabuladores = "En %s hay líneas con tabuladores, %d. El texto que "
                                            "lleva uno queda partido en su tabla, y lo que "
                                            "va detrás se lee en otra columna"_ansi;
inline constexpr const char* kFilasPartidas =
    "En %s hay filas con un tabulador de más, %d. El texto que lo lleva queda partido, y lo que va "
    "detrás se lee en otra columna"_ansi;
inline constexpr const char* kFilasIncompletas =
    "En %s hay filas sin algún campo que deben tener, %d. No se han leído"_ansi;
inline constexpr const char* kFilasSinMunicipio =
    "En %s hay filas sin número de municipio, %d. No se han leído"_ansi;
inline constexpr const char* kFilasDeOtraGer =
    "En %s hay filas de otra provincia que la de la lista, %d. Se han leído como del municipio"_ansi;
inline constexpr const char* kFilasRepetidas =
    "En %s hay filas de lo que ya tiene otra, %d. Vale la primera"_ansi;
inline constexpr const char* kFilasSinParcelas =
    "En %s hay filas de un municipio del que no hay parcelas, %d. No se han leído"_ansi;
inline constexpr const char* kLetrasDeMas =
    "En %s hay filas con más de una letra donde cabe una, %d. Se ha leído la primera"_ansi;
inline constexpr const char* kFaltanTitulares =
    "En %s hay parcelas cuyas participaciones suman menos de 100, %d. ¿Falta algún titular?"_ansi;
inline constexpr const char* kNumerosQuePasan =
    "En %s hay registros con un número demasiado grande, %d, que se ha leído mal: un valor o una "
    "superficie llega a 2147483647; un volumen, a 32767"_ansi;
inline constexpr const char* kCaracteresQueParten =
    "En %s hay construcciones cuyo carácter singular es un tabulador o un fin de línea, %d, que "
    "parte su fila"_ansi;
inline constexpr const char* kNumerosDeOtro =
    "En %s hay titulares con el número de otro, %d. Sus parcelas van a nombre del primero"_ansi;
inline constexpr const char* kDniSinCeros =
    "En %s hay titulares con un DNI de menos de ocho cifras, %d. ¿Le quitó los ceros una hoja de "
    "cálculo?"_ansi;
inline constexpr const char* kSumados =
    "En %s hay filas de quien ya es titular de su parcela, %d. Sus participaciones se han sumado"_ansi;
inline constexpr const char* kNumerosConResto = "En %s hay registros con números que llevan algo "
                                                "más que cifras, %d. Se han leído sin lo que va "
                                                "detrás"_ansi;
inline constexpr const char* kPoligonosDeMas =
    "La lista %s nombra otra vez polígonos que ya tiene, %d. Sus registros van repetidos"_ansi;
inline constexpr const char* kFilasSueltas =
    "En %s hay parcelas cuyo titular o paraje falta en su tabla, %d. Se reescriben sin él"_ansi;
inline constexpr const char* kFilasDejadas =
    "En %s hay filas de las que habla el registro de errores, %d, que no se reescriben"_ansi;
inline constexpr const char* kEntradaCambiada =
    "Otro programa ha escrito en %s mientras se leía: puede haberse leído a medias"_ansi;
inline constexpr const char* kEntreComillas =
    "En %s hay filas con textos entre comillas, %d, que se han leído como parte de ellos"_ansi;
inline constexpr const char* kTablaCortada = "El archivo %s acaba a mitad de una fila"_ansi;
inline constexpr const char* kColumnasPropias =
    "Las filas de %s tienen más columnas que las de su tabla, que no se reescriben"_ansi;
inline constexpr const char* kSinPoligonos = "La lista %s no nombra ningún polígono"_ansi;
inline constexpr const char* kOtroMunicipio =
    "Ninguna fila de %s es del municipio %03d %03d, el de la primera línea de %s"_ansi;
inline constexpr const char* kNingunaFila = "De %s no ha valido ninguna fila como %s";
inline constexpr const char* kEsOtraTabla = "La cabecera de %s es la de otra tabla, no la de %s";
inline constexpr const char* kFilasAjenas =
    "En %s hay filas de otros municipios, %d, que no se reescriben";

inline constexpr const char* kDibujoSinLeer =
    "El archivo %s está en su sitio y no se pudo leer: lo escrito no cuenta con él"_ansi;
inline constexpr const char* kDibujoAMedias =
    "El archivo %s está dañado o fuera de fecha: lo escrito no cuenta con todo lo que dibuja"_ansi;
inline constexpr const char* kTopologiaVacia =
    "El archivo %s está vacío: de él no sale ningún recinto"_ansi;
inline constexpr const char* kHojasSinNombre =
    "En %s hay hojas sin rótulo, y parcelas en ellas, %d, que quedan sin hoja"_ansi;
inline constexpr const char* kRecintosSueltos =
    "En los dibujos de %s hay recintos fuera de su parcela o de su polígono, %d, que quedan sin "
    "registro"_ansi;
inline constexpr const char* kRecintosSinNumero =
    "En los dibujos de %s hay parcelas o polígonos sin número en su rótulo, %d. Llevan un 0"_ansi;
inline constexpr const char* kRotulosPartidos =
    "En %s hay rótulos con un tabulador o un fin de línea, %d, que parten las filas donde se "
    "escriben. Corríjalos en el dibujo"_ansi;
inline constexpr const char* kOtroDibujo =
    "De la entrada %s se ha leído %s: lo que va tras el último punto se toma por extensión"_ansi;
inline constexpr const char* kDesbordes =
    "En %s hay registros con algún dato que no cabe en su columna, %d, desde la línea %d. Va "
    "cortado, o corre lo que va detrás"_ansi;
inline constexpr const char* kDetenido = "El proceso se detuvo: lo escrito no está completo"_ansi;

} // namespace observaciones
