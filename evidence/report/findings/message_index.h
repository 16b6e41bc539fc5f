#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "evidence/drawn_polygon.h"
#include "evidence/message_places.h"
#include "evidence/report/reading/log_messages.h"

namespace informe {

/// The messages of a log by the parcel and by the place that they speak of.
class CIndiceAvisos {
public:
    /// \param registro  which must stay where it is
    explicit CIndiceAvisos(const CRegistroLeido& registro);

    /// Positions of a parcel's messages, its subparcels' among them, in the order of the log.
    std::vector<std::uint32_t> DeParcela(int polig, int parcela) const;
    bool HayDeParcela(int polig, int parcela) const;
    /// The same of those that speak of the subparcel with the letter.
    std::vector<std::uint32_t> DeSubparcela(int polig, int parcela, const CString& letra) const;
    /// Position of the first message that names the place; none where none does.
    std::optional<std::uint32_t> EnSitio(const vexageo::CPunto<int>& sitio) const;
    const CAviso& operator[](std::size_t i) const { return m_registro.avisos[i]; }

private:
    /// A message by the two numbers that it names.
    struct CEntrada {
        std::pair<int, int> numeros;
        std::uint32_t posicion;

        friend auto operator<=>(const CEntrada&, const CEntrada&) = default;
    };
    std::span<const CEntrada> Tramo(int polig, int parcela) const;

    const CRegistroLeido& m_registro;
    std::vector<CEntrada> m_porParcela; // polygon and parcel
    std::vector<CEntrada> m_porSitio;   // x and y
};

/// Where the drawings show what a message speaks of. Polygons pass by one at a time, so that a
/// point is kept of each outline, the last one's where there are several, and only where a message
/// speaks of its parcel.
class CLugaresDeAvisos {
public:
    explicit CLugaresDeAvisos(const CIndiceAvisos& indice) : m_indice(indice) {}

    /// Takes the places of a polygon's outlines, as far as messages speak of them.
    void Toma(const CPoligonoDibujado& poligono);
    /// Hundredths of a metre; nothing where no drawing shows it.
    std::optional<vexageo::CPunto<int>> De(const CAviso& aviso) const;
    /// Of a message that names a place alone: the polygon that it stands in, and the number in
    /// front of the letter in its label, 0 for none.
    std::optional<std::pair<int, int>> DeFuera(std::uint32_t posicion) const;

private:
    const CIndiceAvisos& m_indice;
    CPorLugar<vexageo::CPunto<int>> m_lugares;
    std::map<std::uint32_t, std::pair<int, int>> m_fuera;
};

} // namespace informe
