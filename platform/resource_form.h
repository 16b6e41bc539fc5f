#pragma once

#include <span>

#include "platform/types.h"

// The form of the program's resources. Their content is handed to the application at its start.

struct CCadenaRecurso {
    UINT id;
    const char* texto; ///< code page 1252
};

enum class ClaseControl {
    // What a user works.
    Boton,
    BotonPorDefecto,
    Casilla,
    Radio,
    Edicion,
    Lista,
    // What is there to be read or looked at.
    Texto,
    Grupo,
    Progreso,
    Imagen,
    Icono
};

/// Tells whether a user presses it.
constexpr bool SePulsa(ClaseControl clase)
{
    return clase < ClaseControl::Edicion;
}

/// Id of labels and group boxes, which nothing asks for.
inline constexpr UINT kSinId = 0xFFFF;

struct CPlantillaControl {
    ClaseControl clase;
    UINT id;
    const char* texto; ///< caption with its mnemonic; a progress bar's name; a picture has none
    short x, y, ancho, alto;                     ///< dialog units
    std::span<const char* const> elementos = {}; ///< of a drop-down list
    bool abreGrupo = false;                      ///< first of a row of radio buttons
};

struct CPlantillaDialogo {
    UINT id;
    const char* titulo;
    short ancho, alto; ///< dialog units
    std::span<const CPlantillaControl>
        controles; ///< in tab order; a label stands before its control
};

/// A drawing, as a text in SVG. It can be shown in any size of these proportions.
struct CDibujoRecurso {
    UINT id;
    short ancho, alto;
    const char* svg;
};

/// The program's version block.
struct CRecursoVersion {
    const char* producto = "";
    const char* descripcion = "";
    const char* version = "";
    const char* copyright = "";
    const char* empresa = "";
};

/// Files that the layer finds by name: beside the program, and inside its help.
struct CFicherosPrograma {
    /// First page of the manual as a browser reads it, from the help file's folder; empty for none.
    const char* manual = "";
    const char* informe = ""; ///< the program that makes a report of a log; empty for none
    const char* textosDeControles = ""; ///< in the help: what it says of each control
};

/// All of them. Each part has its ids.
struct CRecursos {
    std::span<const CCadenaRecurso> cadenas = {};
    std::span<const CPlantillaDialogo> dialogos = {};
    std::span<const CDibujoRecurso> dibujos = {};
    CRecursoVersion version = {};
    CFicherosPrograma ficheros = {};
};

/// The string, template or drawing of an id, or null for an id that isn't there.
template <class T>
constexpr const T* BuscaRecurso(std::span<const T> todos, UINT id)
{
    for (const T& uno : todos)
        if (uno.id == id)
            return &uno;
    return nullptr;
}

/// Those of the application object.
const CRecursos& RecursosDeLaAplicacion();
