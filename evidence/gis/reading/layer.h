#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "evidence/gis/gdal_versions.h"
#include "evidence/gis/geometry.h"
#include "evidence/gis/reading/last_used.h"

// A layer whose features are made as they are asked for, out of drawings that are read then.

/// The fields of a layer, in order.
struct CCampoCapa {
    const char* nombre;
    OGRFieldType tipo;
    OGRFieldSubType subtipo = OFSTNone;
};

using CListaCampos = std::vector<CCampoCapa>;
CListaCampos Une(CListaCampos campos, const CListaCampos& otros);

/// A feature in the making. Its fields are set in the layer's order as a rule, so each is looked
/// for behind the last one first.
class CElemento {
public:
    explicit CElemento(OGRFeature& elemento) : m_elemento(elemento) {}

    template <class T>
    void SetField(const char* campo, T valor)
    {
        m_elemento.SetField(Indice(campo), valor);
    }
    /// Sets a text of the program, which GDAL takes as UTF-8.
    void PonTexto(const char* campo, std::string_view texto);
    void SetGeometry(std::unique_ptr<OGRGeometry> geometria)
    {
        m_elemento.SetGeometryDirectly(geometria.release());
    }

private:
    int Indice(const char* campo);

    OGRFeature& m_elemento;
    int m_ultimo = -1;
};

/// Features that are read together, a drawing's as a rule.
struct CTrozo {
    std::size_t Cuanto() const { return cajas.size(); }

    CCajas cajas;
    /// Fills a new feature with the number `i` of these.
    std::function<void(std::size_t i, CElemento& elemento)> rellena;
};

/// What stands behind a layer: its features, piece by piece.
struct CFuente {
    std::size_t trozos = 0;
    std::function<CTrozo(std::size_t trozo)> lee;
    /// The boxes of a piece's features without reading them; none where they can't be had so.
    std::function<std::optional<CCajas>(std::size_t trozo)> mira = {};
    /// How many features there are, where that costs less than their boxes.
    std::function<std::size_t()> cuenta = {};
};

/// A layer to be read. What its source raises is told to GDAL at each question.
class CCapa final : public CCapaGdal {
public:
    CCapa(const char* nombre, OGRwkbGeometryType geometria, const OGRSpatialReference* referencia,
          const CListaCampos& campos, CFuente fuente);

    void ResetReading() override { m_cursor = {}; }
    OGRFeature* GetNextFeature() override;
    OGRFeature* GetFeature(GIntBig fid) override;
    OGRErr SetNextByIndex(GIntBig indice) override;
    GIntBig GetFeatureCount(int forzar) override;

private:
    /// What is known of a piece, from the first look at it on.
    struct CVisto {
        CCajas cajas;
        OGREnvelope todas; ///< around them
    };
    /// Where a feature stands.
    struct CSitio {
        std::size_t trozo = 0;
        std::size_t elemento = 0; ///< in its piece
        std::size_t antes = 0;    ///< features of all pieces in front
    };

    bool Sabe(const char* capacidad) const override;
    bool Extension(OGREnvelope& caja) override;
    const CVisto& Visto(std::size_t trozo);
    const CTrozo& Leido(std::size_t trozo);
    void Apunta(std::size_t trozo, CCajas cajas);
    bool VaAlSiguiente();
    std::size_t Todos();
    CSitio Detras(const CSitio& sitio);
    CSitio Sitio(std::size_t indice);
    std::unique_ptr<OGRFeature> Haz(const CSitio& sitio);

    CFuente m_fuente;
    std::vector<std::optional<CVisto>> m_vistos;
    CUltimos<std::size_t, CTrozo> m_leidos;
    CSitio m_cursor;
    bool m_cambiada = false; // which was told
};

/// A piece of what is shown of each of these.
/// \param rellena  fills a feature from one of them
/// \param caja     gives the extent of one in metres, empty for one without a place
template <class T, class F, class C>
CTrozo TrozoDe(std::vector<T> todos, F rellena, C caja)
{
    CCajas cajas;
    cajas.reserve(todos.size());
    for (const T& uno : todos)
        cajas.push_back(caja(uno));
    return {std::move(cajas),
            [todos = std::move(todos), rellena](std::size_t i, CElemento& elemento) mutable {
                rellena(elemento, todos[i]);
            }};
}
