#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>

#include "evidence/log_reader.h"

// The log of a run, line by line.

namespace informe {

/// A log, and how many messages of each number it has.
class CRegistroLeido {
public:
    std::int64_t Cuenta(Mensaje mensaje) const;
    std::int64_t Errores() const;
    std::int64_t Warnings() const { return Suma(Contador::Warnings); }
    std::int64_t Ajenas() const { return m_ajenas; } ///< lines that are no message

    void Añade(CAviso aviso);

    std::deque<CAviso> avisos; ///< one for each line, in order

private:
    std::int64_t Suma(Contador contador) const;

    std::map<const CMensaje*, std::int64_t> m_cuentas;
    std::int64_t m_ajenas = 0;
};

/// Goes through the lines of a log, which come numbered from 1 and without their ends. A log that
/// can't be opened or read raises CFileException.
void RecorreRegistro(const CString& nombre,
                     const std::function<void(std::uint32_t linea, const CString& texto)>& toma);

/// Reads a log. Raises CFileException as `RecorreRegistro` does.
CRegistroLeido LeeRegistro(const CString& nombre);

/// Goes through the lines of a log that was read, with their words, which it doesn't keep. Lines
/// that came to the log since then are passed over. Raises CFileException as `RecorreRegistro`
/// does.
void RecorreConAvisos(const CRegistroLeido& registro, const CString& nombre,
                      const std::function<void(const CAviso& aviso, const CString& texto)>& toma);

/// What a message says with its values left out: "Paraje … no encontrado en parcela …".
std::string Enunciado(const CMensaje& mensaje);

/// A number of a line; empty where the line has none.
std::string Numero(int numero);

/// The code of a line, "E102"; a dash where it is no message.
std::string Codigo(const CAviso& aviso);

bool EsWarning(const CMensaje& mensaje);

} // namespace informe
