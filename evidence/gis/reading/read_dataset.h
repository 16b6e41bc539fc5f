#pragma once

#include <memory>
#include <utility>

#include "evidence/gis/gdal_versions.h"
#include "evidence/gis/reading/archive_copy.h"
#include "evidence/gis/reading/layers.h"
#include "evidence/gis/reading/municipality_source.h"

/// A municipality opened by its list file.
class CDatosMunicipio final : public CDatosGdal {
public:
    /// Tells GDAL whether the file looks like a list, by its first lines or by the prefix "VEXA:".
    static int Identifica(GDALOpenInfo* que);
    /// Opens the list; GDAL owns the result. Null for a file that is no list, in silence. Raises
    /// CFileException for one that can't be read.
    static GDALDataset* Abre(GDALOpenInfo* que);

    /// All files that the layers show something of.
    char** GetFileList() override;

private:
    CDatosMunicipio(std::unique_ptr<CCopiaDeArchivo> copia,
                    std::unique_ptr<CMunicipioAbierto> municipio)
        : m_copia(std::move(copia)), m_municipio(std::move(municipio))
    {
    }
    void PonCapas(const OGRSpatialReference* referencia);

    std::unique_ptr<CCopiaDeArchivo> m_copia; // of a municipality inside an archive
    std::unique_ptr<CMunicipioAbierto> m_municipio;
};
