#include "evidence/gis/reading/layer.h"

#include <cstring>
#include <utility>

#include "evidence/gis/complaints.h"
#include "platform/ansi.h"
#include "platform/files/cfile.h"

CListaCampos Une(CListaCampos campos, const CListaCampos& otros)
{
    campos.insert(campos.end(), otros.begin(), otros.end());
    return campos;
}

CCapa::CCapa(const char* nombre, OGRwkbGeometryType geometria,
             const OGRSpatialReference* referencia, const CListaCampos& campos, CFuente fuente)
    : CCapaGdal(nombre, geometria, referencia), m_fuente(std::move(fuente)),
      m_vistos(m_fuente.trozos)
{
    for (const CCampoCapa& campo : campos) {
        OGRFieldDefn definicion(campo.nombre, campo.tipo);
        definicion.SetSubType(campo.subtipo);
        Definicion().AddFieldDefn(&definicion);
    }
}

/// Keeps the boxes of a piece. It keeps the number of features that it had at first, since those
/// behind it are numbered by that: a drawing that others change meanwhile is told.
void CCapa::Apunta(std::size_t trozo, CCajas cajas)
{
    std::optional<CVisto>& visto = m_vistos[trozo];
    if (visto && visto->cajas.size() != cajas.size()) {
        if (!std::exchange(m_cambiada, true))
            AdvierteCon("La capa %s ha cambiado desde que se abrió: hay que abrirla otra vez"_ansi,
                        GetDescription());
        cajas.resize(visto->cajas.size());
    }
    OGREnvelope todas;
    for (const OGREnvelope& caja : cajas)
        if (caja.IsInit() != 0)
            todas.Merge(caja);
    visto = {std::move(cajas), todas};
}

const CCapa::CVisto& CCapa::Visto(std::size_t trozo)
{
    if (!m_vistos[trozo]) {
        std::optional<CCajas> cajas = m_fuente.mira ? m_fuente.mira(trozo) : std::nullopt;
        if (cajas)
            Apunta(trozo, std::move(*cajas));
        else
            Leido(trozo);
    }
    return *m_vistos[trozo];
}

/// The piece, which stays valid until another one is asked for.
const CTrozo& CCapa::Leido(std::size_t trozo)
{
    return m_leidos.Dame(trozo, [&] {
        CTrozo leido = m_fuente.lee(trozo);
        Apunta(trozo, leido.cajas);
        return leido;
    });
}

/// Goes on to the next feature whose box meets the filter's, if any. False at the end.
bool CCapa::VaAlSiguiente()
{
    for (; m_cursor.trozo < m_fuente.trozos; m_cursor = Detras(m_cursor)) {
        if (m_poFilterGeom == nullptr)
            Leido(m_cursor.trozo); // all of it is wanted: nothing is looked at first
        const CVisto& visto = Visto(m_cursor.trozo);
        if (m_poFilterGeom != nullptr && !m_sFilterEnvelope.Intersects(visto.todas))
            continue;
        for (; m_cursor.elemento < visto.cajas.size(); ++m_cursor.elemento)
            if (m_poFilterGeom == nullptr ||
                m_sFilterEnvelope.Intersects(visto.cajas[m_cursor.elemento]))
                return true;
    }
    return false;
}

/// The first feature of the next piece.
CCapa::CSitio CCapa::Detras(const CSitio& sitio)
{
    return {sitio.trozo + 1, 0, sitio.antes + Visto(sitio.trozo).cajas.size()};
}

/// How many features there are in all.
std::size_t CCapa::Todos()
{
    if (m_fuente.cuenta)
        return m_fuente.cuenta();
    std::size_t todos = 0;
    for (std::size_t trozo = 0; trozo < m_fuente.trozos; ++trozo)
        todos += Visto(trozo).cajas.size();
    return todos;
}

/// Where a feature stands, counted from 0; behind the last piece where there is none.
CCapa::CSitio CCapa::Sitio(std::size_t indice)
{
    CSitio sitio;
    for (; sitio.trozo < m_fuente.trozos; sitio = Detras(sitio))
        if (indice - sitio.antes < Visto(sitio.trozo).cajas.size()) {
            sitio.elemento = indice - sitio.antes;
            break;
        }
    return sitio;
}

