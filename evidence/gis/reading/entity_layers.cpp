#include <map>

#include "evidence/gis/geometry.h"
#include "evidence/gis/reading/layers.h"
#include "evidence/paths.h"

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
    const auto lee = [&](const CString& nombre, const CPoligonoDibujado* poligono) {
        CFile bin;
        if (AbreSiHay(bin, nombre, kModoDibujo))
            RecorreEntidades(bin, [&](int posicion, const CTexto<int>& entidad) {
                if (quiere(entidad.Tipo()))
                    recogidas.push_back({poligono, posicion, entidad});
            });
    };
    for (const CPoligonoDibujado& poligono : municipio.Poligonos())
        lee(FicheroDeLista(municipio.Lista().carpeta, poligono.entrada, kExtensionDibujo),
            &poligono);
    lee(ConExtension(municipio.Ortos(), kExtensionDibujo), nullptr);
    return recogidas;
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
    elemento.SetField("posicion", suya.posicion);
}

CListaCampos Campos(const CListaCampos& propios)
{
    return Une({{capa::kPoligono, OFTInteger},
                {capa::kEntrada, OFTString},
                {capa::kCodigo, OFTString},
                {capa::kBorrado, OFTInteger, OFSTBoolean},
                {"posicion", OFTInteger}},
               propios);
}

void PonDueño(OGRFeature& elemento, const CDueño& dueño)
{
    const CRecintoDibujado& recinto = *dueño.recinto;
    elemento.SetField("capa", dueño.capa);
    elemento.SetField(capa::kNumero, recinto.numero);
    PonTexto(elemento, "estado", NombreEstado(recinto.estado));
    if (recinto.parcela >= 0)
        elemento.SetField(capa::kParcela, recinto.parcela);
}

} // namespace

CCapaNueva CapaRotulos(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CListaCampos campos = Campos({{"clase", OFTString},
                                        {"texto", OFTString},
                                        {"capa", OFTString},
                                        {capa::kNumero, OFTInteger},
                                        {capa::kParcela, OFTInteger},
                                        {"estado", OFTString}});
    return std::make_unique<CCapa>(capa::kRotulos, wkbPoint, referencia, campos, [&municipio] {
        const auto noEsLinea = [](const vexageo::CTipoDat& tipo) { return !tipo.EsLinea(); };
        return FuenteDe(Recoge(municipio, noEsLinea),
                        [dueños = Dueños(municipio)](OGRFeature& elemento, const CEntidad& suya) {
                            PonComunes(elemento, suya);
                            elemento.SetField("clase",
                                              suya.entidad.Tipo().EsTexto() ? "texto" : "punto");
                            PonTexto(elemento, "texto", suya.entidad.Texto());
                            if (const auto dueño = dueños.find({suya.poligono, suya.posicion});
                                dueño != dueños.end())
                                PonDueño(elemento, dueño->second);
                            const OGRPoint punto = EnMetros(suya.entidad.PrimerPunto());
                            elemento.SetGeometry(&punto);
                        });
    });
}

CCapaNueva CapaLineas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    return std::make_unique<CCapa>(
        capa::kLineas, wkbLineString, referencia, Campos({}), [&municipio] {
            const auto esLinea = [](const vexageo::CTipoDat& tipo) { return tipo.EsLinea(); };
            return FuenteDe(
                Recoge(municipio, esLinea), [](OGRFeature& elemento, const CEntidad& suya) {
                    PonComunes(elemento, suya);
                    elemento.SetGeometryDirectly(LineaDe(suya.entidad.Puntos()).release());
                });
        });
}
