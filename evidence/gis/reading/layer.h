#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evidence/gis/gdal_versions.h"

// A layer whose features are made as they are asked for, out of what the dataset holds.

/// The fields of a layer, in order.
struct CCampoCapa {
    const char* nombre;
    OGRFieldType tipo;
    OGRFieldSubType subtipo = OFSTNone;
};

using CListaCampos = std::vector<CCampoCapa>;
CListaCampos Une(CListaCampos campos, const CListaCampos& otros);

/// A layer to be read. What `fuente` and its `rellena` raise is told to GDAL at each question.
class CCapa final : public CCapaGdal {
public:
    /// Fills a new feature with the number `i`.
    using CRellena = std::function<void(std::size_t i, OGRFeature& elemento)>;
    /// What stands behind the layer: how many features, and how to fill them. Asked for once, at
    /// the first question.
    struct CFuente {
        std::size_t cuantos;
        CRellena rellena;
        std::vector<OGREnvelope> cajas; ///< of each; one that has no place has an empty one
    };

    CCapa(const char* nombre, OGRwkbGeometryType geometria, const OGRSpatialReference* referencia,
          const CListaCampos& campos, std::function<CFuente()> fuente);

    void ResetReading() override { m_siguiente = 0; }
    OGRFeature* GetNextFeature() override;
    OGRFeature* GetFeature(GIntBig fid) override;
    OGRErr SetNextByIndex(GIntBig indice) override;
    GIntBig GetFeatureCount(int forzar) override;

private:
    bool Sabe(const char* capacidad) const override;
    bool Extension(OGREnvelope& caja) override;
    void SaltaLosDeFuera();
    const CFuente& Fuente();
    std::unique_ptr<OGRFeature> Haz(std::size_t i);

    std::function<CFuente()> m_pide;
    std::unique_ptr<CFuente> m_fuente;
    std::vector<OGREnvelope> m_grupos; // boxes around so many features each, one behind the other
    std::size_t m_siguiente = 0;
};

/// What a layer shows of each of these.
/// \param rellena  fills a feature from one of them
/// \param caja     gives the extent of one in metres, empty for one without a place
template <class T, class F, class C>
CCapa::CFuente FuenteDe(std::vector<T> todos, F rellena, C caja)
{
    const std::size_t cuantos = todos.size();
    std::vector<OGREnvelope> cajas;
    cajas.reserve(cuantos);
    for (const T& uno : todos)
        cajas.push_back(caja(uno));
    return {cuantos,
            [todos = std::move(todos), rellena](std::size_t i, OGRFeature& elemento) mutable {
                rellena(elemento, todos[i]);
            },
            std::move(cajas)};
}

/// Sets a field to a text of the program, which GDAL takes as UTF-8.
void PonTexto(OGRFeature& elemento, const char* campo, std::string_view texto);
