#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

#include "evidence/drawn_polygon.h"
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
    /// Position of the message that names the place, in hundredths of a metre; below 0 for none.
    std::int64_t EnSitio(int x, int y) const;
    const CAviso& operator[](std::size_t i) const { return m_registro.avisos[i]; }

private:
    struct CEntrada {
        int polig;
        int parcela;
        std::uint32_t posicion;

        friend bool operator<(const CEntrada& a, const CEntrada& b)
        {
            return std::tie(a.polig, a.parcela, a.posicion) <
                   std::tie(b.polig, b.parcela, b.posicion);
        }
    };
    std::span<const CEntrada> Tramo(int polig, int parcela) const;

    const CRegistroLeido& m_registro;
    std::vector<CEntrada> m_porParcela;
    std::vector<CEntrada> m_porSitio; // x and y in place of the numbers
};

/// Where the drawings show what a message speaks of.
class CSitios {
public:
    explicit CSitios(const CIndiceAvisos& indice) : m_indice(indice) {}

    /// Takes the places of a polygon's outlines, as far as messages speak of them.
    void Toma(const CPoligonoDibujado& poligono);
    /// Hundredths of a metre; nothing where no drawing shows it.
    std::optional<vexageo::CPunto<int>> De(const CAviso& aviso) const;
    /// Of a message that names a place alone: the polygon that it stands in, and the number in
    /// front of the letter in its label, 0 for none.
    std::optional<std::pair<int, int>> DeFuera(std::uint32_t posicion) const;

private:
    const CIndiceAvisos& m_indice;
    std::map<std::pair<int, int>, vexageo::CPunto<int>> m_parcelas;
    std::map<std::pair<std::pair<int, int>, CString>, vexageo::CPunto<int>> m_subparcelas;
    std::map<std::uint32_t, std::pair<int, int>> m_fuera;
};

} // namespace informe
