#include <memory>
#include <span>

#include "evidence/drawing_findings.h"
#include "evidence/gis/geometry.h"
#include "evidence/gis/reading/layers.h"

// The layers of outlines: parcels, subparcels, polygons and sheets. An outline that the way back
// makes nothing of is there too, and says why.

namespace {

struct CSuyo {
    const CPoligonoDibujado* poligono; ///< null for a sheet
    const CRecintoDibujado* recinto;
    CString faltas; ///< what is wrong with it; empty as a rule
};

/// Islands may lie outside an outline where a drawing is at fault.
OGREnvelope CajaDe(const CSuyo& suyo)
{
    OGREnvelope caja;
    if (suyo.recinto->contorno.empty())
        return caja;
    Ensancha(caja, suyo.recinto->contorno);
    for (const CIslaDibujada& isla : suyo.recinto->islas)
        Ensancha(caja, isla.contorno);
    return caja;
}

/// The fields that all outlines have.
const CListaCampos& Comunes()
{
    static const CListaCampos campos = {{capa::kRotulo, OFTString},
                                        {capa::kCodigo, OFTString},
                                        {capa::kBorrado, OFTInteger, OFSTBoolean},
                                        {"area_registro", OFTReal},
                                        {"area_contorno", OFTReal},
                                        {"valido", OFTInteger, OFSTBoolean},
                                        {"estado", OFTString},
                                        {"faltas", OFTString},
                                        {capa::kNumero, OFTInteger},
                                        {capa::kX, OFTReal},
                                        {capa::kY, OFTReal}};
    return campos;
}

/// The fields of parcels and subparcels: `suyos` tell which one it is, `deTablas` what the tables
/// say of it.
CListaCampos DePiezas(const CListaCampos& suyos, const CListaCampos& deTablas)
{
    const CListaCampos numeros = {{capa::kPoligono, OFTInteger}, {capa::kParcela, OFTInteger}};
    const CListaCampos pieza = {
        {capa::kEntrada, OFTString}, {"pieza", OFTInteger}, {"piezas", OFTInteger}};
    const CListaCampos dibujados = Une(Une(Une(numeros, suyos), pieza), Comunes());
    return Une(Une(dibujados, {{"en_tablas", OFTInteger, OFSTBoolean}}), deTablas);
}

void PonComunes(CElemento& elemento, const CSuyo& suyo)
{
    const CRecintoDibujado& recinto = *suyo.recinto;
    if (recinto.posicionRotulo > 0) {
        elemento.PonTexto(capa::kRotulo, recinto.rotulo);
        elemento.PonTexto(capa::kCodigo, recinto.codigo);
    }
    elemento.SetField(capa::kBorrado, recinto.borrado ? 1 : 0);
    elemento.SetField("area_registro", recinto.areaRegistro);
    elemento.SetField("area_contorno", recinto.AreaContorno());
    elemento.SetField("valido", recinto.Valido() ? 1 : 0);
    elemento.PonTexto("estado", NombreEstado(recinto.estado));
    if (!suyo.faltas.IsEmpty())
        elemento.PonTexto("faltas", suyo.faltas);
    elemento.SetField(capa::kNumero, recinto.numero);
    const OGRPoint punto = EnMetros(recinto.punto);
    elemento.SetField(capa::kX, punto.getX());
    elemento.SetField(capa::kY, punto.getY());
    elemento.SetGeometry(PoligonoDe(recinto));
}

void PonPieza(CElemento& elemento, const CSuyo& suyo)
{
    elemento.SetField(capa::kPoligono, suyo.poligono->polig);
    elemento.PonTexto(capa::kEntrada, suyo.poligono->entrada);
    if (suyo.recinto->parcela >= 0) {
        elemento.SetField(capa::kParcela, suyo.recinto->parcela);
        elemento.SetField("pieza", suyo.recinto->pieza);
        elemento.SetField("piezas", suyo.recinto->piezas);
    }
}

using CRellena = std::function<void(CElemento&, const CSuyo&)>;

/// The outlines of a topology as a piece of a layer.
/// \param poligono  null for the sheets
/// \param rellena   sets the fields that other layers don't have
CTrozo TrozoDeTopologia(const std::shared_ptr<const CPoligonoDibujado>& poligono,
                        const std::shared_ptr<const CTopologiaDibujada>& topologia,
                        ClaseTopologia que, const CRellena& rellena)
{
    const CFaltasDeRecintos faltas = FaltasDe(*topologia, que);
    std::vector<CSuyo> suyos;
    for (std::size_t i = 0; i < topologia->recintos.size(); ++i)
        suyos.push_back({poligono.get(), &topologia->recintos[i], TextoFaltas(faltas[i])});
    return TrozoDe(
        std::move(suyos),
        [poligono, topologia, rellena](CElemento& elemento, const CSuyo& suyo) {
            PonComunes(elemento, suyo);
            rellena(elemento, suyo);
        },
        CajaDe);
}

/// A layer of the outlines of a kind, with a piece for each drawing.
CCapaNueva CapaDeRecintos(const char* nombre, ClaseTopologia que, CMunicipioAbierto& municipio,
                          const OGRSpatialReference* referencia, const CListaCampos& campos,
                          const CRellena& rellena)
{
    const auto lee = [=, &municipio](std::size_t entrada) {
        constexpr ClaseTopologia kConSusParcelas[] = {ClaseTopologia::Parcelas,
                                                      ClaseTopologia::Subparcelas};
        const std::span<const ClaseTopologia> cuales =
            que == ClaseTopologia::Subparcelas ? std::span<const ClaseTopologia>(kConSusParcelas)
                                               : std::span<const ClaseTopologia>(&que, 1);
        const auto poligono =
            std::make_shared<const CPoligonoDibujado>(municipio.Poligono(entrada, cuales));
        return TrozoDeTopologia(poligono, {poligono, &poligono->Topologia(que)}, que, rellena);
    };
    const auto mira = [=, &municipio](std::size_t entrada) {
        return municipio.Extensiones(entrada, que);
    };
    return std::make_unique<CCapa>(nombre, wkbPolygon, referencia, campos,
                                   CFuente{municipio.Lista().entradas.size(), lee, mira});
}

/// Tells whether the tables can be asked for an outline's parcel.
bool HayTablas(CMunicipioAbierto& municipio, const CSuyo& suyo)
{
    return municipio.Tablas().parcelas.hay && suyo.recinto->parcela >= 0;
}

/// The outline's parcel in the tables, null where they have none.
const CParcela* EnTablas(CMunicipioAbierto& municipio, const CSuyo& suyo)
{
    const CMunicipio& tablas = municipio.Tablas().municipio;
    int i = kNoEncontrado;
    return tablas.BuscaParcela(suyo.poligono->polig, suyo.recinto->parcela, i)
               ? &tablas.DameParcela(i)
               : nullptr;
}

void PonParcelaDeTablas(CElemento& elemento, const CMunicipio& tablas, const CParcela& parcela)
{
    elemento.SetField("superficie", parcela.Superficie);
    elemento.SetField("participacion", parcela.ParticiPrincipal());
    elemento.PonTexto("clave_conc", CString(std::string(1, parcela.claveConc)).TrimRight());
    if (const int titular = parcela.TitularPrincipal(); titular >= 0) {
        elemento.PonTexto("titular", CString(tablas.DameTitular(titular).Nombre).TrimRight());
        elemento.PonTexto("dni", CString(tablas.DameTitular(titular).DNI).TrimRight());
    }
    if (parcela.paraje >= 0)
        elemento.PonTexto(
            "paraje",
            CString(tablas.Parajes()[static_cast<std::size_t>(parcela.paraje)].Nombre).TrimRight());
}

void PonSubparcelaDeTablas(CElemento& elemento, const CSubparcela& subparcela)
{
    elemento.SetField("superficie", subparcela.superfic);
    elemento.PonTexto("tipo", CString(std::string(1, subparcela.tipo)).TrimRight());
    elemento.PonTexto("calificacion", CString(subparcela.cE).TrimRight());
    elemento.SetField("clase", subparcela.iE);
}

} // namespace

