#include "evidence/gis/writing/entity_input.h"

#include <iterator>

#include "cadastre/label_codes.h"
#include "evidence/gis/geometry.h"
#include "evidence/gis/names.h"
#include "evidence/gis/writing/outline_input.h"
#include "platform/ansi.h"

using vexageo::CTipoDat;

namespace {

/// An entity of a kind; `CTexto` takes any.
vexageo::CTexto<int> EntidadDe(CTipoDat::CTipoEntidad tipo, const CString& codigo, bool borrado)
{
    vexageo::CTexto<int> entidad;
    entidad.Tipo() = CTipoDat(tipo, codigo);
    entidad.Tipo().SetBorrado(borrado);
    return entidad;
}

/// What the fields say; the points are still to come.
void LeeCampos(ClaseEntidad clase, CCamposElemento& campos, CEntidadEntrante& suya)
{
    suya.de = LeeDePoligono(campos);
    suya.posicion = campos.Entero(capa::kPosicion);
    const std::optional<CString> dicho = campos.Texto(capa::kCodigo);
    const CString codigo = dicho.value_or("nuevo");
    suya.sinCodigo = !dicho;
    const bool borrado = campos.SiNo(capa::kBorrado).value_or(false);
    if (clase == ClaseEntidad::Lineas) {
        suya.entidad = EntidadDe(CTipoDat::Linea, codigo, borrado);
        if (campos.SiNo(capa::kLinde).value_or(false))
            suya.deCapa = capa::kLineas;
        return;
    }
    const std::optional<CString> texto = campos.Texto(capa::kTexto);
    const std::optional<CString> tipo = campos.Texto(capa::kClase);
    const bool esTexto = tipo ? *tipo != capa::kPunto : texto.has_value();
    suya.entidad = EntidadDe(esTexto ? CTipoDat::Texto : CTipoDat::Punto, codigo, borrado);
    suya.entidad.SetTexto(texto.value_or(CString()));
    if (const std::optional<CString> deCapa = campos.Texto(capa::kCapa);
        deCapa && !deCapa->IsEmpty())
        suya.deCapa = deCapa->GetString();
}

CString NombreDe(const OGRFeature& elemento, const CEntidadEntrante& suya)
{
    CString nombre = suya.EsLinea() ? CString("la línea"_ansi)
                                    : "el rótulo \""_ansi + suya.entidad.Texto() + "\"";
    return nombre + suya.de.EnPalabras() +
           Formatea(" (elemento %d)", static_cast<int>(elemento.GetFID()));
}

/// The pieces of a geometry that are of the kind; empty where one isn't.
std::vector<const OGRGeometry*> PiezasDe(const OGRGeometry& geometria, OGRwkbGeometryType tipo)
{
    std::vector<const OGRGeometry*> piezas = PartesDe(geometria, tipo);
    if (OGR_GT_IsSubClassOf(geometria.getGeometryType(), wkbGeometryCollection) != FALSE &&
        std::ssize(piezas) != geometria.toGeometryCollection()->getNumGeometries())
        piezas.clear();
    return piezas;
}

std::vector<vexageo::CPunto<int>> PuntosDe(const OGRGeometry& pieza)
{
    if (wkbFlatten(pieza.getGeometryType()) == wkbPoint)
        return {EnUnidades(pieza.toPoint()->getX(), pieza.toPoint()->getY())};
    std::vector<vexageo::CPunto<int>> puntos;
    const OGRLineString& linea = *pieza.toLineString();
    puntos.reserve(static_cast<std::size_t>(linea.getNumPoints()));
    for (int i = 0; i < linea.getNumPoints(); ++i)
        puntos.push_back(EnUnidades(linea.getX(i), linea.getY(i)));
    return puntos;
}

} // namespace

std::optional<ClaseEntidad> ClaseDeEntidad(const std::string& nombre)
{
    if (EQUAL(nombre.c_str(), capa::kRotulos))
        return ClaseEntidad::Rotulos;
    return EQUAL(nombre.c_str(), capa::kLineas) ? std::optional(ClaseEntidad::Lineas)
                                                : std::nullopt;
}

bool TomaEntidad(ClaseEntidad clase, const OGRFeature& elemento,
                 std::vector<CEntidadEntrante>& entidades)
{
    CCamposElemento campos(elemento);
    CEntidadEntrante suya;
    LeeCampos(clase, campos, suya);
    suya.nombre = NombreDe(elemento, suya);
    // Of the sheets' drawing there is no polygon, but there is a place in it.
    CString falta = campos.FaltaDe(suya.de, suya.posicion.has_value());
    if (falta.IsEmpty() && suya.entidad.Tipo().Codigo().GetLength() > kCodigoMasLargo)
        falta = "el código es demasiado largo"_ansi;
    const OGRGeometry* geometria = elemento.GetGeometryRef();
    if (falta.IsEmpty() && geometria != nullptr)
        falta = MotivoDeLugar(*geometria);
    const bool vacia = geometria == nullptr || geometria->IsEmpty();
    const std::vector<const OGRGeometry*> piezas =
        vacia ? std::vector<const OGRGeometry*>()
              : PiezasDe(*geometria, suya.EsLinea() ? wkbLineString : wkbPoint);
    if (falta.IsEmpty() && piezas.empty() && !(vacia && suya.posicion))
        falta = suya.EsLinea() ? "su geometría no es una línea"_ansi
                               : "su geometría no es un punto"_ansi;
    if (!falta.IsEmpty()) {
        suya.rechazo = suya.nombre + ": " + falta;
        entidades.push_back(suya);
        return false;
    }
    if (piezas.empty())
        entidades.push_back(suya); // as it came: a line without points
    for (const OGRGeometry* pieza : piezas) {
        suya.entidad.Puntos() = PuntosDe(*pieza);
        entidades.push_back(suya);
    }
    return true;
}
