#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include "evidence/gis/geometry.h"
#include "evidence/gis/reading/layers.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "vexa_libs/topological_polygon.h"

// The layers of what the drawings hold, whether a topology names it or not.

namespace {

using vexageo::CTexto;

struct CEntidad {
    int posicion; ///< in its drawing, from 1
    CTexto<int> entidad;
};

/// Hands out the lines of a drawing, or all that is none.
void Recorre(CMunicipioAbierto& municipio, std::size_t dibujo, bool lineas,
             const std::function<void(int, const CTexto<int>&)>& toma)
{
    CFile bin;
    if (!AbreSiHay(bin, municipio.Dibujo(dibujo), kModoDibujo)) {
        municipio.AvisaSinDibujo(dibujo);
        return;
    }
    const bool entero = RecorreEntidades(bin, [&](int posicion, const CTexto<int>& entidad) {
        if (entidad.Tipo().EsLinea() == lineas)
            toma(posicion, entidad);
    });
    if (!entero)
        municipio.AvisaDibujoDañado(dibujo);
}

/// The lines that bound an outline, by their positions.
using CLindes = std::set<int>;

void ApuntaLindes(const vexageo::CPoligonoTopologico& registro, CLindes& lindes)
{
    for (int i = 0; i < registro.Tramos(); ++i)
        lindes.insert(std::abs(registro.OffsetTramo(i)));
    for (const vexageo::CPoligonoTopologico& isla : registro.ListaIslas())
        ApuntaLindes(isla, lindes);
}

CLindes Lindes(CMunicipioAbierto& municipio, std::size_t dibujo)
{
    CLindes lindes;
    for (const CString& nombre : municipio.Topologias(dibujo)) {
        CFile topologia;
        if (AbreSiHay(topologia, nombre, kModoDibujo))
            RecorreRegistros(topologia, [&](const vexageo::CPoligonoTopologico& registro, bool) {
                ApuntaLindes(registro, lindes);
            });
    }
    return lindes;
}

/// What is told of the outline that a label belongs to.
struct CDueño {
    const char* capa;
    int numero;
    EstadoRecinto estado;
    int parcela;
};

/// Owners of a drawing's labels by their positions.
using CDueños = std::map<int, CDueño>;

CDueños Dueños(CMunicipioAbierto& municipio, std::size_t dibujo)
{
    CDueños dueños;
    const auto apunta = [&](const char* capa, const CTopologiaDibujada& topologia) {
        for (const CRecintoDibujado& recinto : topologia.recintos)
            if (recinto.posicionRotulo > 0)
                dueños.try_emplace(recinto.posicionRotulo,
                                   CDueño{capa, recinto.numero, recinto.estado, recinto.parcela});
    };
    if (municipio.SonHojas(dibujo)) {
        apunta(capa::kHojas, municipio.Hojas());
        return dueños;
    }
    const CPoligonoDibujado poligono = municipio.Poligono(dibujo, kTopologiasDePoligono);
    apunta(capa::kParcelas, poligono.parcelas);
    apunta(capa::kSubparcelas, poligono.subparcelas);
    apunta(capa::kPoligonos, poligono.poligonos);
    return dueños;
}

void PonComunes(CElemento& elemento, const CMunicipioAbierto& municipio, std::size_t dibujo,
                const CEntidad& suya)
{
    if (!municipio.SonHojas(dibujo)) {
        const CString& entrada = municipio.Lista().entradas[dibujo];
        elemento.SetField(capa::kPoligono, LeeEntero(entrada));
        elemento.PonTexto(capa::kEntrada, entrada);
    }
    elemento.PonTexto(capa::kCodigo, suya.entidad.Tipo().Codigo());
    elemento.SetField(capa::kBorrado, suya.entidad.Tipo().EsBorrado() ? 1 : 0);
    elemento.SetField(capa::kPosicion, suya.posicion);
}

CListaCampos Campos(const CListaCampos& propios)
{
    return Une({{capa::kPoligono, OFTInteger},
                {capa::kEntrada, OFTString},
                {capa::kCodigo, OFTString},
                {capa::kBorrado, OFTInteger, OFSTBoolean},
                {capa::kPosicion, OFTInteger}},
               propios);
}

void PonDueño(CElemento& elemento, const CDueño& dueño)
{
    elemento.SetField(capa::kCapa, dueño.capa);
    elemento.SetField(capa::kNumero, dueño.numero);
    elemento.PonTexto("estado", NombreEstado(dueño.estado));
    if (dueño.parcela >= 0)
        elemento.SetField(capa::kParcela, dueño.parcela);
}

void PonRotulo(CElemento& elemento, const CEntidad& suya, const CDueños& dueños)
{
    elemento.SetField(capa::kClase, suya.entidad.Tipo().EsTexto() ? capa::kTexto : capa::kPunto);
    elemento.PonTexto(capa::kTexto, suya.entidad.Texto());
    if (const auto dueño = dueños.find(suya.posicion); dueño != dueños.end())
        PonDueño(elemento, dueño->second);
    elemento.SetGeometry(std::make_unique<OGRPoint>(EnMetros(suya.entidad.PrimerPunto())));
}

OGREnvelope CajaDe(const CTexto<int>& entidad)
{
    OGREnvelope caja;
    if (entidad.Tipo().EsLinea())
        Ensancha(caja, entidad.Puntos());
    else
        Ensancha(caja, {entidad.PrimerPunto()});
    return caja;
}

using CRellena = std::function<void(CElemento&, const CEntidad&)>;

/// The layer of the lines, or that of all else, with a piece for each drawing.
/// \param prepara  gives, for a drawing, what sets the fields that the other layer hasn't
CCapaNueva CapaDeEntidades(OGRwkbGeometryType geometria, CMunicipioAbierto& municipio,
                           const OGRSpatialReference* referencia, const CListaCampos& propios,
                           const std::function<CRellena(std::size_t dibujo)>& prepara)
{
    const bool lineas = geometria == wkbLineString;
    const auto mira = [=, &municipio](std::size_t dibujo) {
        CCajas cajas;
        Recorre(municipio, dibujo, lineas, [&](int /*posicion*/, const CTexto<int>& entidad) {
            cajas.push_back(CajaDe(entidad));
        });
        return cajas;
    };
    const auto lee = [=, &municipio](std::size_t dibujo) {
        std::vector<CEntidad> suyas;
        Recorre(municipio, dibujo, lineas, [&](int posicion, const CTexto<int>& entidad) {
            suyas.push_back({posicion, entidad});
        });
        return TrozoDe(
            std::move(suyas),
            [=, &municipio, rellena = prepara(dibujo)](CElemento& elemento, const CEntidad& suya) {
                PonComunes(elemento, municipio, dibujo, suya);
                rellena(elemento, suya);
            },
            [](const CEntidad& suya) { return CajaDe(suya.entidad); });
    };
    return std::make_unique<CCapa>(lineas ? capa::kLineas : capa::kRotulos, geometria, referencia,
                                   Campos(propios), CFuente{municipio.Dibujos(), lee, mira});
}

} // namespace

CCapaNueva CapaRotulos(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CListaCampos propios = {{capa::kClase, OFTString},    {capa::kTexto, OFTString},
                                  {capa::kCapa, OFTString},     {capa::kNumero, OFTInteger},
                                  {capa::kParcela, OFTInteger}, {"estado", OFTString}};
    return CapaDeEntidades(
        wkbPoint, municipio, referencia, propios, [&municipio](std::size_t dibujo) -> CRellena {
            return [dueños = Dueños(municipio, dibujo)](CElemento& elemento, const CEntidad& suya) {
                PonRotulo(elemento, suya, dueños);
            };
        });
}

CCapaNueva CapaLineas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    return CapaDeEntidades(
        wkbLineString, municipio, referencia, {{capa::kLinde, OFTInteger, OFSTBoolean}},
        [&municipio](std::size_t dibujo) -> CRellena {
            return [lindes = Lindes(municipio, dibujo)](CElemento& elemento, const CEntidad& suya) {
                elemento.SetField(capa::kLinde, lindes.contains(suya.posicion) ? 1 : 0);
                elemento.SetGeometry(LineaDe(suya.entidad.Puntos()));
            };
        });
}
