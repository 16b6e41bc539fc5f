#pragma once

#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "evidence/drawn_polygon.h"
#include "platform/files/cfile.h"
#include "vexa_libs/topological_polygon.h"

/// A drawing that is on disk, with its topologies: what a changed one is made on. Until one is read
/// it stands for none, which has no outlines and nothing else.
class CDibujoAntes {
public:
    /// An outline as it stands in its topology.
    struct CRegistro {
        vexageo::CPoligonoTopologico registro;
        std::vector<vexageo::CPoligonoTopologico> detras; ///< records of islands behind it
        CRecintoDibujado dibujado;
    };

    /// Reads the drawing and the topologies that are there. Raises CFileException where a read
    /// fails.
    /// \param base  path of the files without their extension
    /// \return false, with nothing read, where there is no drawing
    bool Lee(const CString& base, std::span<const ClaseTopologia> clases);
    bool Esta() const { return m_esta; } ///< one was read

    /// What is wrong with the drawing, or with a topology; empty for nothing. A drawing like that
    /// can't be changed without losing more.
    CString Falta() const { return m_falta; }
    CString FaltaDe(ClaseTopologia clase) const;

    const std::string& Bytes() const { return m_bytes; }
    const std::vector<CRegistro>& Registros(ClaseTopologia clase) const;
    /// All entities by their position, from 1.
    const std::map<int, vexageo::CTexto<int>>& Entidades() const { return m_entidades; }
    /// The entity that names an outline; null where none can be read.
    const vexageo::CTexto<int>* RotuloDe(const CRegistro& registro) const;
    /// Tells whether a point lies in an outline of a parcel.
    bool CaeEnParcela(const vexageo::CPunto<int>& punto, int parcela) const;
    /// Tells whether an outline is named or bounded by the entity.
    bool EsDeRecinto(int posicion) const { return m_usadas.contains(posicion); }
    /// The point with the height that the drawing has there; 0 where it has none.
    vexageo::CPunto<int> ConAltura(const vexageo::CPunto<int>& punto) const;
    /// A file's name as it is on disk; a new one's else.
    CString Nombre(const char* extension) const;

private:
    struct CTopologia {
        std::vector<CRegistro> registros;
        bool cortada = false; // no whole record stands where its reading ended
    };
    void LeeEntidades(CFile& bin);
    void LeeTopologia(CFile& bin, ClaseTopologia clase);
    void RelacionaRecintos();

    bool m_esta = false;
    CString m_base;
    CString m_falta;
    std::string m_bytes;
    std::map<ClaseTopologia, CTopologia> m_topologias;
    std::map<int, vexageo::CTexto<int>> m_entidades;
    std::map<std::pair<int, int>, int> m_alturas; // other than 0
    std::set<int> m_usadas;
};

/// Tells whether there is a file by this name, in whatever letters.
bool EstaEnDisco(const CString& nombre);
/// Tells whether a topology of a drawing is there and isn't empty.
/// \param base  path of the files without their extension
bool HayRecintos(const CString& base, ClaseTopologia clase);

/// Adds the positions of all entities that a record, or one of its islands, names.
void ApuntaPosiciones(const CDibujoAntes::CRegistro& registro, std::set<int>& posiciones);
