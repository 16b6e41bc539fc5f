#pragma once

namespace sistema {

/// What the layer asks of the system about files.
enum class Llamada {
    Abrir,
    Leer,
    Escribir,
    Mirar, ///< what stands behind a name or an open file
    Recortar,
    Asegurar, ///< bring to the disk
    Cerrar,
    Renombrar,
    Borrar,
    Enlazar,
    Bloquear,
    Derechos,
    Listar,
    Crear,  ///< a folder
    Esperar ///< a moment, for another program
};

/// Asked before each call to the system: 0 to make the call, else the number of the error with
/// which it is to fail. The program's own never lets one fail; a test that wants to see what
/// follows links another one.
int Tropiezo(Llamada llamada);

} // namespace sistema
