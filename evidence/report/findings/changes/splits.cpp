#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <utility>

#include "evidence/report/findings/changes/changes.h"
#include "evidence/report/reading/bounds.h"

namespace informe {
namespace {

/// A parcel that may have given surface to others, or got it from them.
struct CParte {
    CCambioParcela* parcela;
    std::int64_t metros;
    std::size_t menosPiezas = 1; ///< it must be made of so many others
    std::size_t redondeos = 1;   ///< surfaces that `metros` is made of
};

/// Parcels whose surfaces add up to that of another one. What is found is taken out; an empty list
/// is nothing found.
class CBuscaSuma {
public:
    CBuscaSuma(std::vector<CParte> piezas, std::int64_t& pasos)
        : m_piezas(std::move(piezas)), m_pasos(pasos)
    {
    }

    bool Hay() const { return !m_piezas.empty() && m_pasos > 0; }

    /// Those whose numbers follow one another, as whoever splits a parcel gives them. They begin
    /// where numbers begin to follow one another, or end where they end.
    std::vector<CParte> SacaTramo(const CParte& entera) { return SacaSeguidas(entera, true); }
    /// The same from the middle of numbers that follow one another.
    std::vector<CParte> SacaDelMedio(const CParte& entera) { return SacaSeguidas(entera, false); }
    /// All that are there.
    std::vector<CParte> SacaTodas(const CParte& entera);
    /// A few of any numbers, where no others would do as well.
    std::vector<CParte> SacaSueltas(const CParte& entera);
    /// Tells whether so few of those come near the surfaces without fitting that hardly one fits by
    /// chance.
    bool SePuedeDelMedio(const std::vector<CParte>& enteras);
    bool SePuedeSueltas(const std::vector<CParte>& enteras);

private:
    using CEleccion = std::vector<std::size_t>; // places, in order

    /// Surfaces are whole square metres, each half a one off at most.
    static std::int64_t Holgura(std::size_t piezas, const CParte& entera)
    {
        return static_cast<std::int64_t>((piezas + entera.redondeos) / 2);
    }
    /// \param falta  what is left of the surface
    static bool Cuadra(std::int64_t falta, std::size_t piezas, const CParte& entera)
    {
        return piezas >= entera.menosPiezas && std::abs(falta) <= Holgura(piezas, entera);
    }
    bool SigueALaAnterior(std::size_t i) const
    {
        const auto numero = [&](std::size_t cual) { return m_piezas[cual].parcela->clave.parcela; };
        return numero(i) - numero(i - 1) <= topes::kSaltoDeNumero;
    }
    bool EmpiezaTramo(std::size_t i) const
    {
        return i == 0 || i == m_piezas.size() || !SigueALaAnterior(i);
    }
    std::vector<CParte> SacaSeguidas(const CParte& entera, bool tramo);
    std::vector<CParte> Saca(const CEleccion& elegidas);
    template <class F>
    void Recorre(const CParte& entera, std::int64_t falta, std::int64_t banda, std::size_t desde,
                 const F& toma);

