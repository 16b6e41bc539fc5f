#include "evidence/gis/driver.h"

#include <gdal_priv.h>

#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "evidence/gis/reading/read_dataset.h"
#include "evidence/gis/writing/write_dataset.h"

namespace {

constexpr const char* kOpcionesAbrir = R"(<OpenOptionList>
  <Option name='TABLAS' type='string' description='Carpeta de las tablas, si no es la de la lista'/>
  <Option name='ORTOS' type='string' description='Dibujo de las hojas, si no es ortos.TOP ni el único otro .TOP'/>
  <Option name='REGISTRO' type='string' description='Fichero de errores, si no es el de la lista'/>
  <Option name='SRS' type='string' description='Sistema de referencia de los dibujos, p. ej. EPSG:25830'/>
</OpenOptionList>)";

constexpr const char* kOpcionesCrear = R"(<CreationOptionList>
  <Option name='GER' type='int' description='Código de la gerencia'/>
  <Option name='MUN' type='int' description='Código del municipio'/>
  <Option name='CABECERA' type='string' description='Primera línea de la lista, en lugar de GER y MUN'/>
  <Option name='ORTOS' type='string' description='Nombre del dibujo de las hojas, si no es el que hay u ortos'/>
  <Option name='PIEZAS' type='string-select' default='NO' description='Escribir también parcelas y letras que están en varios recintos'>
    <Value>NO</Value><Value>SI</Value></Option>
  <Option name='INVALIDOS' type='string-select' default='NO' description='Dejar fuera los recintos que no se pueden dibujar, en vez de no escribir nada'>
    <Value>NO</Value><Value>SI</Value></Option>
  <Option name='SUSTITUYE' type='string-select' default='NO' description='Hacer el municipio de nuevo, en vez de cambiar en el que hay lo que trae el origen'>
    <Value>NO</Value><Value>SI</Value></Option>
  <Option name='GANAN' type='string-select' default='NADIE' description='Qué campos valen donde se contradicen: parcela, letra, poligono y hoja, o rotulo y entrada; con NADIE se rechaza'>
    <Value>NADIE</Value><Value>NUMEROS</Value><Value>ROTULOS</Value></Option>
  <Option name='SIMULA' type='string-select' default='NO' description='Decir lo que cambiaría y no escribir nada'>
    <Value>NO</Value><Value>SI</Value></Option>
  <Option name='VACIA' type='string' description='Polígonos de la lista que se vacían aunque el origen no los nombre: sus nombres, separados por comas, o TODOS'/>
  <Option name='TOLERANCIA_ARCOS' type='float' description='Metros que las cuerdas pueden separarse de sus arcos'/>
</CreationOptionList>)";

} // namespace

void RegistraVexa()
{
    if (GDALGetDriverByName(opcion::kControlador) != nullptr)
        return;
    auto* driver = new GDALDriver(); // NOLINT(cppcoreguidelines-owning-memory): the manager's
    driver->SetDescription(opcion::kControlador);
    driver->SetMetadataItem(GDAL_DCAP_VECTOR, "YES");
    driver->SetMetadataItem(GDAL_DCAP_VIRTUALIO, "YES");
    driver->SetMetadataItem(GDAL_DMD_LONGNAME, "Dibujos de Vexa, por su lista de polígonos");
    driver->SetMetadataItem(GDAL_DMD_EXTENSION, "txt");
    driver->SetMetadataItem(GDAL_DMD_CONNECTION_PREFIX, opcion::kPrefijo);
    driver->SetMetadataItem(GDAL_DMD_OPENOPTIONLIST, kOpcionesAbrir);
    driver->SetMetadataItem(GDAL_DMD_CREATIONOPTIONLIST, kOpcionesCrear);
    driver->SetMetadataItem(GDAL_DMD_CREATIONFIELDDATATYPES,
                            "Integer Integer64 Real String Date Time DateTime");
    // The options' type is another from 3.13 on.
    driver->pfnCreate = [](const char* lista, int /*ancho*/, int /*alto*/, int bandas,
                           GDALDataType /*tipo*/, auto opciones) {
        return SinExcepciones<GDALDataset*>(
            nullptr, [&] { return CMunicipioNuevo::Crea(lista, bandas, opciones); });
    };
    // Before a dataset is created GDAL deletes what is there, which is the municipality that is to
    // change; nobody else deletes one by way of a map either.
    driver->pfnDelete = [](const char* /*lista*/) { return CE_Failure; };
    driver->pfnIdentify = CDatosMunicipio::Identifica;
    driver->pfnOpen = [](GDALOpenInfo* que) {
        return SinExcepciones<GDALDataset*>(nullptr, [&] { return CDatosMunicipio::Abre(que); });
    };
    GetGDALDriverManager()->RegisterDriver(driver);
}
