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

/// Where messages may lie.
struct CLugares {
    CPorLugar<CRecintos> piezas;        ///< parcels and subparcels
    std::map<int, CRecintos> poligonos; ///< by the polygon's number
};

CLugares LugaresDe(CMunicipioAbierto& municipio)
{
    CLugares lugares;
    for (const CPoligonoDibujado& poligono : municipio.Poligonos()) {
        for (const CRecintoDibujado& recinto : poligono.parcelas.recintos)
            if (recinto.parcela >= 0)
                lugares.piezas.DeParcela(poligono.polig, recinto.parcela).push_back(&recinto);
        for (const CRecintoDibujado& recinto : poligono.subparcelas.recintos)
            if (recinto.parcela >= 0 && !recinto.letra.IsEmpty())
                lugares.piezas.DeSubparcela(poligono.polig, recinto.parcela, recinto.letra)
                    .push_back(&recinto);
        // A polygon without an outline of its own is where its parcels are.
        const CTopologiaDibujada& suyos =
            poligono.poligonos.recintos.empty() ? poligono.parcelas : poligono.poligonos;
        for (const CRecintoDibujado& recinto : suyos.recintos)
            lugares.poligonos[poligono.polig].push_back(&recinto);
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

struct CLugar {
    const char* que; ///< what it is; null for none
    std::unique_ptr<OGRGeometry> geometria;
};

/// The point, subparcel or parcel that a message speaks of. Where the drawing has none it is the
/// polygon that the parcel should be in, so that a map shows that there is something.
CLugar LugarDe(const CAviso& aviso, const CLugares& lugares)
{
    if (aviso.HaySitio())
        return {"punto", std::make_unique<OGRPoint>(EnMetros({aviso.x, aviso.y}))};
    const CRecintos* suyos = lugares.piezas.Busca(aviso.polig, aviso.parcela, aviso.letra);
    if (suyos != nullptr) {
        const bool esLetra = !aviso.letra.IsEmpty() && !suyos->front()->letra.IsEmpty();
        return {esLetra ? "subparcela" : "parcela", Juntos(*suyos)};
    }
    const auto poligono = lugares.poligonos.find(aviso.polig);
    return poligono == lugares.poligonos.end() ? CLugar{nullptr, nullptr}
                                               : CLugar{"polígono", Juntos(poligono->second)};
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
    CLugar lugar = LugarDe(aviso, lugares);
    if (lugar.que != nullptr)
        elemento.SetField("lugar", lugar.que);
    elemento.SetGeometryDirectly(lugar.geometria.release());
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
    const CListaCampos campos = {
        {capa::kNumero, OFTString},    {"clase", OFTString},         {"texto", OFTString},
        {capa::kPoligono, OFTInteger}, {capa::kParcela, OFTInteger}, {capa::kLetra, OFTString},
        {"lugar", OFTString},          {"causa", OFTString},         {"remedio", OFTString}};
    return std::make_unique<CCapa>(capa::kMensajes, wkbUnknown, referencia, campos, [&municipio] {
        const auto lugares = std::make_shared<const CLugares>(LugaresDe(municipio));
        return FuenteDe(
            LeeRegistro(municipio.Registro()),
            [lugares, consejos = std::map<std::string, CConsejo>()](OGRFeature& elemento,
                                                                    const CString& linea) mutable {
                PonMensaje(elemento, linea, *lugares, consejos);
            },
            [&](const CString& linea) {
                OGREnvelope caja;
                if (const CLugar lugar = LugarDe(LeeMensaje(linea), *lugares);
                    lugar.geometria && !lugar.geometria->IsEmpty())
                    lugar.geometria->getEnvelope(&caja);
                return caja;
            });
    });
}
