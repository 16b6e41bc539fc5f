#pragma once

#include <map>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include "evidence/gis/gdal_versions.h"
#include "evidence/gis/writing/drawing_maker.h"
#include "evidence/gis/writing/drawings_as_read.h"
#include "evidence/gis/writing/drawn_list.h"
#include "evidence/gis/writing/read_only_fields.h"
#include "evidence/gis/writing/source_end.h"

/// A municipality in the making, or one that is there and changes: its layers take outlines and
/// entities, and the drawings are made of them when it is closed. Nothing is written where one of
/// them was refused.
class CMunicipioNuevo final : public CDatosNuevosGdal {
public:
    /// Begins a municipality; nothing is written yet. GDAL owns the result. Null where a picture is
    /// asked for, which has bands.
    static GDALDataset* Crea(const char* lista, int bandas, CSLConstList opciones);

    CMunicipioNuevo(const CMunicipioNuevo&) = delete;
    CMunicipioNuevo& operator=(const CMunicipioNuevo&) = delete;
    ~CMunicipioNuevo() override;

    // All is written together at the end: one that is rolled back, or not committed, lets nothing
    // be written, whatever others were.
    OGRErr StartTransaction(int /*forzar*/) override { return m_fin.Empieza(); }
    OGRErr CommitTransaction() override { return m_fin.Acaba(); }
    OGRErr RollbackTransaction() override { return m_fin.Deshace(); }

private:
    static constexpr const char* kRechazados = "elementos rechazados"; // in the tidings

    CMunicipioNuevo(const char* lista, CSLConstList opciones);

    void AlContar() const override { m_fin.Mira(); } // which ogr2ogr has done for each layer
    bool Sabe(const char* capacidad) const override;
    OGRLayer* CreaCapa(const char* nombre, const OGRSpatialReference* referencia,
                       CSLConstList opciones) override;

    bool Termina() override;
    /// Takes a feature of a layer of outlines, or of entities. False, which was told, where it is
    /// refused.
    bool Toma(const std::optional<ClaseTopologia>& clase,
              const std::optional<ClaseEntidad>& entidad, const OGRFeature& elemento);
    /// Tells that the features from a place on were refused, and gives whether to go on: then they
    /// stay, and are told, where the drawing that is there may have them.
    template <class T>
    bool SeSalta(std::vector<T>& tomados, std::size_t desde);
    bool RechazaCapa(const CString& motivo);
    bool SiNo(const char* opcion) const;
    CPedidoDibujo PedidoDe(const CString& nombre,
                           std::span<const ClaseTopologia> clases = kTopologiasDePoligono) const;
    std::vector<CPedidoDibujo> Pedidos();
    /// Has those polygons of the list become empty that the option names, and tells of the others
    /// that the source doesn't name, or has no outlines of in one of its layers. False, which was
    /// told, where the option names a wrong one.
    bool PideVacios(const CListaDibujada& lista, std::vector<CPedidoDibujo>& pedidos);
    /// The polygons of the list that the option names; none, which was told, where that can't be.
    std::optional<std::set<CString>> Vacios(const CListaDibujada& lista,
                                            const std::vector<CPedidoDibujo>& pedidos) const;
    std::vector<ClaseTopologia> SinTraer(const CString& entrada,
                                         const CCapasTraidas& traidas) const;
    /// Leaves out what was refused, and tells it, but for what `vale`.
    template <class F>
    void DejaFuera(std::vector<CRecintoEntrante>& recintos,
                   std::vector<CEntidadEntrante>& entidades, F vale);
    /// Tells whether each drawing has files of its own; where another name is one of the same files
    /// it was told.
    bool TienenFicherosPropios(const CListaDibujada& lista,
                               const std::vector<CPedidoDibujo>& pedidos) const;
    void PideDejadas(const CListaDibujada& lista, std::map<CString, CCapasTraidas>& dejadas,
                     std::vector<CPedidoDibujo>& pedidos) const;
    void AvisaDeLoSustituido(const std::vector<CPedidoDibujo>& pedidos);
    void ReservaLista(CConjuntoSalidas& salidas) const;
    bool Graba(); ///< false, which was told, where nothing is to be written
    bool Coloca(CConjuntoSalidas& salidas) const;
    // They make a drawing, and give false where something was refused, which was told.
    bool GrabaPoligono(const CString& base, bool estaba, CPedidoDibujo pedido,
                       CConjuntoSalidas& salidas);
    bool EstaLibre(const CString& base, const CPedidoDibujo& pedido) const;
    bool GrabaHojas(CConjuntoSalidas& salidas);
    bool Graba(const CString& base, const CDibujoAntes& antes, CPedidoDibujo pedido,
               CConjuntoSalidas& salidas);
    void CuentaCambios(const CString& nombre, const CCambiosDibujo& cambios);

    CString m_lista;
    CPLStringList m_opciones;
    mutable CFinDelOrigen m_fin; // looks at GDAL's complaints, whoever asks for what
    CNoticias m_noticias;
    CModoDibujo m_modo;
    double m_tolerancia = 0; // of arcs, in metres
    bool m_sustituye = false;
    bool m_simula = false;
    std::optional<bool> m_hayLista; // a list is there, and counts
    bool m_rechazado = false;
    std::optional<bool> m_escrito; // once it was ended
    CCapasTraidas m_traidas;
    CSoloLeidos m_leidos;
    CComoEstaban m_comoEstaban;
    CString m_hojas; // name of the sheets' drawing, where something of it comes
    std::vector<CRecintoEntrante> m_recintos;
    std::vector<CEntidadEntrante> m_entidades;
};
