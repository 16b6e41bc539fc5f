#include <map>
#include <memory>
#include <string>
#include <utility>

#include "evidence/gis/geometry.h"
#include "evidence/gis/reading/last_used.h"
#include "evidence/gis/reading/layers.h"
#include "evidence/log_reader.h"
#include "evidence/message_advice.h"
#include "evidence/message_places.h"
#include "evidence/paths.h"
#include "platform/files/cstdio_file.h"

namespace {

using CRecintos = std::vector<const CRecintoDibujado*>;

/// Where messages of a polygon may lie. A list may name it more than once.
struct CLugares {
    std::size_t Cuanto() const
    {
        std::size_t cuanto = 0;
        for (const CPoligonoDibujado& dibujo : dibujos)
            for (const ClaseTopologia que : kTopologiasDePoligono)
                cuanto += dibujo.Topologia(que).recintos.size();
        return cuanto;
    }

    std::vector<CPoligonoDibujado> dibujos;
    CPorLugar<CRecintos> piezas; ///< parcels and subparcels
    CRecintos poligono;
};

/// Appends what is drawn of a polygon.
void Apunta(const CPoligonoDibujado& dibujo, CLugares& lugares)
{
    for (const CRecintoDibujado& recinto : dibujo.parcelas.recintos)
        if (recinto.parcela >= 0)
            lugares.piezas.DeParcela(dibujo.polig, recinto.parcela).push_back(&recinto);
    for (const CRecintoDibujado& recinto : dibujo.subparcelas.recintos)
        if (recinto.parcela >= 0 && !recinto.letra.IsEmpty())
            lugares.piezas.DeSubparcela(dibujo.polig, recinto.parcela, recinto.letra)
                .push_back(&recinto);
    // A polygon without an outline of its own is where its parcels are.
    const CTopologiaDibujada& suyos =
        dibujo.poligonos.recintos.empty() ? dibujo.parcelas : dibujo.poligonos;
    for (const CRecintoDibujado& recinto : suyos.recintos)
        lugares.poligono.push_back(&recinto);
}

/// The polygons that messages speak of. A log goes by polygons as a rule, so few are read twice.
class CDibujosNombrados {
public:
    explicit CDibujosNombrados(CMunicipioAbierto& municipio) : m_municipio(municipio)
    {
        const std::vector<CString>& entradas = municipio.Lista().entradas;
        for (std::size_t i = 0; i < entradas.size(); ++i)
            m_entradas[LeeEntero(entradas[i])].push_back(i);
    }

    /// Null for a polygon that the list hasn't; valid until another one is asked for.
    const CLugares* De(int polig)
    {
        const auto entradas = m_entradas.find(polig);
        if (entradas == m_entradas.end())
            return nullptr;
        return &m_leidos.Dame(polig, [&] { return Lee(entradas->second); });
    }

private:
    CLugares Lee(const std::vector<std::size_t>& entradas)
    {
        CLugares lugares;
        for (const std::size_t entrada : entradas)
            lugares.dibujos.push_back(m_municipio.Poligono(entrada, kTopologiasDePoligono));
        for (const CPoligonoDibujado& dibujo : lugares.dibujos)
            Apunta(dibujo, lugares);
        return lugares;
    }

    CMunicipioAbierto& m_municipio;
    std::map<int, std::vector<std::size_t>> m_entradas; // by the polygon's number
    CUltimos<int, CLugares> m_leidos;
};

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
CLugar LugarDe(const CAviso& aviso, CDibujosNombrados& dibujos)
{
    if (aviso.HaySitio())
        return {"punto", std::make_unique<OGRPoint>(EnMetros({aviso.x, aviso.y}))};
    const CLugares* lugares = dibujos.De(aviso.polig);
    if (lugares == nullptr)
        return {nullptr, nullptr};
    const CRecintos* suyos = lugares->piezas.Busca(aviso.polig, aviso.parcela, aviso.letra);
    if (suyos != nullptr) {
        const bool esLetra = !aviso.letra.IsEmpty() && !suyos->front()->letra.IsEmpty();
        return {esLetra ? "subparcela" : "parcela", Juntos(*suyos)};
    }
    return lugares->poligono.empty() ? CLugar{nullptr, nullptr}
                                     : CLugar{"polígono", Juntos(lugares->poligono)};
}

void PonMensaje(CElemento& elemento, const CString& linea, CDibujosNombrados& dibujos,
                std::map<std::string, CConsejo>& consejos)
{
    elemento.PonTexto("texto", linea);
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
        elemento.PonTexto(capa::kLetra, aviso.letra);
    const auto [consejo, nuevo] = consejos.try_emplace(codigo);
    if (nuevo)
        consejo->second = DameConsejo(codigo);
    elemento.SetField("causa", consejo->second.causa.c_str());
    elemento.SetField("remedio", consejo->second.remedio.c_str());
    CLugar lugar = LugarDe(aviso, dibujos);
    if (lugar.que != nullptr)
        elemento.SetField("lugar", lugar.que);
    elemento.SetGeometry(std::move(lugar.geometria));
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
    const auto dibujos = std::make_shared<CDibujosNombrados>(municipio);
    const auto lee = [&municipio, dibujos](std::size_t /*trozo*/) {
        return TrozoDe(
            LeeRegistro(municipio.Registro()),
            [dibujos, consejos = std::map<std::string, CConsejo>()](CElemento& elemento,
                                                                    const CString& linea) mutable {
                PonMensaje(elemento, linea, *dibujos, consejos);
            },
            [&](const CString& linea) {
                OGREnvelope caja;
                if (const CLugar lugar = LugarDe(LeeMensaje(linea), *dibujos);
                    lugar.geometria && !lugar.geometria->IsEmpty())
                    lugar.geometria->getEnvelope(&caja);
                return caja;
            });
    };
    const auto cuenta = [&municipio] { return LeeRegistro(municipio.Registro()).size(); };
    return std::make_unique<CCapa>(capa::kMensajes, wkbUnknown, referencia, campos,
                                   CFuente{1, lee, {}, cuenta});
}
