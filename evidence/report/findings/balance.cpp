#include "evidence/report/findings/balance.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace informe {
namespace {

constexpr std::size_t kEjemplos = 8;

std::int64_t Suma(const std::vector<CPartida::CRenglon>& renglones)
{
    return std::accumulate(
        renglones.begin(), renglones.end(), std::int64_t{0},
        [](std::int64_t suma, const CPartida::CRenglon& r) { return suma + r.cuantos; });
}

} // namespace

std::int64_t CPartida::SumaEntra() const
{
    return Suma(entra);
}

std::int64_t CPartida::SumaSale() const
{
    return Suma(sale);
}

std::int64_t CPartida::SinExplicar() const
{
    return SePuedeDecir() ? std::max(std::abs(SumaEntra() - SumaSale()), faltan + sobran) : 0;
}

std::int64_t CBalance::SinExplicar() const
{
    std::int64_t suma = 0;
    for (const CPartida& partida : partidas)
        suma += partida.SinExplicar();
    return suma;
}

void CCotejo::Cierra(CPartida& partida)
{
    std::sort(m_esperados.begin(), m_esperados.end());
    std::sort(m_hallados.begin(), m_hallados.end());
    const auto anota = [&](std::int64_t& cuenta, const char* que, const CClave& clave) {
        ++cuenta;
        if (partida.ejemplos.size() < kEjemplos)
            partida.ejemplos.push_back(que + Nombra(clave));
    };
    auto esperado = m_esperados.begin();
    auto hallado = m_hallados.begin();
    while (esperado != m_esperados.end() || hallado != m_hallados.end()) {
        if (hallado == m_hallados.end() || (esperado != m_esperados.end() && *esperado < *hallado))
            anota(partida.faltan, "falta ", *esperado++);
        else if (esperado == m_esperados.end() || *hallado < *esperado)
            anota(partida.sobran, "sobra ", *hallado++);
        else
            ++esperado, ++hallado;
    }
}

} // namespace informe
