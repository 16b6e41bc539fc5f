#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
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
    CRegistroLeido() = default; ///< an empty one
    /// Reads a log; the standard input, which is kept, by the name `kEstandar`. Raises
    /// CFileException where one can't be opened or read.
    explicit CRegistroLeido(const CString& nombre);

    std::int64_t Cuenta(Mensaje mensaje) const { return Cuenta(&DameMensaje(mensaje)); }
    std::int64_t Errores() const;
    std::int64_t Warnings() const { return Suma(Contador::Warnings); }
    std::int64_t Ajenas() const { return Cuenta(nullptr); } ///< lines that are no message

    /// Goes through the lines, which come without their ends, with what was read of each. Lines
    /// that came to the log since then are passed over. Raises CFileException where they can't be
    /// read once more.
    void RecorreConAvisos(
        const std::function<void(const CAviso& aviso, const CString& texto)>& toma) const;
    const CString& Nombre() const { return m_nombre; } ///< of its file
    /// What came by the standard input; nothing of a file.
    const std::optional<std::string>& Recibido() const { return m_recibido; }

    std::deque<CAviso> avisos; ///< one for each line, in order

private:
    void Recorre(const std::function<void(const CString& texto)>& toma) const;
    std::int64_t Cuenta(const CMensaje* mensaje) const;
    std::int64_t Suma(Contador contador) const;

    CString m_nombre;
    std::optional<std::string> m_recibido;
    std::map<const CMensaje*, std::int64_t> m_cuentas; // null for lines that are no message
};

/// The people that a log speaks of: it calls some by their names, others by their DNI. Whoever
/// reads the holders tells of each of them, so that it is known whose DNI that is.
class CPersonas {
public:
    explicit CPersonas(const CRegistroLeido& registro)
    {
        for (const CAviso& aviso : registro.avisos)
            if (aviso.Es(kMismoDNI))
                m_buscados.insert(aviso.texto);
    }

    /// Tells it of a holder.
    void Mira(const CString& nombre, const CString& dni)
    {
        if (m_buscados.contains(dni))
            m_dniDe.emplace(nombre, dni);
    }
    /// The DNI by which the log speaks of the person, or else the name.
    const CString& Clave(const CString& nombre) const
    {
        const auto suyo = m_dniDe.find(nombre);
        return suyo == m_dniDe.end() ? nombre : suyo->second;
    }

private:
    std::set<CString> m_buscados;
    std::map<CString, CString> m_dniDe;
};

/// What a message says with its values left out: "Paraje … no encontrado en parcela …".
std::string Enunciado(const CMensaje& mensaje);

/// A number of a line; empty where the line has none.
std::string Numero(int numero);

/// The code of a line, "E102"; a dash where it is no message.
std::string Codigo(const CAviso& aviso);

bool EsWarning(const CMensaje& mensaje);

} // namespace informe
