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
    struct CNumeros {
        int polig;
        int parcela;

        friend auto operator<=>(const CNumeros&, const CNumeros&) = default;
        friend std::uint32_t HashDe(const CNumeros& n)
        {
            return ::HashDe(static_cast<std::uint32_t>(n.polig),
                            static_cast<std::uint32_t>(n.parcela));
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
    struct CVinculo {
        int parcela;
        int titular;

        friend bool operator==(const CVinculo&, const CVinculo&) = default;
        friend std::uint32_t HashDe(const CVinculo& v)
        {
            return ::HashDe(static_cast<std::uint32_t>(v.parcela),
                            static_cast<std::uint32_t>(v.titular));
        }
    };

    std::vector<CNumeros> m_parcelas;
    std::vector<int> m_mayorTitular; // of each parcel's links, below 0 for none
    std::vector<CVinculo> m_vinculos;
    CIndice<Gana::Primero> m_porNumeros;
    CIndice<Gana::Primero> m_porVinculo;
    mutable std::size_t m_hallada = 0; // the last one that was asked for
    bool m_ascienden = true;           // each one's numbers are above those before it
};

} // namespace informe
