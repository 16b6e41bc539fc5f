#include "cadastre/municipality.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace {

struct CNumerosParcela {
    int polig;
    int parcela;

    static CNumerosParcela De(const CParcela& parcela) { return {parcela.Polig, parcela.Parcela}; }
    friend auto operator<=>(const CNumerosParcela&, const CNumerosParcela&) = default;
    friend std::uint32_t HashDe(const CNumerosParcela& n)
    {
        return ::HashDe(static_cast<std::uint32_t>(n.polig), static_cast<std::uint32_t>(n.parcela));
    }
};

struct CClaveModulo {
    std::string_view denominacion;
    std::string_view cal;
    int inten;

    static CClaveModulo De(const CModulo& m) { return {m.Denominacion, m.Cal, m.Inten}; }
    friend bool operator==(const CClaveModulo&, const CClaveModulo&) = default;
    friend std::uint32_t HashDe(const CClaveModulo& c)
    {
        return ::HashDe(::HashDe(::HashDe(c.denominacion), ::HashDe(c.cal)), ::HashDe(c.inten));
    }
};

int NumeroParaje(const CParaje& paraje)
{
    return paraje.NumOrden;
}

} // namespace

int CMunicipio::BuscaParaje(int num) const
{
    return m_parajesPorNumero.Busca(m_parajes, NumeroParaje, num);
}

int CMunicipio::BuscaParajeNombre(const CParaje& paraje) const
{
    return m_parajesPorNombre.Busca(m_parajes, &CParaje::Nombre, paraje.Nombre);
}

int CMunicipio::InsertaParaje(const CParaje& paraje)
{
    if (const int i = BuscaParajeNombre(paraje); i >= 0)
        return i;
    m_parajes.push_back(paraje);
    return static_cast<int>(m_parajes.size()) - 1;
}

int CMunicipio::ParcelasFaltasDeTitular() const
{
    return static_cast<int>(std::ranges::count_if(m_parcelas, &CParcela::FaltaTitular));
}

int CMunicipio::BuscaModulo(const CModulo& modulo) const
{
    return m_modulosPorClave.Busca(m_modulos, CClaveModulo::De, CClaveModulo::De(modulo));
}

int CMunicipio::InsertaModulo(const CModulo& modulo)
{
    if (const int i = BuscaModulo(modulo); i >= 0)
        return i;
    m_modulos.push_back(modulo);
    return static_cast<int>(m_modulos.size()) - 1;
}

bool CMunicipio::BuscaParcela(int polig, int parcela, int& i) const
{
    const CNumerosParcela numeros{polig, parcela};
    // Files stay at a parcel or go on to the next: these two are tried before the hash.
    const auto esEsa = [&](std::size_t k) {
        return k < m_parcelas.size() && CNumerosParcela::De(m_parcelas[k]) == numeros;
    };
    if (!esEsa(m_parcelaHallada)) {
        const std::size_t siguiente = m_parcelaHallada + 1;
        const int hallada =
            esEsa(siguiente) ? static_cast<int>(siguiente)
                             : m_parcelasPorNumeros.Busca(m_parcelas, CNumerosParcela::De, numeros);
        if (hallada < 0)
            return false;
        m_parcelaHallada = static_cast<std::size_t>(hallada);
    }
    i = static_cast<int>(m_parcelaHallada);
    return true;
}

int CMunicipio::BuscaParcela(const CParcela& parcela) const
{
    int i = kNoEncontrado;
    BuscaParcela(parcela.Polig, parcela.Parcela, i);
    return i;
}

int CMunicipio::InsertaParcela(CParcela parcela)
{
    if (parcela.Polig < 1 || parcela.Parcela < 1)
        return kParcelaInvalida;
    const bool detrasDeTodas =
        m_parcelasAscienden && (m_parcelas.empty() || CNumerosParcela::De(m_parcelas.back()) <
                                                          CNumerosParcela::De(parcela));
    if (!detrasDeTodas) { // else it can't be there
        if (const int i = BuscaParcela(parcela); i >= 0)
            return i;
        m_parcelasAscienden = false;
    }
    m_parcelas.push_back(std::move(parcela));
    return static_cast<int>(m_parcelas.size()) - 1;
}
