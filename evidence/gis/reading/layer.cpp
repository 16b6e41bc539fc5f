#include "evidence/gis/reading/layer.h"

#include "evidence/gis/complaints.h"
#include "platform/ansi.h"
#include "platform/files/cfile.h"

namespace {

constexpr std::size_t kPorGrupo = 64;

} // namespace

CListaCampos Une(CListaCampos campos, const CListaCampos& otros)
{
    campos.insert(campos.end(), otros.begin(), otros.end());
    return campos;
}

CCapa::CCapa(const char* nombre, OGRwkbGeometryType geometria,
             const OGRSpatialReference* referencia, const CListaCampos& campos,
             std::function<CFuente()> fuente)
    : CCapaGdal(nombre, geometria, referencia), m_pide(std::move(fuente))
{
    for (const CCampoCapa& campo : campos) {
        OGRFieldDefn definicion(campo.nombre, campo.tipo);
        definicion.SetSubType(campo.subtipo);
        Definicion().AddFieldDefn(&definicion);
    }
}

const CCapa::CFuente& CCapa::Fuente()
{
    if (m_fuente)
        return *m_fuente;
    auto fuente = std::make_unique<CFuente>(m_pide());
    m_grupos.clear();
    for (std::size_t i = 0; i < fuente->cajas.size(); ++i) {
        if (i % kPorGrupo == 0)
            m_grupos.emplace_back();
        if (fuente->cajas[i].IsInit())
            m_grupos.back().Merge(fuente->cajas[i]);
    }
    m_fuente = std::move(fuente);
    return *m_fuente;
}

/// Goes on to the next feature whose box meets the filter's. Features of one drawing stand beside
/// one another, so most groups are passed over at once.
void CCapa::SaltaLosDeFuera()
{
    const std::size_t cuantos = Fuente().cuantos;
    if (m_poFilterGeom == nullptr)
        return;
    while (m_siguiente < cuantos) {
        if (m_siguiente % kPorGrupo == 0 &&
            !m_sFilterEnvelope.Intersects(m_grupos[m_siguiente / kPorGrupo]))
            m_siguiente += kPorGrupo;
        else if (!m_sFilterEnvelope.Intersects(Fuente().cajas[m_siguiente]))
            ++m_siguiente;
        else
            break;
    }
}

bool CCapa::Extension(OGREnvelope& caja)
{
    return SinExcepciones(false, [&] {
        Fuente();
        caja = OGREnvelope();
        for (const OGREnvelope& grupo : m_grupos)
            if (grupo.IsInit())
                caja.Merge(grupo);
        return caja.IsInit() != 0;
    });
}

std::unique_ptr<OGRFeature> CCapa::Haz(std::size_t i)
{
    auto elemento = std::make_unique<OGRFeature>(&Definicion());
    elemento->SetFID(static_cast<GIntBig>(i) + 1);
    Fuente().rellena(i, *elemento);
    if (OGRGeometry* geometria = elemento->GetGeometryRef())
        geometria->assignSpatialReference(Referencia());
    return elemento;
}

OGRFeature* CCapa::GetNextFeature()
{
    return SinExcepciones<OGRFeature*>(nullptr, [&]() -> OGRFeature* {
        for (SaltaLosDeFuera(); m_siguiente < Fuente().cuantos; SaltaLosDeFuera()) {
            std::unique_ptr<OGRFeature> elemento = Haz(m_siguiente++);
            if ((m_poFilterGeom == nullptr || FilterGeometry(elemento->GetGeometryRef()) != 0) &&
                (m_poAttrQuery == nullptr || m_poAttrQuery->Evaluate(elemento.get()) != 0))
                return elemento.release();
        }
        return nullptr;
    });
}

OGRFeature* CCapa::GetFeature(GIntBig fid)
{
    return SinExcepciones<OGRFeature*>(nullptr, [&] {
        return fid < 1 || static_cast<std::size_t>(fid) > Fuente().cuantos
                   ? nullptr
                   : Haz(static_cast<std::size_t>(fid) - 1).release();
    });
}

OGRErr CCapa::SetNextByIndex(GIntBig indice)
{
    return SinExcepciones<OGRErr>(OGRERR_FAILURE, [&] {
        if (m_poFilterGeom != nullptr || m_poAttrQuery != nullptr)
            return OGRLayer::SetNextByIndex(indice);
        if (indice < 0 || static_cast<std::size_t>(indice) >= Fuente().cuantos)
            return OGRERR_FAILURE;
        m_siguiente = static_cast<std::size_t>(indice);
        return OGRERR_NONE;
    });
}

GIntBig CCapa::GetFeatureCount(int forzar)
{
    constexpr GIntBig kNoSeSabe = -1;
    return SinExcepciones<GIntBig>(kNoSeSabe, [&] {
        return m_poFilterGeom == nullptr && m_poAttrQuery == nullptr
                   ? static_cast<GIntBig>(Fuente().cuantos)
                   : OGRLayer::GetFeatureCount(forzar);
    });
}

bool CCapa::Sabe(const char* capacidad) const
{
    const bool sinFiltro = m_poFilterGeom == nullptr && m_poAttrQuery == nullptr;
    if (EQUAL(capacidad, OLCFastFeatureCount) || EQUAL(capacidad, OLCFastSetNextByIndex))
        return sinFiltro;
    // Boxes of all features are kept: without a filter they are the extent, and a window makes
    // those features alone that it may show.
    if (EQUAL(capacidad, OLCFastGetExtent) || EQUAL(capacidad, OLCFastSpatialFilter))
        return true;
    return EQUAL(capacidad, OLCRandomRead) || EQUAL(capacidad, OLCStringsAsUTF8);
}

void PonTexto(OGRFeature& elemento, const char* campo, std::string_view texto)
{
    elemento.SetField(campo, ansi::AUtf8(texto).c_str());
}
