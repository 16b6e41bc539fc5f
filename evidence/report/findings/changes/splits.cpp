#include "evidence/report/findings/changes/splits.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "evidence/report/reading/bounds.h"

namespace informe {
namespace {

/// A parcel that may have given surface to others, or got it from them.
struct CParte {
    CCambioParcela* parcela;
    std::int64_t metros;
    std::size_t menosPiezas; ///< it must be made of so many others
};

/// Parcels whose surfaces add up to a number.
class CBuscaSuma {
public:
    CBuscaSuma(std::vector<CParte> piezas, std::int64_t& pasos)
        : m_piezas(std::move(piezas)), m_pasos(pasos)
    {
    }

    bool Hay() const { return !m_piezas.empty() && m_pasos > 0; }
    /// Takes out those that add up to the surface of a parcel; empty for none.
    std::vector<CParte> Saca(const CParte& entera)
    {
        m_elegidas.clear();
        if (!EligeSeguidas(entera) && m_piezas.size() <= topes::kPiezasSueltas)
            EligeSueltas(entera);
        std::vector<CParte> suyas;
        for (const std::size_t i : m_elegidas)
            suyas.push_back(m_piezas[i]);
        std::reverse(m_elegidas.begin(),
                     m_elegidas.end()); // the last one first, or places would move
        for (const std::size_t i : m_elegidas)
            m_piezas.erase(m_piezas.begin() + static_cast<std::ptrdiff_t>(i));
        return suyas;
    }

private:
    /// \param falta  what is left of the surface, rounding apart
    static bool Cuadra(std::int64_t falta, std::size_t piezas, const CParte& entera)
    {
        return piezas >= entera.menosPiezas &&
               std::abs(falta) <= static_cast<std::int64_t>(piezas) + 1;
    }

    /// Whoever splits a parcel gives the parts numbers that follow one another.
    bool EligeSeguidas(const CParte& entera)
    {
        std::size_t desde = 0;
        std::int64_t suma = 0;
        for (std::size_t hasta = 1; hasta <= m_piezas.size(); ++hasta) {
            suma += m_piezas[hasta - 1].metros;
            const auto sobra = [&] {
                return suma - entera.metros > static_cast<std::int64_t>(hasta - desde) + 1;
            };
            for (; desde < hasta && sobra(); ++desde)
                suma -= m_piezas[desde].metros;
            --m_pasos;
            if (!Cuadra(entera.metros - suma, hasta - desde, entera))
                continue;
            for (; desde < hasta; ++desde)
                m_elegidas.push_back(desde);
            return true;
        }
        return false;
    }

    /// The same of a few parcels of any numbers, where no others would do as well.
    void EligeSueltas(const CParte& entera)
    {
        m_unicas.clear();
        if (BuscaUnicas(entera, entera.metros, 0))
            m_elegidas.swap(m_unicas);
    }

    /// Goes through the choices from a position on. False once a second one fits, or at the end of
    /// the steps.
    bool BuscaUnicas(const CParte& entera, std::int64_t falta, std::size_t desde)
    {
        if (!m_elegidas.empty() && m_elegidas.size() >= entera.menosPiezas &&
            std::abs(falta) <= topes::kHolguraDeSueltas) {
            if (!m_unicas.empty())
                return false;
            m_unicas = m_elegidas;
        }
        if (m_elegidas.size() == topes::kPiezasDeUna)
            return true;
        for (std::size_t i = desde; i < m_piezas.size(); ++i) {
            if (--m_pasos <= 0)
                return false;
            if (m_piezas[i].metros > falta + topes::kHolguraDeSueltas)
                continue;
            m_elegidas.push_back(i);
            const bool sigue = BuscaUnicas(entera, falta - m_piezas[i].metros, i + 1);
            m_elegidas.pop_back();
            if (!sigue)
                return false;
        }
        return true;
    }

    std::vector<CParte> m_piezas;
    std::int64_t& m_pasos;
    std::vector<std::size_t> m_elegidas;
    std::vector<std::size_t> m_unicas; ///< the choice of any numbers that fits
};

/// The changes of a polygon.
class CRepartosDePoligono {
public:
    CRepartosDePoligono(std::span<CCambioParcela> parcelas, CCambios& cambios, std::int64_t& pasos)
        : m_parcelas(parcelas), m_cambios(cambios), m_pasos(pasos)
    {
    }

