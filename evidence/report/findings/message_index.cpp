#include "evidence/report/findings/message_index.h"

#include <algorithm>

#include "vexa_libs/ccadena.h"

namespace informe {

CIndiceAvisos::CIndiceAvisos(const CRegistroLeido& registro) : m_registro(registro)
{
    std::uint32_t posicion = 0;
    for (const CAviso& aviso : registro.avisos) {
        if (aviso.HayParcela())
            m_porParcela.push_back({aviso.polig, aviso.parcela, posicion});
        else if (aviso.x != CAviso::kNada)
            m_porSitio.push_back({aviso.x, aviso.y, posicion});
        ++posicion;
    }
    std::sort(m_porParcela.begin(), m_porParcela.end());
    std::sort(m_porSitio.begin(), m_porSitio.end());
}

std::span<const CIndiceAvisos::CEntrada> CIndiceAvisos::Tramo(int polig, int parcela) const
{
    const auto menor = [](const CEntrada& a, const CEntrada& b) {
        return std::pair(a.polig, a.parcela) < std::pair(b.polig, b.parcela);
    };
    const auto [desde, hasta] = std::equal_range(m_porParcela.begin(), m_porParcela.end(),
                                                 CEntrada{polig, parcela, 0}, menor);
    return {desde, hasta};
}

std::vector<std::uint32_t> CIndiceAvisos::DeParcela(int polig, int parcela) const
{
    std::vector<std::uint32_t> posiciones;
    for (const CEntrada& entrada : Tramo(polig, parcela))
        posiciones.push_back(entrada.posicion);
    return posiciones;
}

bool CIndiceAvisos::HayDeParcela(int polig, int parcela) const
{
    return !Tramo(polig, parcela).empty();
}

std::vector<std::uint32_t> CIndiceAvisos::DeSubparcela(int polig, int parcela,
                                                       const CString& letra) const
{
    std::vector<std::uint32_t> posiciones;
    for (const CEntrada& entrada : Tramo(polig, parcela))
        if (m_registro.avisos[entrada.posicion].letra == letra)
            posiciones.push_back(entrada.posicion);
    return posiciones;
}

std::int64_t CIndiceAvisos::EnSitio(int x, int y) const
{
    const auto hallado = std::lower_bound(m_porSitio.begin(), m_porSitio.end(), CEntrada{x, y, 0});
    return hallado != m_porSitio.end() && hallado->polig == x && hallado->parcela == y
               ? std::int64_t{hallado->posicion}
               : -1;
}

void CSitios::Toma(const CPoligonoDibujado& poligono)
{
    for (const CRecintoDibujado& recinto : poligono.parcelas.recintos)
        if (recinto.Valido() && m_indice.HayDeParcela(poligono.polig, recinto.parcela))
            m_parcelas[{poligono.polig, recinto.parcela}] = recinto.punto;
    for (const CRecintoDibujado& recinto : poligono.subparcelas.recintos) {
        if (!recinto.Valido())
            continue;
        if (recinto.parcela >= 0) {
            if (m_indice.HayDeParcela(poligono.polig, recinto.parcela))
                m_subparcelas[{{poligono.polig, recinto.parcela}, recinto.letra}] = recinto.punto;
        } else if (const auto i = m_indice.EnSitio(recinto.punto.X, recinto.punto.Y); i >= 0) {
            const bool hayNumero = recinto.rotulo.Find('-') > 0;
            m_fuera[static_cast<std::uint32_t>(i)] = {poligono.polig,
                                                      hayNumero ? LeeEntero(recinto.rotulo) : 0};
        }
    }
}

std::optional<vexageo::CPunto<int>> CSitios::De(const CAviso& aviso) const
{
    if (aviso.x != CAviso::kNada && aviso.y != CAviso::kNada)
        return vexageo::CPunto<int>(aviso.x, aviso.y);
    if (!aviso.HayParcela())
        return std::nullopt;
    const std::pair parcela(aviso.polig, aviso.parcela);
    if (!aviso.letra.IsEmpty())
        if (const auto suyo = m_subparcelas.find({parcela, aviso.letra});
            suyo != m_subparcelas.end())
            return suyo->second;
    const auto suya = m_parcelas.find(parcela);
    return suya == m_parcelas.end() ? std::nullopt : std::optional(suya->second);
}

std::optional<std::pair<int, int>> CSitios::DeFuera(std::uint32_t posicion) const
{
    const auto suyo = m_fuera.find(posicion);
    return suyo == m_fuera.end() ? std::nullopt : std::optional(suyo->second);
}

} // namespace informe
