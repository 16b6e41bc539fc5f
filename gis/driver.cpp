#include "gis/driver.h"

#include <gdal_priv.h>

#include "gis/read_dataset.h"

namespace {

constexpr const char* kNombre = "Vexa";

constexpr const char* kOpcionesAbrir = R"(<OpenOptionList>
  <Option name='TABLAS' type='string' description='Carpeta de las tablas, si no es la de la lista'/>
  <Option name='ORTOS' type='string' description='Dibujo de las hojas, si no es ortos.TOP'/>
  <Option name='REGISTRO' type='string' description='Fichero de errores, si no es el de la lista'/>
  <Option name='SRS' type='string' description='Sistema de referencia de los dibujos, p. ej. EPSG:25830'/>
</OpenOptionList>)";

} // namespace

void RegistraVexa()
{
    if (GDALGetDriverByName(kNombre) != nullptr)
        return;
    auto* driver = new GDALDriver(); // NOLINT(cppcoreguidelines-owning-memory): the manager's
    driver->SetDescription(kNombre);
    driver->SetMetadataItem(GDAL_DCAP_VECTOR, "YES");
    driver->SetMetadataItem(GDAL_DMD_LONGNAME, "Dibujos de Vexa, por su lista de polígonos");
    driver->SetMetadataItem(GDAL_DMD_EXTENSION, "txt");
    driver->SetMetadataItem(GDAL_DMD_CONNECTION_PREFIX, "VEXA:");
    driver->SetMetadataItem(GDAL_DMD_OPENOPTIONLIST, kOpcionesAbrir);
    driver->pfnIdentify = CDatosMunicipio::Identifica;
    driver->pfnOpen = CDatosMunicipio::Abre;
    GetGDALDriverManager()->RegisterDriver(driver);
}
