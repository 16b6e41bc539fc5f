#include <cstdlib>
#include <map>
#include <set>
#include <utility>

#include "evidence/gis/geometry.h"
#include "evidence/gis/reading/layers.h"
#include "evidence/gis/tidings.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "vexa_libs/topological_polygon.h"

// The layers of what the drawings hold, whether a topology names it or not.

namespace {

using vexageo::CTexto;

struct CEntidad {
    const CPoligonoDibujado* poligono; ///< null for one of the sheets
    int posicion;                      ///< in its drawing, from 1
    CTexto<int> entidad;
};

using CEntidades = std::vector<CEntidad>;

/// The outline that a label belongs to.
struct CDueño {
    const char* capa;
    const CRecintoDibujado* recinto;
};

/// Owners of the labels by drawing and position.
using CDueños = std::map<std::pair<const CPoligonoDibujado*, int>, CDueño>;

/// All entities of the drawings that `quiere` wants, in the order of the list, the sheets last.
CEntidades Recoge(CMunicipioAbierto& municipio, bool (*quiere)(const vexageo::CTipoDat&))
{
    CEntidades recogidas;
    CNoticias noticias;
    const auto lee = [&](const CString& nombre, const CPoligonoDibujado* poligono) {
        CFile bin;
        if (nombre.IsEmpty() || !AbreSiHay(bin, nombre, kModoDibujo))
            return;
        const bool entero = RecorreEntidades(bin, [&](int posicion, const CTexto<int>& entidad) {
            if (quiere(entidad.Tipo()))
                recogidas.push_back({poligono, posicion, entidad});
        });
        if (!entero)
            noticias.Advierte("dibujos dañados"_ansi,
                              nombre + " está dañado: no se leen todos sus rótulos y líneas"_ansi);
    };
    for (const CPoligonoDibujado& poligono : municipio.Poligonos())
        lee(FicheroDeLista(municipio.Lista().carpeta, poligono.entrada, kExtensionDibujo),
            &poligono);
    if (!municipio.Ortos().IsEmpty())
        lee(ConExtension(municipio.Ortos(), kExtensionDibujo), nullptr);
    noticias.Dice();
    return recogidas;
}

/// The lines that bound an outline, by drawing and position.
using CLindes = std::set<std::pair<const CPoligonoDibujado*, int>>;

void ApuntaLindes(const vexageo::CPoligonoTopologico& registro, const CPoligonoDibujado* poligono,
                  CLindes& lindes)
{
    for (int i = 0; i < registro.Tramos(); ++i)
        lindes.emplace(poligono, std::abs(registro.OffsetTramo(i)));
    for (const vexageo::CPoligonoTopologico& isla : registro.ListaIslas())
        ApuntaLindes(isla, poligono, lindes);
}

CLindes Lindes(CMunicipioAbierto& municipio)
{
    CLindes lindes;
    const auto lee = [&](const CString& nombre, const CPoligonoDibujado* poligono) {
        CFile topologia;
        if (AbreSiHay(topologia, nombre, kModoDibujo))
            for (vexageo::CPoligonoTopologico registro; registro.Read(&topologia);)
                ApuntaLindes(registro, poligono, lindes);
    };
    for (const CPoligonoDibujado& poligono : municipio.Poligonos())
        for (const ClaseTopologia clase :
             {ClaseTopologia::Parcelas, ClaseTopologia::Subparcelas, ClaseTopologia::Poligonos})
            lee(FicheroDeLista(municipio.Lista().carpeta, poligono.entrada, ExtensionDe(clase)),
                &poligono);
    if (!municipio.Ortos().IsEmpty())
        lee(municipio.Ortos(), nullptr);
    return lindes;
}

CDueños Dueños(CMunicipioAbierto& municipio)
{
    CDueños dueños;
    const auto apunta = [&](const CPoligonoDibujado* poligono, const char* capa,
                            const CTopologiaDibujada& topologia) {
        for (const CRecintoDibujado& recinto : topologia.recintos)
            if (recinto.posicionRotulo > 0)
                dueños.try_emplace({poligono, recinto.posicionRotulo}, CDueño{capa, &recinto});
    };
    for (const CPoligonoDibujado& poligono : municipio.Poligonos()) {
        apunta(&poligono, capa::kParcelas, poligono.parcelas);
        apunta(&poligono, capa::kSubparcelas, poligono.subparcelas);
        apunta(&poligono, capa::kPoligonos, poligono.poligonos);
    }
    apunta(nullptr, capa::kHojas, municipio.Hojas());
    return dueños;
}

void PonComunes(OGRFeature& elemento, const CEntidad& suya)
{
    if (suya.poligono != nullptr) {
        elemento.SetField(capa::kPoligono, suya.poligono->polig);
        PonTexto(elemento, capa::kEntrada, suya.poligono->entrada);
    }
    PonTexto(elemento, capa::kCodigo, suya.entidad.Tipo().Codigo());
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

void PonDueño(OGRFeature& elemento, const CDueño& dueño)
{
    const CRecintoDibujado& recinto = *dueño.recinto;
    elemento.SetField(capa::kCapa, dueño.capa);
    elemento.SetField(capa::kNumero, recinto.numero);
    PonTexto(elemento, "estado", NombreEstado(recinto.estado));
    if (recinto.parcela >= 0)
        elemento.SetField(capa::kParcela, recinto.parcela);
}

} // namespace

CCapaNueva CapaRotulos(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CListaCampos campos = Campos({{capa::kClase, OFTString},
                                        {capa::kTexto, OFTString},
                                        {capa::kCapa, OFTString},
                                        {capa::kNumero, OFTInteger},
                                        {capa::kParcela, OFTInteger},
                                        {"estado", OFTString}});
    return std::make_unique<CCapa>(capa::kRotulos, wkbPoint, referencia, campos, [&municipio] {
        const auto noEsLinea = [](const vexageo::CTipoDat& tipo) { return !tipo.EsLinea(); };
        return FuenteDe(
            Recoge(municipio, noEsLinea),
            [dueños = Dueños(municipio)](OGRFeature& elemento, const CEntidad& suya) {
                PonComunes(elemento, suya);
                elemento.SetField(capa::kClase,
                                  suya.entidad.Tipo().EsTexto() ? capa::kTexto : capa::kPunto);
                PonTexto(elemento, capa::kTexto, suya.entidad.Texto());
                if (const auto dueño = dueños.find({suya.poligono, suya.posicion});
                    dueño != dueños.end())
                    PonDueño(elemento, dueño->second);
                const OGRPoint punto = EnMetros(suya.entidad.PrimerPunto());
                elemento.SetGeometry(&punto);
            },
            [](const CEntidad& suya) {
                OGREnvelope caja;
                Ensancha(caja, {suya.entidad.PrimerPunto()});
                return caja;
            });
    });
}

CCapaNueva CapaLineas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    return std::make_unique<CCapa>(
        capa::kLineas, wkbLineString, referencia, Campos({{capa::kLinde, OFTInteger, OFSTBoolean}}),
        [&municipio] {
            const auto esLinea = [](const vexageo::CTipoDat& tipo) { return tipo.EsLinea(); };
            return FuenteDe(
                Recoge(municipio, esLinea),
                [lindes = Lindes(municipio)](OGRFeature& elemento, const CEntidad& suya) {
                    PonComunes(elemento, suya);
                    elemento.SetField(capa::kLinde,
                                      lindes.contains({suya.poligono, suya.posicion}) ? 1 : 0);
                    elemento.SetGeometryDirectly(LineaDe(suya.entidad.Puntos()).release());
                },
                [](const CEntidad& suya) {
                    OGREnvelope caja;
                    Ensancha(caja, suya.entidad.Puntos());
                    return caja;
                });
        });
}
