#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "cadastre/index.h"

namespace informe {

/// The parcels that the lines of an input leave, by their numbers, and their links to holders: what
/// a balance asks of them, in a tenth of the room that their records take.
class CParcelasAsentadas {
public:
    /// Two numbers that something is known by: a polygon's and a parcel's, or the place of a parcel
    /// and a holder's number.
    struct CNumeros {
        int primero;
        int segundo;

        friend auto operator<=>(const CNumeros&, const CNumeros&) = default;
        friend std::uint32_t HashDe(const CNumeros& n)
        {
            return ::HashDe(static_cast<std::uint32_t>(n.primero),
                            static_cast<std::uint32_t>(n.segundo));
        }
    };
    /// What becomes of a link.
    enum class Vinculo : std::uint8_t { Primero, Otro, YaEstaba };

    /// Makes room for so many.
    void Reserva(std::size_t cuantas);
    /// False where one with those numbers is there, or a number is below 1.
    bool Inserta(CNumeros numeros);
    /// Its place; kNoEncontrado where there is none.
    int Busca(CNumeros numeros) const;
    /// Links the parcel at a place to a holder.
    Vinculo Vincula(int parcela, int titular);

private:
    std::vector<CNumeros> m_parcelas;
    std::vector<int> m_mayorTitular; // of each parcel's links, below 0 for none
    std::vector<CNumeros> m_vinculos;
    CIndice<Gana::Primero> m_porNumeros;
    CIndice<Gana::Primero> m_porVinculo;
    mutable std::size_t m_hallada = 0; // the last one that was asked for
    bool m_ascienden = true;           // each one's numbers are above those before it
};

} // namespace informe
