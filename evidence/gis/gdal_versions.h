#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <ogrsf_frmts.h>

// What GDAL asks of a driver's classes differs from version to version. It stands here alone,
// from 3.6 on, and the driver's own classes are written against these.

/// A field that a layer is told to have: nobody's to change from 3.9 on.
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 9, 0)
using CCampoPedido = const OGRFieldDefn;
#else
using CCampoPedido = OGRFieldDefn;
#endif

/// A layer with one column of geometries.
class CCapaGdal : public OGRLayer {
public:
    CCapaGdal(const CCapaGdal&) = delete;
    CCapaGdal& operator=(const CCapaGdal&) = delete;
    ~CCapaGdal() override { m_definicion->Release(); }

    // They change nothing, which GDAL says itself from 3.12 on.
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 12, 0)
    using OGRLayer::GetLayerDefn;
    const OGRFeatureDefn* GetLayerDefn() const final
    {
        return m_definicion;
    }
    int TestCapability(const char* capacidad) const final
    {
        return Sabe(capacidad) ? TRUE : FALSE;
    }
#else
    OGRFeatureDefn* GetLayerDefn() final
    {
        return m_definicion;
    }
    int TestCapability(const char* capacidad) final
    {
        return Sabe(capacidad) ? TRUE : FALSE;
    }
#endif

protected:
    CCapaGdal(const char* nombre, OGRwkbGeometryType geometria,
              const OGRSpatialReference* referencia)
        : m_definicion(
              new OGRFeatureDefn(nombre)) // NOLINT(cppcoreguidelines-owning-memory): counted
    {
        SetDescription(nombre);
        m_definicion->Reference();
        m_definicion->SetGeomType(geometria);
        m_definicion->GetGeomFieldDefn(0)->SetSpatialRef(
            const_cast<OGRSpatialReference*>(referencia)); // NOLINT: it keeps a reference alone
    }

#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 11, 0)
    OGRErr IGetExtent(int columna, OGREnvelope* caja, bool forzar) final
    {
        return Extension(*caja) ? OGRERR_NONE : OGRLayer::IGetExtent(columna, caja, forzar);
    }
#else
    OGRErr GetExtent(int columna, OGREnvelope* caja, int forzar) final
    {
        return OGRLayer::GetExtent(columna, caja, forzar); // comes back to the other one
    }
    OGRErr GetExtent(OGREnvelope* caja, int forzar) final
    {
        return Extension(*caja) ? OGRERR_NONE : OGRLayer::GetExtent(caja, forzar);
    }
#endif

    OGRFeatureDefn& Definicion()
    {
        return *m_definicion;
    }
    auto Referencia()
    {
        return m_definicion->GetGeomFieldDefn(0)->GetSpatialRef();
    }

private:
    /// Tells whether the layer has an ability, by GDAL's name of it.
    virtual bool Sabe(const char* capacidad) const = 0;
    /// Gives the extent of all features. False where GDAL has to find it out, and where there is
    /// none.
    virtual bool Extension(OGREnvelope& /*caja*/)
    {
        return false;
    }

    OGRFeatureDefn* m_definicion;
};

/// A dataset of layers that it owns.
class CDatosGdal : public GDALDataset {
public:
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 12, 0)
    using GDALDataset::GetLayer;
    int GetLayerCount() const final
    {
        AlContar();
        return NumCapas();
    }
    const OGRLayer* GetLayer(int i) const final
    {
        return Capa(i);
    }
#else
    int GetLayerCount() final
    {
        AlContar();
        return NumCapas();
    }
    OGRLayer* GetLayer(int i) final
    {
        return Capa(i);
    }
#endif

protected:
    /// Puts a layer behind the others, and gives it.
    OGRLayer* Añade(std::unique_ptr<OGRLayer> capa)
    {
        return m_capas.emplace_back(std::move(capa)).get();
    }

private:
    /// Called when GDAL asks how many layers there are.
    virtual void AlContar() const {}

    int NumCapas() const
    {
        return static_cast<int>(m_capas.size());
    }
    OGRLayer* Capa(int i) const
    {
        return i < 0 || i >= NumCapas() ? nullptr : m_capas[static_cast<std::size_t>(i)].get();
    }

    std::vector<std::unique_ptr<OGRLayer>> m_capas;
};

/// A dataset whose work ends when it is closed. GDAL asks for that from 3.7 on; before, the
/// destructor of the dataset does it alone.
class CDatosQueTerminan : public CDatosGdal {
protected:
    /// Ends the work, which may be asked more than once. False, which was told, where something
    /// failed.
    virtual bool Termina() = 0;
};

#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 7, 0)
/// What it is asked with has changed since.
template <class Firma>
class CDatosQueSeCierran;

template <class... T>
class CDatosQueSeCierran<CPLErr (GDALDataset::*)(T...)> : public CDatosQueTerminan {
public:
    CPLErr Close(T... argumentos) final
    {
        const bool bien = this->Termina();
        return GDALDataset::Close(argumentos...) == CE_None && bien ? CE_None : CE_Failure;
    }
};

using CDatosCerrables = CDatosQueSeCierran<decltype(&GDALDataset::Close)>;
#else
using CDatosCerrables = CDatosQueTerminan;
#endif

/// A dataset that takes new layers.
class CDatosNuevosGdal : public CDatosCerrables {
public:
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 12, 0)
    int TestCapability(const char* capacidad) const final
    {
        return Sabe(capacidad) ? TRUE : FALSE;
    }
#else
    int TestCapability(const char* capacidad) final
    {
        return Sabe(capacidad) ? TRUE : FALSE;
    }
#endif

#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 9, 0)
    OGRLayer* ICreateLayer(const char* nombre, const OGRGeomFieldDefn* geometria,
                           CSLConstList opciones) final
    {
        return CreaCapa(nombre, geometria == nullptr ? nullptr : geometria->GetSpatialRef(),
                        opciones);
    }
#elif GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 8, 0)
    OGRLayer* ICreateLayer(const char* nombre, const OGRSpatialReference* referencia,
                           OGRwkbGeometryType /*tipo*/, char** opciones) final
    {
        return CreaCapa(nombre, referencia, opciones);
    }
#else
    OGRLayer* ICreateLayer(const char* nombre, OGRSpatialReference* referencia,
                           OGRwkbGeometryType /*tipo*/, char** opciones) final
    {
        return CreaCapa(nombre, referencia, opciones);
    }
#endif

private:
    /// Tells whether the dataset has an ability, by GDAL's name of it.
    virtual bool Sabe(const char* capacidad) const = 0;
    /// Makes a layer. Null, which was told, where there can be none.
    virtual OGRLayer* CreaCapa(const char* nombre, const OGRSpatialReference* referencia,
                               CSLConstList opciones) = 0;
};
