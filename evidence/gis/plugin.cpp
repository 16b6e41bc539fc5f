#include <gdal_priv.h>

#include "evidence/gis/complaints.h"
#include "evidence/gis/driver.h"
#include "evidence/gis/names.h"

// The entry of the plugin, which GDAL looks up by the name of its file.

extern "C" CPL_DLL void RegisterOGRVexa();

void RegisterOGRVexa()
{
    if (GDAL_CHECK_VERSION(opcion::kControlador) != 0)
        SinExcepciones(false, [] {
            RegistraVexa();
            return true;
        });
}
