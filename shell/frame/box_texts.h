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
inline constexpr const char* kNoSeGuardan =
    "No se han podido guardar los nombres y opciones del diálogo en %s"_ansi;
inline constexpr const char* kOrtosFueraDeFecha =
    "Archivo topológico de ortofotos fuera de fecha.\n"_ansi;
inline constexpr const char* kAlgunasNoSalvadas =
    "ATENCION: Algunas parcelas no fueras salvadas en el archivo de Campiva.\n\n"
    "                         Revisar archivo de errores.\n";

} // namespace cajas
