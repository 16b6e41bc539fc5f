#pragma once

#include <exception>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/cstring.h"
#include "platform/files/system_files.h"

/// A read or a write that failed: the disk is full or damaged, a share is gone, another program has
/// the file, or it can't take its target's place.
class CFileException : public std::exception {
public:
    CFileException() = default;
    CFileException(CString fichero, const sistema::Error& causa, bool alLeer = false)
        : m_strFileName(std::move(fichero)), m_causa(causa), m_alLeer(alLeer)
    {
    }
    const char* what() const noexcept override { return m_strFileName.GetString(); }
    /// The system's reason, or ours, in Spanish.
    CString Causa() const;
    /// What a box tells of it: the file and the reason.
    CString Mensaje() const;
    /// The reason, and what else there is to say, as further lines of a box; empty for none.
    CString Detalle() const;
    /// Tells whether a file that can't be opened for this reason isn't there, or isn't for this
    /// user, or not now: the usual reasons. All others are faults of the disk or the system.
    static bool EsCorriente(const sistema::Error& error);
    /// Raises one for a failed write where there is an error.
    static void Exige(const sistema::Error& error, const CString& fichero)
    {
        if (error)
            throw CFileException(fichero, error);
    }
    /// The reason of ours for a file that ends before its length: the number of the system that no
    /// call on a file gives.
    static sistema::Error AcortadoAlLeer()
    {
        return std::make_error_code(std::errc::no_message_available);
    }
    /// Tells that there is no such file or folder, or a folder where the file was to be written:
    /// what anybody can see needs no reason.
    bool SeVe() const;

    CString m_strFileName; ///< as the program named it
    sistema::Error m_causa;
    bool m_alLeer = false;              ///< a read failed, not a write
    CString m_nota;                     ///< what else there is to say of it, empty for nothing
    std::vector<CString> m_sinDevolver; ///< outputs that couldn't be given back what they held
};
