#include "evidence/report/reading/settled_parcels.h"

#include <algorithm>
#include <functional>

namespace informe {
namespace {

constexpr int kSinTitulares = -1;

} // namespace

void CParcelasAsentadas::Reserva(std::size_t cuantas)
{
    m_parcelas.reserve(cuantas);
    m_mayorTitular.reserve(cuantas);
    m_vinculos.reserve(cuantas);
}

bool CParcelasAsentadas::Inserta(CNumeros numeros)
{
    if (numeros.primero < 1 || numeros.segundo < 1)
        return false;
    const bool detrasDeTodas = m_ascienden && (m_parcelas.empty() || m_parcelas.back() < numeros);
    if (!detrasDeTodas && Busca(numeros) >= 0)
        return false;
    m_ascienden = detrasDeTodas;
    m_parcelas.push_back(numeros);
    m_mayorTitular.push_back(kSinTitulares);
    return true;
}

int CParcelasAsentadas::Busca(CNumeros numeros) const
{
    // Files stay at a parcel or go on to the next: these two are tried before the table.
    for (const std::size_t i : {m_hallada, m_hallada + 1})
        if (i < m_parcelas.size() && m_parcelas[i] == numeros)
            return static_cast<int>(m_hallada = i);
    const int hallada = m_porNumeros.Busca(m_parcelas, std::identity(), numeros);
    if (hallada >= 0)
        m_hallada = static_cast<std::size_t>(hallada);
    return hallada;
}

CParcelasAsentadas::Vinculo CParcelasAsentadas::Vincula(int parcela, int titular)
{
    int& mayor = m_mayorTitular[static_cast<std::size_t>(parcela)];
    const CNumeros vinculo{parcela, titular};
    // Holders mostly come one behind the other: one behind all others of the parcel is new.
    if (titular <= mayor && m_porVinculo.Busca(m_vinculos, std::identity(), vinculo) >= 0)
        return Vinculo::YaEstaba;
    const bool primero = mayor == kSinTitulares;
    m_vinculos.push_back(vinculo);
    mayor = std::max(mayor, titular);
    return primero ? Vinculo::Primero : Vinculo::Otro;
}

} // namespace informe
