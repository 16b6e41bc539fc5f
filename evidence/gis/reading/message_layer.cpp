#include <map>
#include <string>

#include "evidence/gis/geometry.h"
#include "evidence/gis/reading/layers.h"
#include "evidence/log_reader.h"
#include "evidence/message_advice.h"
#include "evidence/message_places.h"
#include "evidence/paths.h"
#include "platform/files/cstdio_file.h"

namespace {

using CRecintos = std::vector<const CRecintoDibujado*>;

using CLugares = CPorLugar<CRecintos>;

CLugares LugaresDe(CMunicipioAbierto& municipio)
{
    CLugares lugares;
    for (const CPoligonoDibujado& poligono : municipio.Poligonos()) {
        for (const CRecintoDibujado& recinto : poligono.parcelas.recintos)
            if (recinto.parcela >= 0)
                lugares.DeParcela(poligono.polig, recinto.parcela).push_back(&recinto);
        for (const CRecintoDibujado& recinto : poligono.subparcelas.recintos)
            if (recinto.parcela >= 0 && !recinto.letra.IsEmpty())
                lugares.DeSubparcela(poligono.polig, recinto.parcela, recinto.letra)
                    .push_back(&recinto);
    }
    return lugares;
}

/// The pieces as one geometry.
std::unique_ptr<OGRGeometry> Juntos(const CRecintos& recintos)
{
    auto juntos = std::make_unique<OGRMultiPolygon>();
    for (const CRecintoDibujado* recinto : recintos)
        if (std::unique_ptr<OGRPolygon> poligono = PoligonoDe(*recinto))
            juntos->addGeometryDirectly(poligono.release());
    return juntos;
}

/// The point, subparcel or parcel that a message speaks of; null where the drawing has none.
std::unique_ptr<OGRGeometry> LugarDe(const CAviso& aviso, const CLugares& lugares)
{
    if (aviso.HaySitio())
        return std::make_unique<OGRPoint>(EnMetros({aviso.x, aviso.y}));
    const CRecintos* suyos = lugares.Busca(aviso.polig, aviso.parcela, aviso.letra);
    return suyos == nullptr ? nullptr : Juntos(*suyos);
}

void PonMensaje(OGRFeature& elemento, const CString& linea, const CLugares& lugares,
                std::map<std::string, CConsejo>& consejos)
{
    PonTexto(elemento, "texto", linea);
    const CAviso aviso = LeeMensaje(linea);
    if (aviso.mensaje == nullptr)
        return;
    const std::string codigo(CodigoMensaje(*aviso.mensaje));
    elemento.SetField(capa::kNumero, codigo.c_str());
    elemento.SetField("clase", codigo.front() == 'W' ? "warning" : "error");
    if (aviso.HayParcela()) {
        elemento.SetField(capa::kPoligono, aviso.polig);
        elemento.SetField(capa::kParcela, aviso.parcela);
    }
    if (!aviso.letra.IsEmpty())
        PonTexto(elemento, capa::kLetra, aviso.letra);
    const auto [consejo, nuevo] = consejos.try_emplace(codigo);
    if (nuevo)
        consejo->second = DameConsejo(codigo);
    elemento.SetField("causa", consejo->second.causa.c_str());
    elemento.SetField("remedio", consejo->second.remedio.c_str());
    if (std::unique_ptr<OGRGeometry> lugar = LugarDe(aviso, lugares))
        elemento.SetGeometryDirectly(lugar.release());
}

std::vector<CString> LeeRegistro(const CString& nombre)
{
    std::vector<CString> lineas;
    CStdioFile registro;
    if (AbreSiHay(registro, nombre, CFile::anyCase))
        for (CString linea; registro.ReadString(linea);)
            lineas.push_back(linea);
    return lineas;
}

} // namespace

CCapaNueva CapaMensajes(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CListaCampos campos = {{capa::kNumero, OFTString},   {"clase", OFTString},
                                 {"texto", OFTString},         {capa::kPoligono, OFTInteger},
                                 {capa::kParcela, OFTInteger}, {capa::kLetra, OFTString},
                                 {"causa", OFTString},         {"remedio", OFTString}};
    return std::make_unique<CCapa>(capa::kMensajes, wkbUnknown, referencia, campos, [&municipio] {
        return FuenteDe(
            LeeRegistro(municipio.Registro()),
            [lugares = LugaresDe(municipio), consejos = std::map<std::string, CConsejo>()](
                OGRFeature& elemento, const CString& linea) mutable {
                PonMensaje(elemento, linea, lugares, consejos);
            });
    });
}
