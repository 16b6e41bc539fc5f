#include "gis/geometry.h"
#include "gis/layers.h"

// The layers of outlines: parcels, subparcels, polygons and sheets. An outline that the way back
// makes nothing of is there too, and says why.

namespace {

using CCampos = std::vector<CCampoCapa>;

/// The outlines of one kind, in the order of the list and of their files.
struct CSuyo {
    const CPoligonoDibujado* poligono; ///< null for a sheet
    const CRecintoDibujado* recinto;
};

CCampos Une(CCampos campos, const CCampos& otros)
{
    campos.insert(campos.end(), otros.begin(), otros.end());
    return campos;
}

/// The fields that all outlines have.
const CCampos& Comunes()
{
    static const CCampos campos = {{capa::kRotulo, OFTString},
                                   {capa::kCodigo, OFTString},
                                   {capa::kBorrado, OFTInteger, OFSTBoolean},
                                   {"area_registro", OFTReal},
                                   {"area_contorno", OFTReal},
                                   {"valido", OFTInteger, OFSTBoolean},
                                   {"estado", OFTString},
                                   {capa::kNumero, OFTInteger},
                                   {capa::kX, OFTReal},
                                   {capa::kY, OFTReal}};
    return campos;
}

void PonComunes(OGRFeature& elemento, const CRecintoDibujado& recinto)
{
    if (recinto.posicionRotulo > 0) {
        PonTexto(elemento, capa::kRotulo, recinto.rotulo);
        PonTexto(elemento, capa::kCodigo, recinto.codigo);
    }
    elemento.SetField(capa::kBorrado, recinto.borrado ? 1 : 0);
    elemento.SetField("area_registro", recinto.areaRegistro);
    elemento.SetField("area_contorno", recinto.AreaContorno());
    elemento.SetField("valido", recinto.Valido() ? 1 : 0);
    PonTexto(elemento, "estado", NombreEstado(recinto.estado));
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

/// A layer of the outlines of one topology of each polygon.
CCapaNueva CapaDeTopologia(const char* nombre, CTopologiaDibujada CPoligonoDibujado::*topologia,
                           CMunicipioAbierto& municipio, const OGRSpatialReference* referencia,
                           const CCampos& campos,
                           const std::function<void(OGRFeature&, const CSuyo&)>& rellena)
{
    return std::make_unique<CCapa>(nombre, wkbPolygon, referencia, campos, [=, &municipio] {
        std::vector<CSuyo> suyos;
        for (const CPoligonoDibujado& poligono : municipio.Poligonos())
            for (const CRecintoDibujado& recinto : (poligono.*topologia).recintos)
                suyos.push_back({&poligono, &recinto});
        const std::size_t cuantos = suyos.size();
        return CCapa::CFuente{
            cuantos, [suyos = std::move(suyos), rellena](std::size_t i, OGRFeature& elemento) {
                PonComunes(elemento, *suyos[i].recinto);
                rellena(elemento, suyos[i]);
            }};
    });
}

void PonParcelaDeTablas(OGRFeature& elemento, const CTablas& tablas, const CParcela& parcela)
{
    elemento.SetField("superficie", parcela.Superficie);
    elemento.SetField("participacion", parcela.ParticiPrincipal());
    PonTexto(elemento, "clave_conc", CString(std::string(1, parcela.claveConc)).TrimRight());
    if (const CTitular* titular = tablas.Titular(parcela)) {
        PonTexto(elemento, "titular", CString(titular->Nombre).TrimRight());
        PonTexto(elemento, "dni", CString(titular->DNI).TrimRight());
    }
    if (const CParaje* paraje = tablas.Paraje(parcela))
        PonTexto(elemento, "paraje", CString(paraje->Nombre).TrimRight());
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
    const CCampos campos = Une(Une({{capa::kPoligono, OFTInteger},
                                    {capa::kParcela, OFTInteger},
                                    {capa::kEntrada, OFTString},
                                    {"pieza", OFTInteger},
                                    {"piezas", OFTInteger}},
                                   Comunes()),
                               {{"en_tablas", OFTInteger, OFSTBoolean},
                                {"superficie", OFTInteger},
                                {"titular", OFTString},
                                {"dni", OFTString},
                                {"participacion", OFTInteger},
                                {"paraje", OFTString},
                                {"clave_conc", OFTString}});
    return CapaDeTopologia(capa::kParcelas, &CPoligonoDibujado::parcelas, municipio, referencia,
                           campos, [&municipio](OGRFeature& elemento, const CSuyo& suyo) {
                               PonPieza(elemento, suyo);
                               const CTablas& tablas = municipio.Tablas();
                               if (!tablas.HayParcelas() || suyo.recinto->parcela < 0)
                                   return;
                               const CParcela* parcela =
                                   tablas.Parcela(suyo.poligono->polig, suyo.recinto->parcela);
                               elemento.SetField("en_tablas", parcela != nullptr ? 1 : 0);
                               if (parcela != nullptr)
                                   PonParcelaDeTablas(elemento, tablas, *parcela);
                           });
}

CCapaNueva CapaSubparcelas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CCampos campos = Une(Une({{capa::kPoligono, OFTInteger},
                                    {capa::kParcela, OFTInteger},
                                    {capa::kLetra, OFTString},
                                    {capa::kEntrada, OFTString},
                                    {"pieza", OFTInteger},
                                    {"piezas", OFTInteger}},
                                   Comunes()),
                               {{"en_tablas", OFTInteger, OFSTBoolean},
                                {"superficie", OFTInteger},
                                {"tipo", OFTString},
                                {"calificacion", OFTString},
                                {"clase", OFTInteger}});
    return CapaDeTopologia(
        capa::kSubparcelas, &CPoligonoDibujado::subparcelas, municipio, referencia, campos,
        [&municipio](OGRFeature& elemento, const CSuyo& suyo) {
            PonPieza(elemento, suyo);
            if (suyo.recinto->Valido())
                PonTexto(elemento, capa::kLetra, suyo.recinto->letra);
            const CTablas& tablas = municipio.Tablas();
            if (!tablas.HayParcelas() || suyo.recinto->parcela < 0)
                return;
            const CParcela* parcela = tablas.Parcela(suyo.poligono->polig, suyo.recinto->parcela);
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
    const CCampos campos =
        Une({{capa::kPoligono, OFTInteger}, {capa::kEntrada, OFTString}}, Comunes());
    return CapaDeTopologia(capa::kPoligonos, &CPoligonoDibujado::poligonos, municipio, referencia,
                           campos, PonPieza);
}

CCapaNueva CapaHojas(CMunicipioAbierto& municipio, const OGRSpatialReference* referencia)
{
    const CCampos campos = Une({{capa::kHoja, OFTString}}, Comunes());
    return std::make_unique<CCapa>(capa::kHojas, wkbPolygon, referencia, campos, [&municipio] {
        const std::vector<CRecintoDibujado>& hojas = municipio.Hojas().recintos;
        return CCapa::CFuente{hojas.size(), [&hojas](std::size_t i, OGRFeature& elemento) {
                                  PonComunes(elemento, hojas[i]);
                                  PonTexto(elemento, capa::kHoja, hojas[i].rotulo);
                              }};
    });
}