    void Busca()
    {
        using Que = CCambioParcela::Que;
        BuscaOtrosNumeros();
        BuscaPiezas(CReparto::Que::Division, Que::Desaparecida, Que::Nueva);
        BuscaPiezas(CReparto::Que::Agrupacion, Que::Nueva, Que::Desaparecida);
    }

private:
    static std::int64_t Metros(const CCambioParcela& una) { return std::abs(una.Diferencia()); }

    void Anota(CReparto::Que que, CCambioParcela& entera, const std::vector<CParte>& piezas)
    {
        const int cual = static_cast<int>(m_cambios.repartos.size());
        CReparto& reparto = m_cambios.repartos.emplace_back();
        reparto.que = que;
        reparto.metros = Metros(entera);
        const bool agrupa = que == CReparto::Que::Agrupacion;
        (agrupa ? reparto.a : reparto.de).push_back(entera.clave);
        entera.reparto = cual;
        for (const CParte& pieza : piezas) {
            (agrupa ? reparto.de : reparto.a).push_back(pieza.parcela->clave);
            pieza.parcela->reparto = cual;
        }
    }

    std::vector<CParte> Sueltas(CCambioParcela::Que que)
    {
        std::vector<CParte> sueltas;
        for (CCambioParcela& una : m_parcelas)
            if (una.que == que && una.reparto < 0 && Metros(una) > 0)
                sueltas.push_back({&una, Metros(una), 1});
        return sueltas;
    }

    void BuscaOtrosNumeros()
    {
        std::vector<CParte> nuevas = Sueltas(CCambioParcela::Que::Nueva);
        for (const CParte& vieja : Sueltas(CCambioParcela::Que::Desaparecida)) {
            const auto suya = std::find_if(nuevas.begin(), nuevas.end(), [&](const CParte& nueva) {
                --m_pasos;
                return nueva.metros == vieja.metros;
            });
            if (suya == nuevas.end() || m_pasos < 0)
                continue;
            Anota(CReparto::Que::OtroNumero, *vieja.parcela, {*suya});
            nuevas.erase(suya);
        }
    }

    /// \param deEnteras  what became of a parcel that is whole on one side, and of several others
    ///                   on the other side; a parcel that stays may have lost or gained as well
    void BuscaPiezas(CReparto::Que que, CCambioParcela::Que deEnteras, CCambioParcela::Que dePiezas)
    {
        constexpr std::size_t kVarias = 2;
        CBuscaSuma piezas(Sueltas(dePiezas), m_pasos);
        if (!piezas.Hay())
            return;
        std::vector<CParte> enteras = Sueltas(deEnteras);
        for (CParte& entera : enteras)
            entera.menosPiezas = kVarias;
        const bool crecen = que == CReparto::Que::Agrupacion;
        for (CCambioParcela& una : m_parcelas)
            if (una.que == CCambioParcela::Que::Cambiada && una.reparto < 0 &&
                (una.Diferencia() > 0) == crecen && Metros(una) >= topes::kMetrosDeReparto)
                enteras.push_back({&una, Metros(una), 1});
        for (const CParte& entera : enteras) {
            if (!piezas.Hay())
                return;
            if (const std::vector<CParte> suyas = piezas.Saca(entera); !suyas.empty())
                Anota(que, *entera.parcela, suyas);
        }
    }

    std::span<CCambioParcela> m_parcelas;
    CCambios& m_cambios;
    std::int64_t& m_pasos;
};

} // namespace

void BuscaRepartos(CCambios& cambios)
{
    std::int64_t pasos = topes::kPasosDeReparto;
    const auto poligono = [](const CCambioParcela& una) {
        return std::pair(una.clave.mun, una.clave.polig);
    };
    for (auto desde = cambios.parcelas.begin(); desde != cambios.parcelas.end();) {
        const auto hasta = std::find_if(desde, cambios.parcelas.end(), [&](const auto& una) {
            return poligono(una) != poligono(*desde);
        });
        CRepartosDePoligono({desde, hasta}, cambios, pasos).Busca();
        desde = hasta;
    }
    cambios.repartosSinBuscar = pasos <= 0;
}

} // namespace informe
