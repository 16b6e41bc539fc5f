#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "evidence/report/reading/record_key.h"

// The balance of a run: what went in, and where each piece of it is now.

namespace informe {

/// What one kind of record came to. Both sides are counted apart, from different files, so what one
/// of them lacks comes to light.
struct CPartida {
    struct CRenglon {
        std::string texto;
        std::int64_t cuantos;
        bool callado = false; ///< lost without a message of the run
    };

    /// Adds a line to the side of what went in, or of where it is now.
    void Entra(std::string texto, std::int64_t cuantos)
    {
        entra.push_back({std::move(texto), cuantos});
    }
    void Sale(std::string texto, std::int64_t cuantos)
    {
        sale.push_back({std::move(texto), cuantos});
    }
    /// The same of records that are lost without a message of the run.
    void SalePerdido(std::string texto, std::int64_t cuantos)
    {
        sale.push_back({std::move(texto), cuantos, true});
    }
    std::int64_t SumaEntra() const;
    std::int64_t SumaSale() const;
    /// How many records nothing explains; 0 too where nothing can be said.
    std::int64_t SinExplicar() const;
    bool SePuedeDecir() const { return noSePuede.empty(); }

    std::string titulo;
    std::vector<CRenglon> entra;
    std::vector<CRenglon> sale;
    std::int64_t faltan = 0;           ///< records that should have been written and aren't there
    std::int64_t sobran = 0;           ///< records that are there and come from nowhere
    std::vector<std::string> ejemplos; ///< of both
    std::string noSePuede;             ///< why nothing can be said
};

struct CBalance {
    std::int64_t SinExplicar() const; ///< of all parts

    std::vector<CPartida> partidas;
    std::vector<std::string> notas; ///< what is worth a look beside the sums
};

/// Records that should be there against records that are.
class CCotejo {
public:
    void Espera(CClave clave) { m_esperados.push_back(std::move(clave)); }
    void Hay(CClave clave) { m_hallados.push_back(std::move(clave)); }
    /// Tells the part how many are missing and how many are too much, with examples. To be called
    /// once, when all were told.
    void Cierra(CPartida& partida);

private:
    std::vector<CClave> m_esperados;
    std::vector<CClave> m_hallados;
};

} // namespace informe
