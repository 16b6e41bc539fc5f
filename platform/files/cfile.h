#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/cstring.h"
#include "platform/files/cfile_exception.h"
#include "platform/files/file_reader.h"
#include "platform/files/file_writer.h"
#include "platform/types.h"

class CConjuntoSalidas;
class CNombresEnDisco;

/// A file of bytes, read or written through a buffer of its own.
///
/// A file opened with `modeCreate | modeWrite` replaces its target when `Close` succeeds, and only
/// then (see CReemplazo): an object that is destroyed without it leaves the target as it was.
class CFile {
public:
    enum OpenFlags : UINT {
        modeRead = 0,
        modeWrite = 0x1,
        modeCreate = 0x1000,
        /// Of this layer: the file is written in its place, line after line; what can't be written
        /// leaves a mark and is told by `Fallo`. For logs, which must tell what they can even when
        /// the run dies.
        modeInPlace = 0x10000,
        /// Of this layer: files of the drawing system come from a system that doesn't tell capitals
        /// from small letters in names.
        anyCase = 0x20000,
        /// Of this layer: the file is read to and fro, so it is taken into memory as a whole when
        /// it is opened, unless it is longer than any that does some good.
        modeWhole = 0x40000
    };

    CFile() : CFile(CLectorFichero::Fin::EsDato) {}
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    virtual ~CFile() = default;

    /// Opens for reading, or with `modeCreate | modeWrite` for writing. What the object had open
    /// before is let go of, unwritten bytes included. A folder is no file. A file to be read with
    /// `anyCase` may have a name that differs from this one in the case of its letters, if there is
    /// just one such file.
    /// \param fallo     takes the reason of a false; null for nobody who asks
    /// \param conjunto  the outputs of a run, with which this one takes its place when they are
    ///                  confirmed; without it `Close` puts it there
    /// \return false, with nothing changed on disk, for the usual reasons (see
    ///         CFileException::EsCorriente): no such file, no permission
    /// Raises CFileException for all other reasons: another program is writing the file, or the
    /// disk or the system is at fault. With `modeWhole` also where the file can't be read.
    bool Open(const CString& nombre, UINT modo, CFileException* fallo = nullptr,
              CConjuntoSalidas* conjunto = nullptr);
    /// The same for reading with `anyCase`, for one who asks for many files of a folder.
    bool Open(const CString& nombre, UINT modo, CFileException* fallo, CNombresEnDisco& nombres);

    /// Ends the work with the file. After writing it raises CFileException, with the target as it
    /// was, if something couldn't be written. A file that is written in its place tells that by
    /// `Fallo` instead. An output that belongs to a set waits there until the set is confirmed.
    void Close();

    /// The name by which the file was opened to be read.
    const CString& GetFilePath() const { return m_lector.Nombre(); }

    /// Reads up to `n` bytes; gives how many there were before the end of the file. Raises
    /// CFileException where a read fails, and where the file ends before the length that it had
    /// when it was opened. So do all operations of this class and the next that read.
    UINT Read(void* bytes, UINT n);

    /// The next `n` bytes, fewer only at the end of the file. They stand in the file's own buffer
    /// and are valid until the next call. The position moves behind them.
    std::string_view Tramo(std::size_t n);

    /// Goes to a position, in bytes from the start of a file that is read. One past its end is no
    /// fault: there is nothing to be read there. Raises CFileException for a file without positions
    /// (a pipe), unless the position is still in the buffer.
    void Seek(std::uint64_t posicion) { m_lector.Seek(posicion); }

    // All that write go through the buffer, so a write that fails may show later. They raise
    // CFileException, and the output is thrown away then; a file that is written in its place
    // raises nothing and tells by `Fallo`.

    /// Writes the bytes.
    void Write(const void* bytes, UINT n)
    {
        m_escritor.Escribe({static_cast<const char*>(bytes), n});
    }

    /// Hands what was written so far to the system; it isn't brought to the disk.
    void Flush();

    /// Length in bytes that a file open for reading had when it was opened; 0 for a pipe, a device
    /// and a file that is written.
    std::uint64_t GetLength() const { return m_lector.Longitud(); }

    /// Number of bytes of the file in front of the next one to be read or written.
    std::uint64_t GetPosition() const
    {
        return m_escritor.Abierto() ? m_escritor.Posicion() : m_lector.Posicion();
    }

    /// The whole path of a name, from the root, without "." and ".."; the name itself where the
    /// system doesn't tell.
    static CString RutaCompleta(const CString& nombre);

    /// The name of the file that `Open` finds by this one with `anyCase`; the name itself where
    /// there is none. Raises CFileException where the folder can't be looked at.
    static CString EnDisco(const CString& nombre, CNombresEnDisco& nombres);

    /// Copies what a file holds, unless that is nothing, to `NAME.anterior` beside it, in the place
    /// of an older one. Gives that name, an empty one where nothing was copied. Raises
    /// CFileException where it can't be copied, and where another run is writing it.
    static CString GuardaAnterior(const CString& nombre);

    /// What was wrong with the first write that failed in a file that is written in its place; no
    /// error if none did. `Close` leaves it standing.
    const CFileException& Fallo() const { return m_fallo; }

    // Comparisons of names. All raise CFileException where a file can't be looked at: two files
    // that nobody can tell apart could be one.

    /// Tells whether a name leads to the same file on disk as one of the others. What isn't there
    /// is no file's.
    static bool EsAlguno(const CString& nombre, const std::vector<CString>& otros);
    /// Tells whether both names would be one file once it is written; it need not be there yet.
    /// False for what is no regular file: a device takes the bytes of all.
    static bool SeriaElMismo(const CString& uno, const CString& otro);
    /// The first of the names that would be one file with a name before it; empty where there is
    /// none. Empty names don't count.
    static CString Repetida(const std::vector<CString>& nombres);

protected:
    /// \param fin  what the class of the file has at its end
    explicit CFile(CLectorFichero::Fin fin) : m_lector(fin) {}

    CLectorFichero& Lector() { return m_lector; }
    CEscritorFichero& Escritor() { return m_escritor; }

private:
    void Suelta();
    static bool NoSeAbre(const CFileException& como, CFileException* fallo);

    CFileException m_fallo;
    CLectorFichero m_lector; // of it and the next one at most one has a file
    CEscritorFichero m_escritor;
};
