#include "evidence/drawing_findings.h"
#include "evidence/gis/geometry.h"
#include "evidence/gis/reading/layers.h"

// The layers of outlines: parcels, subparcels, polygons and sheets. An outline that the way back
// makes nothing of is there too, and says why.

namespace {

/// The outlines of one kind, in the order of the list and of their files.
struct CSuyo {
    const CPoligonoDibujado* poligono; ///< null for a sheet
    const CRecintoDibujado* recinto;
    CString faltas; ///< what is wrong with it; empty as a rule
};

/// Appends the outlines of a topology.
void Apunta(const CPoligonoDibujado* poligono, const CTopologiaDibujada& topologia,
            ClaseTopologia que, std::vector<CSuyo>& suyos)
{
    const CFaltasDeRecintos faltas = FaltasDe(topologia, que);
    for (std::size_t i = 0; i < topologia.recintos.size(); ++i)
        suyos.push_back({poligono, &topologia.recintos[i], TextoFaltas(faltas[i])});
}

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

void PonComunes(OGRFeature& elemento, const CSuyo& suyo)
{
    const CRecintoDibujado& recinto = *suyo.recinto;
    if (recinto.posicionRotulo > 0) {
        PonTexto(elemento, capa::kRotulo, recinto.rotulo);
        PonTexto(elemento, capa::kCodigo, recinto.codigo);
    }
    elemento.SetField(capa::kBorrado, recinto.borrado ? 1 : 0);
    elemento.SetField("area_registro", recinto.areaRegistro);
    elemento.SetField("area_contorno", recinto.AreaContorno());
    elemento.SetField("valido", recinto.Valido() ? 1 : 0);
    PonTexto(elemento, "estado", NombreEstado(recinto.estado));
    if (!suyo.faltas.IsEmpty())
        PonTexto(elemento, "faltas", suyo.faltas);
    elemento.SetField(capa::kNumero, recinto.numero);
    const OGRPoint punto = EnMetros(recinto.punto);
    elemento.SetField(capa::kX, punto.getX());
    elemento.SetField(capa::kY, punto.getY());
    elemento.SetGeometryDirectly(PoligonoDe(recinto).release());
}

void PonPieza(OGRFeature& elemento, const CSuyo& suyo)
{
    elemento.SetField(capa::kPoligono, suyo.poligono->polig);
    PonTexto(elemento, capa::kEntrada, suyo.poligono->entrada);
    if (suyo.recinto->parcela >= 0) {
        elemento.SetField(capa::kParcela, suyo.recinto->parcela);
        elemento.SetField("pieza", suyo.recinto->pieza);
        elemento.SetField("piezas", suyo.recinto->piezas);
    }
}

/// All outlines of a kind.
std::vector<CSuyo> Recoge(CMunicipioAbierto& municipio, ClaseTopologia que)
{
    std::vector<CSuyo> suyos;
    if (que == ClaseTopologia::Hojas) {
        Apunta(nullptr, municipio.Hojas(), que, suyos);
        return suyos;
    }
    for (const CPoligonoDibujado& poligono : municipio.Poligonos())
        Apunta(&poligono, poligono.Topologia(que), que, suyos);
    return suyos;
}

using CRellenaPropios = std::function<void(OGRFeature&, const CSuyo&)>;

/// A layer of the outlines of a kind. \param rellena  sets the fields that others don't have
CCapaNueva CapaDeRecintos(const char* nombre, ClaseTopologia que, CMunicipioAbierto& municipio,
                          const OGRSpatialReference* referencia, const CListaCampos& campos,
                          const CRellenaPropios& rellena)
{
    return std::make_unique<CCapa>(nombre, wkbPolygon, referencia, campos, [=, &municipio] {
        return FuenteDe(
            Recoge(municipio, que),
            [=](OGRFeature& elemento, const CSuyo& suyo) {
                PonComunes(elemento, suyo);
                rellena(elemento, suyo);
            },
            CajaDe);
    });
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

void PonParcelaDeTablas(OGRFeature& elemento, const CMunicipio& tablas, const CParcela& parcela)
{
    elemento.SetField("superficie", parcela.Superficie);
    elemento.SetField("participacion", parcela.ParticiPrincipal());
    PonTexto(elemento, "clave_conc", CString(std::string(1, parcela.claveConc)).TrimRight());
    if (const int titular = parcela.TitularPrincipal(); titular >= 0) {
        PonTexto(elemento, "titular", CString(tablas.DameTitular(titular).Nombre).TrimRight());
        PonTexto(elemento, "dni", CString(tablas.DameTitular(titular).DNI).TrimRight());
    }
    if (parcela.paraje >= 0)
        PonTexto(
            elemento, "paraje",
            CString(tablas.Parajes()[static_cast<std::size_t>(parcela.paraje)].Nombre).TrimRight());
}

void PonSubparcelaDeTablas(OGRFeature& elemento, const CSubparcela& subparcela)
{
    elemento.SetField("superficie", subparcela.superfic);
    PonTexto(elemento, "tipo", CString(std::string(1, subparcela.tipo)).TrimRight());
    PonTexto(elemento, "calificacion", CString(subparcela.cE).TrimRight());
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
                          [&municipio](OGRFeature& elemento, const CSuyo& suyo) {
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
        [&municipio](OGRFeature& elemento, const CSuyo& suyo) {
            PonPieza(elemento, suyo);
            if (suyo.recinto->Valido())
                PonTexto(elemento, capa::kLetra, suyo.recinto->letra);
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
    return CapaDeRecintos(capa::kHojas, ClaseTopologia::Hojas, municipio, referencia, campos,
                          [](OGRFeature& elemento, const CSuyo& suyo) {
                              PonTexto(elemento, capa::kHoja, suyo.recinto->rotulo);
                          });
}
