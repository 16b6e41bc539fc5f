#include "evidence/report/findings/message_index.h"

#include <algorithm>

#include "vexa_libs/ccadena.h"

namespace informe {

CIndiceAvisos::CIndiceAvisos(const CRegistroLeido& registro) : m_registro(registro)
{
    std::uint32_t posicion = 0;
    for (const CAviso& aviso : registro.avisos) {
        if (aviso.HayParcela())
            m_porParcela.push_back({{aviso.polig, aviso.parcela}, posicion});
        else if (aviso.x != CAviso::kNada)
            m_porSitio.push_back({{aviso.x, aviso.y}, posicion});
        ++posicion;
    }
    std::ranges::sort(m_porParcela);
    std::ranges::sort(m_porSitio);
}

std::span<const CIndiceAvisos::CEntrada> CIndiceAvisos::Tramo(int polig, int parcela) const
{
    const std::pair numeros(polig, parcela);
    return {std::ranges::lower_bound(m_porParcela, numeros, {}, &CEntrada::numeros),
            std::ranges::upper_bound(m_porParcela, numeros, {}, &CEntrada::numeros)};
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
    std::vector<std::uint32_t> posiciones = DeParcela(polig, parcela);
    std::erase_if(posiciones, [&](std::uint32_t i) { return m_registro.avisos[i].letra != letra; });
    return posiciones;
}

std::optional<std::uint32_t> CIndiceAvisos::EnSitio(const vexageo::CPunto<int>& sitio) const
{
    const std::pair numeros(sitio.X, sitio.Y);
    const auto hallado = std::ranges::lower_bound(m_porSitio, numeros, {}, &CEntrada::numeros);
    return hallado != m_porSitio.end() && hallado->numeros == numeros
               ? std::optional(hallado->posicion)
               : std::nullopt;
}

void CLugaresDeAvisos::Toma(const CPoligonoDibujado& poligono)
{
    for (const CRecintoDibujado& recinto : poligono.parcelas.recintos)
        if (recinto.Valido() && m_indice.HayDeParcela(poligono.polig, recinto.parcela))
            m_lugares.DeParcela(poligono.polig, recinto.parcela) = recinto.punto;
    for (const CRecintoDibujado& recinto : poligono.subparcelas.recintos) {
        if (recinto.EsDeParcela()) {
            if (!recinto.letra.IsEmpty() && m_indice.HayDeParcela(poligono.polig, recinto.parcela))
                m_lugares.DeSubparcela(poligono.polig, recinto.parcela, recinto.letra) =
                    recinto.punto;
        } else if (const auto i =
                       recinto.Valido() ? m_indice.EnSitio(recinto.punto) : std::nullopt) {
            const bool hayNumero = recinto.rotulo.Find('-') > 0;
            m_fuera[*i] = {poligono.polig, hayNumero ? LeeEntero(recinto.rotulo) : 0};
        }
    }
}

std::optional<vexageo::CPunto<int>> CLugaresDeAvisos::De(const CAviso& aviso) const
{
    if (aviso.HaySitio())
        return vexageo::CPunto<int>(aviso.x, aviso.y);
    const auto* const suyo =
        aviso.HayParcela() ? m_lugares.Busca(aviso.polig, aviso.parcela, aviso.letra) : nullptr;
    return suyo == nullptr ? std::nullopt : std::optional(*suyo);
}

std::optional<std::pair<int, int>> CLugaresDeAvisos::DeFuera(std::uint32_t posicion) const
{
    const auto suyo = m_fuera.find(posicion);
    return suyo == m_fuera.end() ? std::nullopt : std::optional(suyo->second);
}

} // namespace informe
