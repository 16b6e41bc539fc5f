#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include <cpl_string.h>

#include "evidence/gis/writing/drawing_request.h"
#include "platform/cstring.h"
#include "platform/files/output_set.h"

/// The list of a municipality that is written: the one that is there, to which polygons may come,
/// or a new one.
class CListaDibujada {
public:
    /// Reads the list that is there. Raises CFileException.
    /// \param sustituye  it is to be a new one all the same
    CListaDibujada(const CString& nombre, bool sustituye);

    /// Settles which municipality it is. False, which was told, where nothing says it, or what the
    /// options or the source say is another one than that of the list that is there.
    /// \param opciones   of the creation
    /// \param delOrigen  first line of the list that the source was made of; null for none
    bool FijaMunicipio(const CPLStringList& opciones, const char* delOrigen);

    bool Estaba() const { return m_estaba; }
    bool Tiene(const CString& entrada) const { return m_entradas.contains(entrada); }
    const std::set<CString>& Entradas() const { return m_entradas; }
    /// The name that looks like this one, which is UTF-8; null for none.
    const CString* PorVista(const char* entrada) const;
    /// The name that differs from this one, which isn't there, by zeros in front and blanks alone,
    /// as a sheet or a table takes them away; empty for none.
    CString CasiComo(const CString& entrada) const;

    /// Gives each outline and entity the name of its polygon's files: of one that tells its number
    /// alone, the name that the list, or another of them, has for it. What contradicts itself is
    /// settled as the mode says, or told. Where a name doesn't count any longer, `dejadas` gets it
    /// with the layers of those that had it.
    /// \return false where something was told
    bool SituaEntradas(const CModoDibujo& modo, std::vector<CRecintoEntrante>& recintos,
                       std::vector<CEntidadEntrante>& entidades,
                       std::map<CString, CCapasTraidas>& dejadas) const;

    /// Writes the list with these polygons as well, if that changes it. Raises CFileException.
    void Graba(const std::vector<CString>& entradas, CConjuntoSalidas& salidas) const;

private:
    CString m_nombre;
    bool m_estaba = false;
    std::string m_bytes;
    CString m_cabecera;
    std::set<CString> m_entradas;
    std::map<std::string, CString> m_porVista; // the same by how they look to GDAL
};
