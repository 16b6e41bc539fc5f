#pragma once

#include <map>
#include <span>

#include "evidence/drawn_polygon.h"
#include "platform/files/any_case_name.h"
#include "platform/files/system_files.h"

/// The files of drawings as they stood when they were read. What is made of them fits no others: of
/// a drawing that another program saved in the meantime, that one's edits would go, or its
/// topologies would stand beside lines that they know nothing of.
class CComoEstaban {
public:
    /// Takes note of a drawing and its topologies, which are to be read next; also of those that
    /// aren't there. Raises CFileException where one can't be looked at.
    /// \param base  path of the files without their extension
    void Apunta(const CString& base, std::span<const ClaseTopologia> clases);
    /// The first file that is another one by now, or was written since; empty for none. Raises
    /// CFileException.
    CString Cambiado() const;

private:
    void Apunta(const CString& nombre);

    CNombresEnDisco m_nombres;
    std::map<CString, sistema::CEstado> m_estados;
};
