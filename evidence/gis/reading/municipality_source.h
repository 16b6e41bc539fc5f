#pragma once

#include <optional>
#include <vector>

#include "evidence/drawn_polygon.h"
#include "evidence/municipality_files.h"
#include "evidence/municipality_tables.h"

/// A municipality by its list file: what the layers are made of. Each part is read whole when it is
/// asked for first, and kept; a read that fails raises CFileException. Files that are missing or
/// damaged are told then.
class CMunicipioAbierto {
public:
    /// Files that don't stand where they are looked for; empty for those that do.
    struct COtrosSitios {
        CString tablas;   ///< folder of the tables; else the list's
        CString ortos;    ///< else ortos.TOP beside the list
        CString registro; ///< the log; else beside the list, named by its first line
    };

    /// Reads the list. False where the file can't be opened, and where none of its entries has a
    /// .BIN beside it: then it is hardly a list of polygons.
    bool Abre(const CString& lista, const COtrosSitios& otros);
    /// What is wrong with the places that were named: there is nothing there. Empty for nothing.
    CString FaltaEnSitios() const;

    const CListaPoligonos& Lista() const { return m_lista; }
    /// The sheets' .TOP; empty where there is none.
    CCadena Ortos() const;
    CCadena Registro() const;
    /// All files that are there: the list, drawings with their topologies, sheets, tables and log.
    std::vector<CString> Ficheros() const;

    /// What the tables say of parcels; one that isn't there says nothing.
    const CTablasLeidas& Tablas();
    const std::vector<CPoligonoDibujado>& Poligonos();
    const CTopologiaDibujada& Hojas();

private:
    CNombresTablas NombresTablas() const;
    void AvisaFaltas(const std::vector<CPoligonoDibujado>& poligonos) const;
    void AvisaFaltas(const CTopologiaDibujada& hojas) const;

    CListaPoligonos m_lista;
    CString m_ortos;
    COtrosSitios m_otros;
    std::optional<CTablasLeidas> m_tablas;
    std::optional<std::vector<CPoligonoDibujado>> m_poligonos;
    std::optional<CTopologiaDibujada> m_hojas;
};
