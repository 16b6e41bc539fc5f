#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "platform/cstring.h"
#include "platform/files/byte_buffer.h"
#include "platform/files/system_files.h"

/// A file that is read through a buffer. Positions and lengths are bytes. All operations that read
/// raise CFileException where a read fails, and where the file ends before the length that it had
/// when it was opened.
class CLectorFichero {
public:
    /// What stands at the very end of the file.
    enum class Fin {
        EsDato,
        MarcaAntigua ///< a last byte 0x1A is the old end mark, and is never given
    };

    explicit CLectorFichero(Fin fin) : m_fin(fin) {}

    /// Opens the file, and lets go of the one before.
    /// \param nombre  how complaints name it
    /// \param entero  takes it into memory as a whole, unless it is longer than any that does some
    ///                good
    /// \return false, with the system's reason in `error` and nothing open, where that can't be
    ///         done. A folder is no file.
    bool Abre(const CString& nombre, const std::filesystem::path& ruta, bool entero,
              sistema::Error& error);
    void Cierra() noexcept;
    const CString& Nombre() const { return m_nombre; }

    /// What stands unread in the buffer, at least `minimo` bytes of it unless the file ends before.
    /// It is valid until the next call; `Consume` moves the position.
    std::string_view Resto(std::size_t minimo)
    {
        if (m_bufer.Lleno() - m_leido < minimo && !m_final)
            Rellena(minimo);
        std::string_view resto = m_bufer.Bytes();
        resto.remove_prefix(m_leido);
        return resto;
    }
    void Consume(std::size_t bytes) { m_leido += bytes; }
    bool AlFinal() const { return m_final; } ///< nothing comes behind what `Resto` gave
    /// Goes to a position; one past the end is no fault. Raises CFileException for a file without
    /// positions (a pipe), unless the position is still in the buffer.
    void Seek(std::uint64_t posicion);

    /// Length that the file had when it was opened; 0 for a pipe, a device and where none is open.
    std::uint64_t Longitud() const { return m_longitud; }
    /// Position of the next byte to be read.
    std::uint64_t Posicion() const { return m_base + m_leido; }

private:
    void Rellena(std::size_t minimo);
    void Lee(std::size_t hasta);
    void QuitaMarca();

    Fin m_fin;
    CString m_nombre;
    sistema::CAbierto m_fichero;
    std::uint64_t m_longitud = 0;
    bool m_esRegular = false; // it has positions and a length
    CBufer m_bufer;
    std::size_t m_leido = 0;  // of its bytes, how many were consumed
    std::uint64_t m_base = 0; // position in the file of its first byte
    std::size_t m_lote = 0;   // bytes that its next filling asks for
    bool m_final = false;     // nothing more comes from the file
};
