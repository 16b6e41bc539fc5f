#include "evidence/report/findings/balance.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"

namespace informe {

std::int64_t CPartida::Suma(const std::vector<CRenglon>& renglones)
{
    return std::accumulate(renglones.begin(), renglones.end(), std::int64_t{0},
                           [](std::int64_t suma, const CRenglon& r) { return suma + r.cuantos; });
}

void CPartida::Faltan(std::int64_t cuantos, const CClaveRegistro& clave)
{
    if (cuantos == 0)
        return;
    (cuantos > 0 ? faltan : sobran) += std::abs(cuantos);
    if (ejemplos.size() < topes::kEjemplos)
        ejemplos.push_back((cuantos > 0 ? "falta " : "sobra ") + TextoSinBlancos(clave.Nombre()));
}

const char* CPartida::Titulo() const
{
    constexpr const char* kTitulos[] = {
        "Líneas de la entrada", "Módulos",     "Titulares", "Parcelas",     "Polígonos",
        "Cotitulares",          "Subparcelas", "Parajes",   "Titularidades"};
    return kTitulos[static_cast<std::size_t>(que)];
}

/// The sums may agree by chance, and records of one key may stand for those of another: the greater
/// of the two numbers is told.
std::int64_t CPartida::SinExplicar() const
{
    return SePuedeDecir() ? std::max(std::abs(Suma(entra) - Suma(sale)), faltan + sobran) : 0;
}

std::int64_t CBalance::SinExplicar() const
{
    std::int64_t suma = 0;
    for (const CPartida& partida : partidas)
        suma += partida.SinExplicar();
    return suma;
}

bool CBalance::HayPerdidas() const
{
    return std::any_of(partidas.begin(), partidas.end(), [](const CPartida& partida) {
        return std::any_of(partida.sale.begin(), partida.sale.end(),
                           [](const CPartida::CRenglon& r) { return r.EsPerdida(); });
    });
}

void CCotejo::Acaba(CPartida& partida)
{
    // Only what comes behind the first difference is sorted.
    std::vector<CClaveRegistro> quedan(m_esperados.begin() + static_cast<std::ptrdiff_t>(m_enFila),
                                       m_esperados.end());
    std::vector<CClaveRegistro> sobran = std::move(m_sobran);
    std::sort(quedan.begin(), quedan.end());
    std::sort(sobran.begin(), sobran.end());
    auto esperado = quedan.begin();
    auto hallado = sobran.begin();
    while (esperado != quedan.end() || hallado != sobran.end()) {
        if (hallado == sobran.end() || (esperado != quedan.end() && *esperado < *hallado))
            partida.Faltan(1, *esperado++);
        else if (esperado == quedan.end() || *hallado < *esperado)
            partida.Faltan(-1, *hallado++);
        else {
            ++esperado;
            ++hallado;
        }
    }
}

void Coteja(const std::vector<CClaveRegistro>& esperados,
            const std::vector<CClaveRegistro>& hallados, CPartida& partida)
{
    CCotejo cotejo(esperados);
    for (const CClaveRegistro& hallado : hallados)
        cotejo.Toma(hallado);
    cotejo.Acaba(partida);
}

} // namespace informe
