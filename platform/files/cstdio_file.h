#pragma once

#include <string>
#include <string_view>

#include "platform/files/cfile.h"

/// A text file. On disk its lines end in CR LF; a plain LF is taken too, and the line end that the
/// program sees and writes is "\n". A NUL reads as a blank, and a 0x1A as the file's very last byte
/// is the old end mark and no data.
class CStdioFile : public CFile {
public:
    CStdioFile() : CFile(CLectorFichero::Fin::MarcaAntigua) {}

    /// Reads up to `n` - 1 characters of the line into the buffer, the line end among them, and
    /// closes them with a zero. A longer line comes in pieces, one a call. Gives `bufer`, null at
    /// the end of the file. `n` is 2 or more.
    char* ReadString(char* bufer, UINT n);

    /// Reads a line of any length and drops its end. False, with an empty text, at the end of the
    /// file.
    bool ReadString(CString& linea);

    /// Writes the text, bytes in code page 1252, each "\n" as CR LF. Raises CFileException.
    void WriteString(std::string_view texto);

    /// Gives room in the buffer for a line of up to `cota` characters, so that it is composed
    /// where it is written from. `AcabaLinea` is told where the line ends and adds the line end.
    /// Nothing else may be written to the file between the two. Both raise CFileException.
    char* EmpiezaLinea(std::size_t cota);
    void AcabaLinea(const char* fin);

    /// Lines that were written with something that has no room in its column.
    struct CDesbordes {
        int cuantos = 0;
        int primero = 0; ///< the first one's number in the file, from 1
    };
    /// Notes that the line that comes next, or ends next, is such a one.
    void AnotaDesborde()
    {
        if (++m_desbordes.cuantos == 1)
            m_desbordes.primero = m_lineas + 1;
    }
    const CDesbordes& Desbordes() const { return m_desbordes; }

    /// An empty text for whoever composes something before it is written here. It keeps its memory
    /// from one use to the next, so that writing a row costs no allocation. The next call, and
    /// `AcabaLinea`, empty it.
    std::string& Borrador()
    {
        m_borrador.clear();
        return m_borrador;
    }

private:
    int m_lineas = 0; // that were written
    CDesbordes m_desbordes;
    char* m_compuesta = nullptr; // the line that is being composed
    std::string m_borrador;
    std::string m_linea;
};
