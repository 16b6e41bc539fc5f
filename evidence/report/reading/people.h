#pragma once

#include <map>
#include <set>

#include "evidence/report/reading/log_messages.h"

namespace informe {

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

} // namespace informe
