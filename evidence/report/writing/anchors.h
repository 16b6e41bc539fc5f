#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "evidence/report/findings/shown_lines.h"

namespace informe {

/// The places of a page that its links lead to, by the names that they have there. A link is made
/// only to a place that is on the page.
class CAnclas {
public:
    /// \param lineas  those that the page shows; must outlive this object
    CAnclas(const CRegistroLeido& registro, const CLineasMostradas& lineas)
        : m_registro(registro), m_lineas(lineas)
    {
    }

    /// The row of a line of the log; where a message lies on a map; a parcel's outline on one.
    static std::string DeLinea(const CAviso& aviso) { return "m" + std::to_string(aviso.linea); }
    static std::string DeSitio(const CAviso& aviso) { return "s" + std::to_string(aviso.linea); }
    static std::string DeParcela(int polig, int parcela)
    {
        return "p" + std::to_string(polig) + "-" + std::to_string(parcela);
    }

    /// Notes a place that a map has. False where it is there already, and is to have no name.
    bool Pon(const std::string& ancla) { return m_puestas.insert(ancla).second; }

    // Where a link leads, "#m12"; empty where the page doesn't have the place.
    std::string ALinea(std::uint32_t posicion) const
    {
        return m_lineas.Contiene(posicion) ? A(DeLinea(m_registro.avisos[posicion]))
                                           : std::string();
    }
    std::string AParcela(int polig, int parcela) const { return Si(DeParcela(polig, parcela)); }
    /// The map that shows where a message lies.
    std::string ALugar(const CAviso& aviso) const
    {
        const std::string sitio = Si(DeSitio(aviso));
        return sitio.empty() ? AParcela(aviso.polig, aviso.parcela) : sitio;
    }
    static std::string A(const std::string& ancla) { return "#" + ancla; }

private:
    std::string Si(const std::string& ancla) const
    {
        return m_puestas.contains(ancla) ? A(ancla) : std::string();
    }

    const CRegistroLeido& m_registro;
    const CLineasMostradas& m_lineas;
    std::set<std::string> m_puestas; // by the maps
};

} // namespace informe
