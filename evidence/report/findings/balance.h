#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "evidence/record_key.h"

// The balance of a run: what went in, and where each piece of it is now.

namespace informe {

/// What a part of the balance counts. All but the lines of the input are held against outputs.
enum class Partida : std::uint8_t {
    Lineas,
    Modulos,
    Titulares,
    Parcelas,
    Poligonos,
    Cotitulares,
    Subparcelas,
    Parajes,
    Titularidades
};

/// What one kind of record came to. Both sides are counted apart, from different files, so what one
/// of them lacks comes to light.
struct CPartida {
    struct CRenglon {
        std::string texto;
        std::int64_t cuantos;
        bool callado = false; ///< lost without a message of the run

        bool EsPerdida() const { return callado && cuantos > 0; }
    };

    explicit CPartida(Partida cual) : que(cual) {}

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
    /// Notes records that should have been written and aren't there, above 0, or that are there and
    /// come from nowhere, below it; the first few as examples.
    void Faltan(std::int64_t cuantos, const CClaveRegistro& clave);

    const char* Titulo() const;
    static std::int64_t Suma(const std::vector<CRenglon>& renglones); ///< of one of the sides
    /// How many records nothing explains; 0 too where nothing can be said.
    std::int64_t SinExplicar() const;
    bool SePuedeDecir() const { return noSePuede.empty(); }

    Partida que;
    std::vector<CRenglon> entra;
    std::vector<CRenglon> sale;
    std::int64_t faltan = 0;           ///< records that should have been written and aren't there
    std::int64_t sobran = 0;           ///< records that are there and come from nowhere
    std::vector<std::string> ejemplos; ///< of both
    std::string reparo;                ///< what is wrong with records that are all there
    std::string noSePuede;             ///< why nothing can be said
};

struct CBalance {
    std::int64_t SinExplicar() const; ///< of all parts
    bool HayPerdidas() const;         ///< something was lost without a message

    std::vector<CPartida> partidas;
    std::vector<std::string> notas; ///< what is worth a look beside the sums
    // Of a way back, what its options did with what stands on one side alone, as far as it had any.
    bool quitaNoEnGrafico = false; ///< what isn't drawn wasn't kept
    bool creaNoEnBase = false;     ///< what only the drawing knows was created
    /// What it was made of, where that is much: to free it piece by piece takes a tenth of the
    /// report's time, so whoever ends the process behind the report leaves it to that end.
    std::shared_ptr<const void> leido;
};

/// Holds records that should be there against records that are.
class CCotejo {
public:
    explicit CCotejo(const std::vector<CClaveRegistro>& esperados) : m_esperados(esperados) {}

    /// Takes the next one that is there. As a rule they come in the order that they should have,
    /// and none is kept.
    void Toma(CClaveRegistro hallado)
    {
        if (m_sobran.empty() && m_enFila < m_esperados.size() && m_esperados[m_enFila] == hallado)
            ++m_enFila;
        else
            m_sobran.push_back(std::move(hallado));
    }
    /// How many were taken.
    std::int64_t Hallados() const { return static_cast<std::int64_t>(m_enFila + m_sobran.size()); }
    /// Notes in the part what is missing and what is too much.
    void Acaba(CPartida& partida);

private:
    const std::vector<CClaveRegistro>& m_esperados;
    std::size_t m_enFila = 0;             // so many of them were there, one after the other
    std::vector<CClaveRegistro> m_sobran; // from the first one that wasn't the next
};

/// The same with all that are there at once.
void Coteja(const std::vector<CClaveRegistro>& esperados,
            const std::vector<CClaveRegistro>& hallados, CPartida& partida);

} // namespace informe
