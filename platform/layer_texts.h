#pragma once

#include <string_view>

#include "platform/ansi.h"

// All that the layer says to users in words of its own; what the program has it say comes with the
// resources or in a call. Texts are UTF-8, or code page 1252 where "_ansi" stands behind them.
// Those with a "%" are forms for AnexaFormato (format.h).

namespace textos {

// Files and settings: boxes, and the log.
inline constexpr const char* kError = "Error";
inline constexpr const char* kAjustes = "Ajustes"; ///< caption, where they can't be read or stored
inline constexpr const char* kNoSeEscribe = "Imposible escribir el archivo %s";
inline constexpr const char* kNoSeLee = "Imposible leer el archivo %s";
inline constexpr const char* kTerminaAntes = "Termina antes de la longitud que tenía"_ansi;
inline constexpr const char* kEnUtf16 =
    "Está en UTF-16: guárdelo como UTF-8 o como ANSI"_ansi; ///< of the settings' file
inline constexpr const char* kNoCabeEnUnaLinea =
    "Lo demás está guardado, pero %s tiene un fin de línea"_ansi; ///< of a setting, by its key
/// Named where the folder for what is passing can't be found.
inline constexpr const char* kCarpetaTemporal = "TMPDIR (la carpeta temporal)";
inline constexpr const char* kLoEscribeOtro = "Otro proceso lo está escribiendo"_ansi;
inline constexpr const char* kSinDevolver =
    "No se ha podido devolver lo que tenían (lo hará el próximo proceso que trabaje en su carpeta):"_ansi;
/// Of a file that another user's program left half changed: who he is, and where it is told.
inline constexpr const char* kAMedias =
    "Se quedó a medias cuando murió un proceso de %s, y este usuario no puede devolverle lo que "
    "tenía.\nHágalo trabajar otra vez en esa carpeta, o pregunte a quien la administra: lo cuenta %s"_ansi;
/// Of a file that a killed run left half changed, and somebody has worked on since.
inline constexpr const char* kTocado =
    "Un proceso anterior se cortó a medias. %s se ha cambiado desde entonces y sigue como está; lo "
    "que había antes de aquel proceso queda en %s"_ansi;
// Of what an output replaces.
inline constexpr const char* kAnterior = "Lo que había en %s queda en %s"_ansi;
inline constexpr const char* kEscritoMientras =
    "Otro programa ha escrito en %s durante el proceso; lo suyo queda en %s"_ansi;
inline constexpr const char* kNoSeConserva =
    "Lo que había en %s no se ha podido conservar a su lado"_ansi;
/// Stands in a log where lines of it couldn't be written.
inline constexpr std::string_view kMarcaHueco =
    "\r\n*** Faltan mensajes: no se pudieron escribir ***\r\n";

// Memory ran out: in a box, and on the standard error where not even a box can be shown.
inline constexpr const char* kSinMemoria = "No hay memoria para seguir";
inline constexpr const char* kSinMemoriaNiCaja = "[Error]\nNo hay memoria para seguir\n\n";

/// Caption of the box that says what a run has observed.
inline constexpr const char* kObservaciones = "Observaciones";

// The foot of a translation's window, on every desktop.
inline constexpr const char* kNombresSinCarpeta =
    "Los nombres sin carpeta van a %s";                            ///< before a run
inline constexpr const char* kQuedan = ", quedan %s de esta fase"; ///< behind the time passed
inline constexpr const char* kDuracion = "Duración: %s";
inline constexpr const char* kHaciendoInforme = "Se está haciendo el informe...";
inline constexpr const char* kHaciendoEnsayo = "Se está haciendo el ensayo...";
inline constexpr const char* kRegistroVacio = "Registro vacío: sin errores ni avisos";
inline constexpr const char* kAbreLog = "Abrir &registro";
inline constexpr const char* kHazInforme = "In&forme";
inline constexpr const char* kHazEnsayo = "E&nsayo";
inline constexpr const char* kAbreCarpeta = "Abrir carp&eta";
/// The same for a person who hears them; the path follows.
inline constexpr const char* kNombreAbreLog = "Abrir el registro de errores: ";
inline constexpr const char* kNombreHazInforme = "Hacer y abrir el informe de: ";
inline constexpr const char* kNombreHazEnsayo = "Ver lo que cambiaría el proceso, sin cambiar nada";
inline constexpr const char* kNombreAbreCarpeta = "Abrir la carpeta de los archivos escritos: ";
inline constexpr const char* kNoSeAbre = "Ningún programa abre aquí %s";
inline constexpr const char* kNoHayInforme = "No se pudo hacer el informe de %s";
inline constexpr const char* kNoHayEnsayo =
    "No se pudo hacer el ensayo de \"%s\".\nMire que estén la lista y las seis tablas.";

/// What Windows shows its user who ends the session during a run.
inline constexpr const char* kProcesoAMedias =
    "Hay un proceso a medias. Si se corta, los archivos quedan como estaban.";

// Windows that the system doesn't fill with words of its own.
inline constexpr const char* kSi = "&Sí";
inline constexpr const char* kNo = "&No";
inline constexpr const char* kReintentar = "&Reintentar";
inline constexpr const char* kCancelar = "&Cancelar";
inline constexpr const char* kAceptar = "&Aceptar";
inline constexpr const char* kElige = "Abrir"; ///< title of the box for choosing a file
inline constexpr const char* kNombreIlegible =
    "El nombre de ese archivo no se puede leer aquí. Cámbielo y elíjalo otra vez.";
inline constexpr const char* kAyuda = "Ayuda";
inline constexpr const char* kTituloAyuda = "Ayuda: %s";
inline constexpr const char* kNoSeVeLaAyuda = "No se encuentra la ayuda en \"%s\", o está dañada.";

// The terminal.
inline constexpr const char* kNoEstaLaAyuda = "No se encuentra la ayuda en \"%s\".\n";
inline constexpr const char* kSinTema = "La ayuda no dice nada del control %d.\n";
inline constexpr const char* kSinMandatos =
    "La entrada acaba antes del primer mandato: no se ha hecho nada.\n";
inline constexpr const char* kAvisos = "Avisos: %s%s\n";
inline constexpr const char* kNingunAviso = " (vacío: no hay ninguno)";
inline constexpr const char* kEscritos = "Escrito en %s:";
inline constexpr const char* kSeEnsaya =
    "Antes, sin cambiar nada, %s --ensayo LISTA dice lo que cambiaría.\n";
inline constexpr const char* kSiNo = " (s/n) ";
inline constexpr const char* kPideFichero = "Fichero (ahora \"%s\"): ";
inline constexpr const char* kNoExiste = "El archivo %s no existe; el campo queda como estaba.\n";

// A dialog as text.
inline constexpr const char* kEstado = "Estado"; ///< of the progress bar
inline constexpr const char* kNoSeEntiende =
    "No se entiende \"%s\". Escriba ID para pulsar, ID=texto para rellenar, ? para ver el diálogo "
    "o ? ID para la ayuda de un control.\n";
inline constexpr const char* kNoHayControl = "El diálogo no tiene ningún control %s.\n";
inline constexpr const char* kInactivo = "El control %d está desactivado.\n";
inline constexpr const char* kSeRellena = "El control %d no se pulsa: se rellena, con %d=texto.\n";
inline constexpr const char* kNoSeRellena = "El control %d no se rellena.\n";
inline constexpr const char* kNoEstaEnLista = "La lista %d no tiene \"%s\".\n";

} // namespace textos
