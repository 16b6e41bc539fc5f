#include "evidence/gis/writing/write_layer.h"

#include <utility>

CCapaNuevaSalida::CCapaNuevaSalida(CTomaElemento toma, const char* nombre,
                                   std::optional<ClaseTopologia> clase,
                                   OGRSpatialReference* referencia)
    : m_toma(std::move(toma)), m_definicion(new OGRFeatureDefn(nombre)), m_clase(clase)
{
    SetDescription(nombre);
    m_definicion->Reference();
    m_definicion->GetGeomFieldDefn(0)->SetSpatialRef(referencia);
}

OGRErr CCapaNuevaSalida::CreateField(OGRFieldDefn* campo, int /*aproximado*/)
{
    m_definicion->AddFieldDefn(campo);
    return OGRERR_NONE;
}

OGRErr CCapaNuevaSalida::ICreateFeature(OGRFeature* elemento)
{
    ++m_ultimo;
    if (elemento->GetFID() == OGRNullFID)
        elemento->SetFID(m_ultimo);
    if (!m_clase)
        return OGRERR_NONE;
    if (OGRGeometry* geometria = elemento->GetGeometryRef();
        geometria != nullptr && geometria->getSpatialReference() == nullptr)
        geometria->assignSpatialReference(m_definicion->GetGeomFieldDefn(0)->GetSpatialRef());
    return m_toma(*m_clase, *elemento) ? OGRERR_NONE : OGRERR_FAILURE;
}

int CCapaNuevaSalida::TestCapability(const char* capacidad)
{
    return EQUAL(capacidad, OLCSequentialWrite) || EQUAL(capacidad, OLCCreateField) ||
                   EQUAL(capacidad, OLCStringsAsUTF8) || EQUAL(capacidad, OLCCurveGeometries)
               ? TRUE
               : FALSE;
}