    std::vector<CParte> m_piezas;
    std::int64_t& m_pasos;
    CEleccion m_elegidas; // the choice that `Recorre` is at
};

std::vector<CParte> CBuscaSuma::Saca(const CEleccion& elegidas)
{
    std::vector<CParte> suyas;
    for (const std::size_t i : elegidas)
        suyas.push_back(m_piezas[i]);
    for (std::size_t k = elegidas.size(); k-- > 0;) // the last one first, or places would move
        m_piezas.erase(m_piezas.begin() + static_cast<std::ptrdiff_t>(elegidas[k]));
    return suyas;
}

std::vector<CParte> CBuscaSuma::SacaSeguidas(const CParte& entera, bool tramo)
{
    std::size_t desde = 0;
    std::int64_t suma = 0;
    for (std::size_t i = 0; i < m_piezas.size(); ++i) {
        if (i > desde && !SigueALaAnterior(i)) {
            desde = i;
            suma = 0;
        }
        suma += m_piezas[i].metros;
        for (; desde <= i && suma - entera.metros > Holgura(i + 1 - desde, entera); ++desde)
            suma -= m_piezas[desde].metros;
        --m_pasos;
        if (!Cuadra(entera.metros - suma, i + 1 - desde, entera) ||
            (tramo && !EmpiezaTramo(desde) && !EmpiezaTramo(i + 1)))
            continue;
        CEleccion elegidas(i + 1 - desde);
        std::iota(elegidas.begin(), elegidas.end(), desde);
        return Saca(elegidas);
    }
    return {};
}

std::vector<CParte> CBuscaSuma::SacaTodas(const CParte& entera)
{
    std::int64_t falta = entera.metros;
    for (const CParte& pieza : m_piezas)
        falta -= pieza.metros;
    return Cuadra(falta, m_piezas.size(), entera) ? std::exchange(m_piezas, {})
                                                  : std::vector<CParte>();
}

/// Calls `toma` with what each choice of a few, from a place on, leaves of a surface, unless it
/// passes it by more than `banda`.
template <class F>
void CBuscaSuma::Recorre(const CParte& entera, std::int64_t falta, std::int64_t banda,
                         std::size_t desde, const F& toma)
{
    if (m_elegidas.size() >= entera.menosPiezas)
        toma(falta);
    if (m_elegidas.size() == topes::kPiezasDeUna)
        return;
    for (std::size_t i = desde; i < m_piezas.size() && m_pasos > 0; ++i) {
        --m_pasos;
        if (m_piezas[i].metros > falta + banda)
            continue;
        m_elegidas.push_back(i);
        Recorre(entera, falta - m_piezas[i].metros, banda, i + 1, toma);
        m_elegidas.pop_back();
    }
}

std::vector<CParte> CBuscaSuma::SacaSueltas(const CParte& entera)
{
    CEleccion unica;
    int veces = 0;
    const auto toma = [&](std::int64_t falta) {
        if (std::abs(falta) > topes::kHolguraDeSueltas)
            return;
        unica = m_elegidas;
        ++veces;
    };
    Recorre(entera, entera.metros, topes::kHolguraDeSueltas, 0, toma);
    return veces == 1 && m_pasos > 0 ? Saca(unica) : std::vector<CParte>();
}

/// Counts the sums that come near a surface, of which a part fits by chance.
class CAzar {
public:
    void Empieza(const CParte& entera)
    {
        m_banda = std::max(entera.metros / topes::kBandaDeCerca, topes::kBandaMenor);
    }
    std::int64_t Banda() const { return m_banda; }
    void Toma(std::int64_t falta, std::int64_t holgura)
    {
        if (std::abs(falta) > holgura && std::abs(falta) <= m_banda)
            m_esperados +=
                static_cast<double>(2 * holgura + 1) / static_cast<double>(2 * (m_banda - holgura));
    }
    bool EsPoco() const { return m_esperados <= topes::kRepartosPorAzar; }

private:
    std::int64_t m_banda = 0;
    double m_esperados = 0;
};

bool CBuscaSuma::SePuedeDelMedio(const std::vector<CParte>& enteras)
{
    CAzar azar;
    for (const CParte& entera : enteras) {
        azar.Empieza(entera);
        for (std::size_t desde = 0; desde < m_piezas.size() && azar.EsPoco() && m_pasos > 0;
             ++desde) {
            std::int64_t falta = entera.metros;
            for (std::size_t i = desde; i < m_piezas.size() && falta > -azar.Banda(); ++i) {
                if (i > desde && EmpiezaTramo(i))
                    break;
                --m_pasos;
                falta -= m_piezas[i].metros;
                if (i + 1 - desde >= entera.menosPiezas)
                    azar.Toma(falta, Holgura(i + 1 - desde, entera));
            }
        }
    }
    return azar.EsPoco();
}

bool CBuscaSuma::SePuedeSueltas(const std::vector<CParte>& enteras)
{
    if (m_piezas.size() > topes::kPiezasSueltas)
        return false;
    CAzar azar;
    const auto toma = [&](std::int64_t falta) { azar.Toma(falta, topes::kHolguraDeSueltas); };
    for (const CParte& entera : enteras) {
        azar.Empieza(entera);
        Recorre(entera, entera.metros, azar.Banda(), 0, toma);
    }
    return azar.EsPoco();
}

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
                sueltas.push_back({&una, Metros(una)});
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
        std::vector<CParte> enteras = Sueltas(deEnteras);
        for (CParte& entera : enteras)
            entera.menosPiezas = kVarias;
        const bool crecen = que == CReparto::Que::Agrupacion;
        for (CCambioParcela& una : m_parcelas)
            if (una.que == CCambioParcela::Que::Cambiada && una.reparto < 0 &&
                (una.Diferencia() > 0) == crecen && Metros(una) >= topes::kMetrosDeReparto)
                enteras.push_back({&una, Metros(una), 1, 2});
        CBuscaSuma piezas(Sueltas(dePiezas), m_pasos);
        const auto saca = [&](auto como) {
            return std::erase_if(enteras, [&](const CParte& entera) {
                const std::vector<CParte> suyas =
                    piezas.Hay() ? (piezas.*como)(entera) : std::vector<CParte>();
                if (!suyas.empty())
                    Anota(que, *entera.parcela, suyas);
                return !suyas.empty();
            });
        };
        // Where some were taken out, numbers of others begin and end.
        for (int vez = 0; vez < topes::kVecesDeReparto && saca(&CBuscaSuma::SacaTramo) > 0; ++vez)
            continue;
        if (piezas.SePuedeDelMedio(enteras))
            saca(&CBuscaSuma::SacaDelMedio);
        if (enteras.size() == 1)
            saca(&CBuscaSuma::SacaTodas);
        if (piezas.SePuedeSueltas(enteras))
            saca(&CBuscaSuma::SacaSueltas);
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
