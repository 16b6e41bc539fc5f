#include "evidence/gis/reading/outline_extents.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "evidence/drawn_polygon.h"
#include "evidence/units.h"

namespace {

using vexageo::CMaximas;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;

bool Contiene(const CMaximas<int>& extension, const CPunto<int>& punto)
{
    return punto.X >= extension.Minimo.X && punto.X <= extension.Maximo.X &&
           punto.Y >= extension.Minimo.Y && punto.Y <= extension.Maximo.Y;
}

/// Tells whether the record's surface has room in its extent, and its label stands there.
bool EsCreible(const CPoligonoTopologico& registro)
{
    constexpr double kRedondeo = 1;      // square metres
    constexpr double kMasLargo = 200000; // metres: no municipality is as long
    const CMaximas<int>& suya = registro.Maximas();
    const double ancho = EnMetros(suya.Maximo.X) - EnMetros(suya.Minimo.X);
    const double alto = EnMetros(suya.Maximo.Y) - EnMetros(suya.Minimo.Y);
    return ancho > 0 && alto > 0 && std::max(ancho, alto) < kMasLargo &&
           ancho * alto >= std::abs(registro.AreaPropia()) - kRedondeo &&
           (!registro.TieneCentroide() || Contiene(suya, registro.Centroide()));
}

} // namespace

std::optional<CCajas> LeeExtensiones(CFile& topologia, std::uint64_t& dañoEn)
{
    CCajas cajas;
    bool creibles = true;
    const auto toma = [&](const CPoligonoTopologico& registro) {
        const CMaximas<int>& suya = registro.Maximas();
        for (const CPunto<int>& punto : {suya.Minimo, suya.Maximo})
            cajas.back().Merge(EnMetros(punto.X), EnMetros(punto.Y));
        creibles = EsCreible(registro) && creibles;
    };
    dañoEn = RecorreRegistros(topologia, [&](const CPoligonoTopologico& registro, bool isla) {
        if (!isla)
            cajas.emplace_back();
        toma(registro);
        std::ranges::for_each(registro.ListaIslas(), toma);
    });
    return creibles ? std::optional(std::move(cajas)) : std::nullopt;
}
