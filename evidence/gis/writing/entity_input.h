#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <ogr_feature.h>

#include "evidence/gis/writing/source_fields.h"
#include "vexa_libs/entity.h"

/// What a drawing holds beside its outlines.
enum class ClaseEntidad : std::uint8_t { Rotulos, Lineas };

/// What the features of a layer are, by its name in any case; none for another one.
std::optional<ClaseEntidad> ClaseDeEntidad(const std::string& nombre);

/// A text, point or line on its way into a drawing.
struct CEntidadEntrante {
    bool EsLinea() const { return entidad.Tipo().EsLinea(); }
    bool EsDeHojas() const { return de.entrada.IsEmpty(); } ///< of the sheets' drawing
    ClaseEntidad Clase() const { return EsLinea() ? ClaseEntidad::Lineas : ClaseEntidad::Rotulos; }

    CString nombre;                    ///< that messages call it by
    CDePoligono de;                    ///< nothing for one of the sheets' drawing
    std::optional<int> posicion;       ///< that it had in its drawing, from 1
    bool sinCodigo = false;            ///< its own is the usual one, as the source says none
    std::optional<std::string> deCapa; ///< layer of the outline that it names or bounds
    vexageo::CTexto<int> entidad;      ///< of any kind
    CString rechazo; ///< why its feature was refused, with its name; empty where it wasn't
};

/// Takes the entities of a feature, one for each of its pieces.
/// \return false where it was refused; what was taken is then what is known of it
bool TomaEntidad(ClaseEntidad clase, const OGRFeature& elemento,
                 std::vector<CEntidadEntrante>& entidades);