CCapaNueva CapaParcelas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CListaCampos campos = DePiezas({}, {{"superficie", OFTInteger},
                                              {"titular", OFTString},
                                              {"dni", OFTString},
                                              {"participacion", OFTInteger},
                                              {"paraje", OFTString},
                                              {"clave_conc", OFTString}});
    return CapaDeRecintos(capa::kParcelas, ClaseTopologia::Parcelas, municipio, referencia, campos,
                          [&municipio](CElemento& elemento, const CSuyo& suyo) {
                              PonPieza(elemento, suyo);
                              if (!HayTablas(municipio, suyo))
                                  return;
                              const CParcela* parcela = EnTablas(municipio, suyo);
                              elemento.SetField("en_tablas", parcela != nullptr ? 1 : 0);
                              if (parcela != nullptr)
                                  PonParcelaDeTablas(elemento, municipio.Tablas().municipio,
                                                     *parcela);
                          });
}

CCapaNueva CapaSubparcelas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CListaCampos campos = DePiezas({{capa::kLetra, OFTString}}, {{"superficie", OFTInteger},
                                                                       {"tipo", OFTString},
                                                                       {"calificacion", OFTString},
                                                                       {"clase", OFTInteger}});
    return CapaDeRecintos(
        capa::kSubparcelas, ClaseTopologia::Subparcelas, municipio, referencia, campos,
        [&municipio](CElemento& elemento, const CSuyo& suyo) {
            PonPieza(elemento, suyo);
            if (suyo.recinto->Valido())
                elemento.PonTexto(capa::kLetra, suyo.recinto->letra);
            if (!HayTablas(municipio, suyo))
                return;
            const CParcela* parcela = EnTablas(municipio, suyo);
            const int i =
                parcela == nullptr ? -1 : parcela->BuscaSubparcela(suyo.recinto->letra, 0);
            elemento.SetField("en_tablas", i >= 0 ? 1 : 0);
            if (i >= 0)
                PonSubparcelaDeTablas(elemento,
                                      parcela->Subparcelas()[static_cast<std::size_t>(i)]);
        });
}

CCapaNueva CapaPoligonos(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CListaCampos campos =
        Une({{capa::kPoligono, OFTInteger}, {capa::kEntrada, OFTString}}, Comunes());
    return CapaDeRecintos(capa::kPoligonos, ClaseTopologia::Poligonos, municipio, referencia,
                          campos, PonPieza);
}

CCapaNueva CapaHojas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CListaCampos campos = Une({{capa::kHoja, OFTString}}, Comunes());
    const auto rellena = [](CElemento& elemento, const CSuyo& suyo) {
        elemento.PonTexto(capa::kHoja, suyo.recinto->rotulo);
    };
    const auto lee = [=, &municipio](std::size_t /*trozo*/) {
        const auto hojas = std::make_shared<const CTopologiaDibujada>(municipio.Hojas());
        return TrozoDeTopologia(nullptr, hojas, ClaseTopologia::Hojas, rellena);
    };
    return std::make_unique<CCapa>(capa::kHojas, wkbPolygon, referencia, campos, CFuente{1, lee});
}
