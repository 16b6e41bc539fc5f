#include "evidence/gis/writing/write_layer.h"

#include <utility>

#include "evidence/gis/complaints.h"

CCapaNuevaSalida::CCapaNuevaSalida(CTomaElemento toma, const char* nombre,
                                   const OGRSpatialReference* referencia)
    : CCapaGdal(nombre, wkbUnknown, referencia), m_toma(std::move(toma))
{
}

OGRErr CCapaNuevaSalida::CreateField(CCampoPedido* campo, int /*aproximado*/)
{
    return SinExcepciones<OGRErr>(OGRERR_FAILURE, [&] {
        Definicion().AddFieldDefn(campo);
        return OGRERR_NONE;
    });
}

OGRErr CCapaNuevaSalida::ICreateFeature(OGRFeature* elemento)
{
    ++m_ultimo;
    if (elemento->GetFID() == OGRNullFID)
        elemento->SetFID(m_ultimo);
    if (OGRGeometry* geometria = elemento->GetGeometryRef();
        geometria != nullptr && geometria->getSpatialReference() == nullptr)
        geometria->assignSpatialReference(Referencia());
    return m_toma(*elemento) ? OGRERR_NONE : OGRERR_FAILURE;
}

bool CCapaNuevaSalida::Sabe(const char* capacidad) const
{
    return EQUAL(capacidad, OLCSequentialWrite) || EQUAL(capacidad, OLCCreateField) ||
           EQUAL(capacidad, OLCStringsAsUTF8) || EQUAL(capacidad, OLCCurveGeometries);
}
