#pragma once

#include <functional>
#include <optional>

#include <ogrsf_frmts.h>

#include "evidence/drawn_polygon.h"

/// Takes a feature of a layer for the drawings. False, which was told, where it is refused.
using CTomaElemento = std::function<bool(ClaseTopologia clase, const OGRFeature& elemento)>;

/// A layer that takes features for the drawings. It keeps none to be read.
class CCapaNuevaSalida final : public OGRLayer {
public:
    /// \param clase  what the features are; none for a layer that is left out
    CCapaNuevaSalida(CTomaElemento toma, const char* nombre, std::optional<ClaseTopologia> clase,
                     OGRSpatialReference* referencia);
    CCapaNuevaSalida(const CCapaNuevaSalida&) = delete;
    CCapaNuevaSalida& operator=(const CCapaNuevaSalida&) = delete;
    ~CCapaNuevaSalida() override { m_definicion->Release(); }

    void ResetReading() override {}
    OGRFeature* GetNextFeature() override { return nullptr; }
    OGRFeatureDefn* GetLayerDefn() override { return m_definicion; }
    OGRErr CreateField(OGRFieldDefn* campo, int aproximado) override;
    OGRErr ICreateFeature(OGRFeature* elemento) override;
    int TestCapability(const char* capacidad) override;

private:
    CTomaElemento m_toma;
    OGRFeatureDefn* m_definicion;
    std::optional<ClaseTopologia> m_clase;
    GIntBig m_ultimo = 0; // number of the last feature
};