bool CCapa::Extension(OGREnvelope& caja)
{
    return SinExcepciones(false, [&] {
        caja = OGREnvelope();
        for (std::size_t trozo = 0; trozo < m_fuente.trozos; ++trozo)
            if (Visto(trozo).todas.IsInit() != 0)
                caja.Merge(Visto(trozo).todas);
        return caja.IsInit() != 0;
    });
}

/// Makes a feature; null for one that isn't there any more.
std::unique_ptr<OGRFeature> CCapa::Haz(const CSitio& sitio)
{
    const CTrozo& trozo = Leido(sitio.trozo);
    if (sitio.elemento >= trozo.cajas.size())
        return nullptr;
    auto elemento = std::make_unique<OGRFeature>(&Definicion());
    elemento->SetFID(static_cast<GIntBig>(sitio.antes + sitio.elemento) + 1);
    CElemento hueco(*elemento);
    trozo.rellena(sitio.elemento, hueco);
    if (OGRGeometry* geometria = elemento->GetGeometryRef())
        geometria->assignSpatialReference(Referencia());
    return elemento;
}

OGRFeature* CCapa::GetNextFeature()
{
    return SinExcepciones<OGRFeature*>(nullptr, [&]() -> OGRFeature* {
        for (; VaAlSiguiente(); ++m_cursor.elemento) {
            std::unique_ptr<OGRFeature> elemento = Haz(m_cursor);
            if (elemento &&
                (m_poFilterGeom == nullptr || FilterGeometry(elemento->GetGeometryRef()) != 0) &&
                (m_poAttrQuery == nullptr || m_poAttrQuery->Evaluate(elemento.get()) != 0)) {
                ++m_cursor.elemento;
                return elemento.release();
            }
        }
        return nullptr;
    });
}

OGRFeature* CCapa::GetFeature(GIntBig fid)
{
    return SinExcepciones<OGRFeature*>(nullptr, [&]() -> OGRFeature* {
        if (fid < 1)
            return nullptr;
        const CSitio sitio = Sitio(static_cast<std::size_t>(fid) - 1);
        return sitio.trozo < m_fuente.trozos ? Haz(sitio).release() : nullptr;
    });
}

OGRErr CCapa::SetNextByIndex(GIntBig indice)
{
    return SinExcepciones<OGRErr>(OGRERR_FAILURE, [&] {
        if (m_poFilterGeom != nullptr || m_poAttrQuery != nullptr)
            return OGRLayer::SetNextByIndex(indice);
        if (indice < 0)
            return OGRERR_FAILURE;
        const CSitio sitio = Sitio(static_cast<std::size_t>(indice));
        if (sitio.trozo == m_fuente.trozos)
            return OGRERR_FAILURE;
        m_cursor = sitio;
        return OGRERR_NONE;
    });
}

GIntBig CCapa::GetFeatureCount(int forzar)
{
    constexpr GIntBig kNoSeSabe = -1;
    return SinExcepciones<GIntBig>(kNoSeSabe, [&] {
        return m_poFilterGeom == nullptr && m_poAttrQuery == nullptr
                   ? static_cast<GIntBig>(Todos())
                   : OGRLayer::GetFeatureCount(forzar);
    });
}

bool CCapa::Sabe(const char* capacidad) const
{
    const bool sinFiltro = m_poFilterGeom == nullptr && m_poAttrQuery == nullptr;
    if (EQUAL(capacidad, OLCFastFeatureCount) || EQUAL(capacidad, OLCFastSetNextByIndex))
        return sinFiltro;
    // Boxes of all features are had without reading them: without a filter they are the extent, and
    // a window makes those features alone that it may show.
    if (EQUAL(capacidad, OLCFastGetExtent) || EQUAL(capacidad, OLCFastSpatialFilter))
        return true;
    return EQUAL(capacidad, OLCRandomRead) || EQUAL(capacidad, OLCStringsAsUTF8);
}

void CElemento::PonTexto(const char* campo, std::string_view texto)
{
    SetField(campo, ansi::AUtf8(texto).c_str());
}

int CElemento::Indice(const char* campo)
{
    const int cuantos = m_elemento.GetFieldCount();
    for (int i = 0; i < cuantos; ++i) {
        m_ultimo = m_ultimo + 1 == cuantos ? 0 : m_ultimo + 1;
        if (std::strcmp(m_elemento.GetFieldDefnRef(m_ultimo)->GetNameRef(), campo) == 0)
            return m_ultimo;
    }
    return -1; // which sets nothing
}
