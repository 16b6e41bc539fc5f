#pragma once

#include <functional>

#include "evidence/gis/gdal_versions.h"

/// Takes a feature of a layer for the drawings. False, which was told, where it is refused. Raises
/// nothing.
using CTomaElemento = std::function<bool(const OGRFeature& elemento)>;

/// A layer that takes features for the drawings. It keeps none to be read.
class CCapaNuevaSalida final : public CCapaGdal {
public:
    CCapaNuevaSalida(CTomaElemento toma, const char* nombre, const OGRSpatialReference* referencia);

    void ResetReading() override {}
    OGRFeature* GetNextFeature() override { return nullptr; }
    OGRErr CreateField(CCampoPedido* campo, int aproximado) override;
    OGRErr ICreateFeature(OGRFeature* elemento) override;

private:
    bool Sabe(const char* capacidad) const override;

    CTomaElemento m_toma;
    GIntBig m_ultimo = 0; // number of the last feature
};
