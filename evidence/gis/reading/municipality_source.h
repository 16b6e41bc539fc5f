#pragma once

#include <optional>
#include <set>
#include <span>
#include <vector>

#include "cadastre/file_extensions.h"
#include "evidence/drawn_polygon.h"
#include "evidence/gis/geometry.h"
#include "evidence/gis/tidings.h"
#include "evidence/municipality_files.h"
#include "evidence/municipality_tables.h"
#include "platform/files/any_case_name.h"

/// A municipality by its list file: what the layers are made of. Drawings are read when they are
/// asked for, the tables once; a read that fails raises CFileException. Files that are missing or
/// damaged are told when they are looked at first.
class CMunicipioAbierto {
public:
    /// Files that don't stand where they are looked for; empty for those that do.
    struct COtrosSitios {
        CString tablas;   ///< folder of the tables; else the list's
        CString ortos;    ///< else ortos.TOP beside the list
        CString registro; ///< the log; else beside the list, named by its first line
    };

    CMunicipioAbierto() = default;
    CMunicipioAbierto(const CMunicipioAbierto&) = delete;
    CMunicipioAbierto& operator=(const CMunicipioAbierto&) = delete;
    ~CMunicipioAbierto(); ///< tells how much of what is wrong wasn't told one by one

    /// Reads the list. False where the file can't be opened, and where none of its entries has a
    /// .BIN beside it: then it is hardly a list of polygons.
    bool Abre(const CString& lista, const COtrosSitios& otros);
    /// What is wrong with the places that were named: there is nothing there. Empty for nothing.
    CString FaltaEnSitios() const;

    const CListaPoligonos& Lista() const { return m_lista; }
    CCadena Registro() const;
    /// All files that are there: the list, drawings with their topologies, sheets, tables and log.
    std::vector<CString> Ficheros() const;

    /// What the tables say of parcels; one that isn't there says nothing.
    const CTablasLeidas& Tablas();

    // The drawings, counted from 0: those of the list's entries, and behind them the sheets'.

    bool SonHojas(std::size_t dibujo) const { return dibujo == m_lista.entradas.size(); }
    std::size_t Dibujos() const { return m_lista.entradas.size() + 1; }
    /// The name of a drawing's .BIN, and those of its topologies; empty for sheets where there are
    /// none.
    CCadena Dibujo(std::size_t dibujo) const { return Fichero(dibujo, kExtensionDibujo); }
    std::vector<CCadena> Topologias(std::size_t dibujo) const;
    /// The drawing of an entry with these of its topologies; subparcels need the parcels' one.
    CPoligonoDibujado Poligono(std::size_t entrada, std::span<const ClaseTopologia> cuales);
    CTopologiaDibujada Hojas();
    /// The extents of an entry's outlines as their records say them; nothing where that can't be
    /// trusted, so that the drawing has to be asked.
    std::optional<CCajas> Extensiones(std::size_t entrada, ClaseTopologia que);
    /// Tells that a drawing isn't there, or can't be read to its end.
    void AvisaSinDibujo(std::size_t dibujo);
    void AvisaDibujoDañado(std::size_t dibujo);

private:
    void LeeUnaVezCadaEntrada();
    CCadena Fichero(std::size_t dibujo, const char* extension) const;
    void AvisaSinHojas();
    void AvisaFalta(const CString& fichero, const char* detras = "");
    void AvisaDaño(const CString& fichero, std::uint64_t dañoEn);
    bool EsNueva(const CString& fichero) { return m_dichos.insert(fichero).second; }

    CListaPoligonos m_lista;
    CHojasHalladas m_hojas;
    COtrosSitios m_otros;
    CNombresTablas m_deTablas; // the names of their files
    std::optional<CTablasLeidas> m_tablas;
    CNombresEnDisco m_nombres;
    CNoticias m_noticias;
    std::set<CString> m_dichos; // files of which something was told
};
