#pragma once

#include <vector>

#include "evidence/gis/gdal_versions.h"
#include "evidence/gis/writing/drawing_maker.h"
#include "evidence/gis/writing/outline_input.h"

/// A municipality in the making: its layers take outlines, and the drawings are made of them when
/// it is closed. Nothing is written where one of them was refused.
class CMunicipioNuevo final : public CDatosNuevosGdal {
public:
    /// Begins a municipality; nothing is written yet. GDAL owns the result. Null where a picture is
    /// asked for, which has bands.
    static GDALDataset* Crea(const char* lista, int bandas, CSLConstList opciones);

    CMunicipioNuevo(const CMunicipioNuevo&) = delete;
    CMunicipioNuevo& operator=(const CMunicipioNuevo&) = delete;
    ~CMunicipioNuevo() override;

private:
    CMunicipioNuevo(const char* lista, CSLConstList opciones);

    bool Sabe(const char* capacidad) const override;
    OGRLayer* CreaCapa(const char* nombre, const OGRSpatialReference* referencia) override;

    /// Takes a feature of one of its layers. False, which was told, where it is refused.
    bool Toma(ClaseTopologia clase, const OGRFeature& elemento);
    bool SiNo(const char* opcion) const;
    /// The list's first line; empty, which was told, where nothing says which municipality it is.
    CString Cabecera();
    void Graba();
    // The two make drawings, and give false where an outline was refused, which was told.
    bool GrabaPoligonos(CConjuntoSalidas& salidas, std::vector<CString>& entradas);
    bool GrabaHojas(CConjuntoSalidas& salidas);
    void GrabaLista(CConjuntoSalidas& salidas, const CString& cabecera,
                    const std::vector<CString>& entradas) const;
    CString Al(const CString& nombre) const; ///< beside the list

    CString m_lista;
    CPLStringList m_opciones;
    CNoticias m_noticias;
    CModoDibujo m_modo;
    double m_tolerancia = 0; // of arcs, in metres
    bool m_rechazado = false;
    std::vector<CRecintoEntrante> m_recintos;
};
