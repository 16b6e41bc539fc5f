#pragma once

/// Makes the driver known to GDAL; a second call does nothing.
void RegistraVexa();
