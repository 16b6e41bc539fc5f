#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "evidence/log_reader.h"

// The log of a run, line by line.

namespace informe {

/// What stands for the standard input or output among names of files.
inline constexpr const char* kEstandar = "-";

/// A log, and how many messages of each number it has. Its words stay where they are: they are
/// gone for once more by whoever wants them.
class CRegistroLeido {
public:
    using CTomaLinea = std::function<void(std::uint32_t linea, const CString& texto)>;

    CRegistroLeido() = default; ///< an empty one
    /// Reads a log; the standard input, which is kept, by the name `kEstandar`. Raises
    /// CFileException where one can't be opened or read.
    explicit CRegistroLeido(const CString& nombre);

    std::int64_t Cuenta(Mensaje mensaje) const { return Cuenta(&DameMensaje(mensaje)); }
    std::int64_t Errores() const;
    std::int64_t Warnings() const { return Suma(Contador::Warnings); }
    std::int64_t Ajenas() const { return Cuenta(nullptr); } ///< lines that are no message

    void Añade(CAviso aviso);
    /// Goes through the lines, which come numbered from 1 and without their ends. Raises
    /// CFileException where they can't be read once more.
    void Recorre(const CTomaLinea& toma) const;
    /// The same with what was read of each. Lines that came to the log since then are passed over.
    void RecorreConAvisos(
        const std::function<void(const CAviso& aviso, const CString& texto)>& toma) const;
    const CString& Nombre() const { return m_nombre; } ///< of its file
    /// What came by the standard input; nothing of a file.
    const std::optional<std::string>& Recibido() const { return m_recibido; }

    std::deque<CAviso> avisos; ///< one for each line, in order

private:
    std::int64_t Cuenta(const CMensaje* mensaje) const;
    std::int64_t Suma(Contador contador) const;

    CString m_nombre;
    std::optional<std::string> m_recibido;
    std::map<const CMensaje*, std::int64_t> m_cuentas; // null for lines that are no message
};

/// What a message says with its values left out: "Paraje … no encontrado en parcela …".
std::string Enunciado(const CMensaje& mensaje);

/// A number of a line; empty where the line has none.
std::string Numero(int numero);

/// The code of a line, "E102"; a dash where it is no message.
std::string Codigo(const CAviso& aviso);

bool EsWarning(const CMensaje& mensaje);

} // namespace informe
