#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <ogr_feature.h>

#include "evidence/drawn_polygon.h"
#include "evidence/gis/writing/noding.h"
#include "evidence/gis/writing/source_fields.h"
#include "platform/cstring.h"

/// What the outlines of a layer are, by its name in any case; none for another one.
std::optional<ClaseTopologia> ClaseDeCapa(const std::string& nombre);
/// The name of their layer, and what a person calls one of them.
const char* NombreDeCapa(ClaseTopologia clase);

/// Which fields count where they say different things.
enum class Ganan : std::uint8_t { Nadie, Numeros, Rotulos };

/// One outline on its way into a drawing.
struct CRecintoEntrante {
    /// The code of its label, and whether that is deleted, where the source doesn't say.
    CString Codigo() const;
    bool Borrado() const { return borrado.value_or(false); }
    bool EsDeHojas() const { return clase == ClaseTopologia::Hojas; } ///< of the sheets' drawing

    ClaseTopologia clase = ClaseTopologia::Parcelas;
    CString nombre; ///< that messages call it by
    CDePoligono de; ///< nothing for a sheet
    std::optional<int> numero;
    std::optional<CString> rotulo; ///< none for an outline without a label
    bool sinCampoRotulo = false;   ///< the source has no labels: numbers say which outline it is
    bool rotuloEsNumero = false;   ///< the source took the label for a number
    std::optional<CString> codigo;
    std::optional<bool> borrado;
    std::optional<vexageo::CPunto<int>> punto; ///< where its label is wished
    std::vector<CAnilloFino> anillos;          ///< the outer one first, without closing points

    // What its label should say by the other fields.
    std::optional<int> parcela;
    std::optional<CString> letra;
    std::optional<CString> porNumeros; ///< none where they say nothing
    CString contradiccion;             ///< where the two differ: what each says

    CString defecto; ///< why its boundary can't be drawn; empty where it can
    CString rechazo; ///< why its feature was refused, with its name; empty where it wasn't
};

/// Tells why coordinates with this reference are none of a drawing: degrees, feet. Empty where they
/// may be metres. Some formats put a geographic reference where there is none at all: that says
/// nothing.
CString MotivoDeReferencia(const OGRSpatialReference* referencia);

/// Tells why a geometry can't be in a drawing wherever it lies and however it looks: it is in
/// degrees or feet, or too far out. Empty where it can.
CString MotivoDeLugar(const OGRGeometry& geometria);

/// Takes the outlines of a feature, one for each of its pieces.
/// \param tolerancia  metres that a chord may be off its arc; 0 refuses arcs
/// \return false where it was refused; what was taken is then what is known of it
bool TomaElemento(ClaseTopologia clase, const OGRFeature& elemento, double tolerancia,
                  std::vector<CRecintoEntrante>& recintos);
