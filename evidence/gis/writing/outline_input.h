#pragma once

#include <optional>
#include <string>
#include <vector>

#include <ogr_feature.h>

#include "evidence/drawn_polygon.h"
#include "evidence/gis/writing/noding.h"
#include "platform/cstring.h"

/// What the outlines of a layer are, by its name in any case; none for another one.
std::optional<ClaseTopologia> ClaseDeCapa(const std::string& nombre);

/// One outline on its way into a drawing.
struct CRecintoEntrante {
    ClaseTopologia clase = ClaseTopologia::Parcelas;
    CString nombre;  ///< that messages call it by
    CString entrada; ///< base name of its polygon's files; none for a sheet
    std::optional<int> numero;
    std::optional<CString> rotulo; ///< none for an outline without a label
    CString codigo;
    bool borrado = false;
    std::optional<vexageo::CPunto<int>> punto; ///< where its label is wished
    std::vector<CAnilloFino> anillos;          ///< the outer one first, without closing points
};

/// Tells whether coordinates are degrees. Some formats put a geographic reference where there is
/// none at all: that says nothing.
bool EstaEnGrados(const OGRSpatialReference* referencia);

/// Takes the outlines of a feature, one for each of its pieces.
/// \param tolerancia  metres that a chord may be off its arc; 0 refuses arcs
/// \param[out] motivo  why it was refused, with the feature's name
/// \return false where it was refused
bool TomaElemento(ClaseTopologia clase, const OGRFeature& elemento, double tolerancia,
                  std::vector<CRecintoEntrante>& recintos, CString& motivo);
