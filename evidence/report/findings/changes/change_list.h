#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "evidence/report/findings/changes/person_changes.h"
#include "evidence/report/reading/states/municipality_state.h"

// What differs between one state of a municipality and another one.

namespace informe {

/// What differs in a parcel that both states have.
enum class Difiere : std::uint8_t { Titular, Participacion, Superficie, Subparcelas, Paraje };
inline constexpr std::size_t kDifiere = 5;

struct CCambioParcela {
    enum class Que { Desaparecida, Nueva, Cambiada };

    void Pon(Difiere enQue) { difiere[static_cast<std::size_t>(enQue)] = true; }
    bool HayAlguno() const { return difiere != std::array<bool, kDifiere>{}; }
    bool Hay(Difiere enQue) const { return difiere[static_cast<std::size_t>(enQue)]; }
    std::int64_t Antes() const { return antes == nullptr ? 0 : antes->superficie; }
    std::int64_t Ahora() const { return ahora == nullptr ? 0 : ahora->superficie; }
    std::int64_t Diferencia() const { return Ahora() - Antes(); }

    CClaveParcela clave;
    Que que;
    const CEstadoMunicipio::CParcela* antes = nullptr; ///< null for a new one
    const CEstadoMunicipio::CParcela* ahora = nullptr; ///< null for one that is gone
    std::array<bool, kDifiere> difiere{};              ///< of one that both states have
    int reparto = -1;                                  ///< position of the one that it is part of
};

/// Parcels that came of others, as their surfaces say.
struct CReparto {
    enum class Que { Division, Agrupacion, OtroNumero };

    Que que;
    std::vector<CClaveParcela> de;
    std::vector<CClaveParcela> a;
    std::int64_t metros = 0; ///< that passed from the one side to the other
};

struct CCambios {
    /// A number of parcels, and their square metres.
    struct CSuma {
        std::int64_t parcelas = 0;
        std::int64_t metros = 0;

        void Añade(std::int64_t suyos)
        {
            ++parcelas;
            metros += suyos;
        }
    };

    bool HayAlguno() const { return !parcelas.empty() || !personas.empty(); }
    std::int64_t Cuantas(CCambioParcela::Que que) const
    {
        return std::ranges::count(parcelas, que, &CCambioParcela::que);
    }

    std::vector<CCambioParcela> parcelas; ///< those that aren't the same, in order
    std::vector<CReparto> repartos;
    std::vector<CCambioPersona> personas;
    // `antes` without those that are gone, with the new ones, with what parcels gained and without
    // what they lost, is `ahora`.
    CSuma antes;
    CSuma desaparecidas;
    CSuma nuevas;
    CSuma crecen;
    CSuma menguan;
    CSuma ahora;
    std::array<std::int64_t, kDifiere> porDifiere{}; ///< parcels
    std::int64_t iguales = 0;
    std::size_t municipios = 0;       ///< that were compared
    std::int64_t deOtroMunicipio = 0; ///< parcels of the older state that weren't looked at
    bool repartosSinBuscar = false;   ///< there were too many to look for them all
};

} // namespace informe
