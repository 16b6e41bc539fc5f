#include "vexa_libs/ring_index.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <tuple>

namespace vexageo {
namespace {

constexpr std::size_t kPorNodo = 16;

} // namespace

bool CIndiceAnillos::CCaja::Abarca(int x, int y) const
{
    // Nobody can guess which side decides, so all are looked at.
    return (static_cast<int>(minX <= x) & static_cast<int>(x <= maxX) &
            static_cast<int>(minY <= y) & static_cast<int>(y <= maxY)) != 0;
}

void CIndiceAnillos::CCaja::Junta(const CCaja& otra)
{
    minX = std::min(minX, otra.minX);
    minY = std::min(minY, otra.minY);
    maxX = std::max(maxX, otra.maxX);
    maxY = std::max(maxY, otra.maxY);
    std::tie(preferencia, indice) =
        std::min(std::tuple(preferencia, indice), std::tuple(otra.preferencia, otra.indice));
}

bool CIndiceAnillos::CPendiente::operator>(const CPendiente& otro) const
{
    return std::tie(preferencia, indice, nivel) >
           std::tie(otro.preferencia, otro.indice, otro.nivel);
}

void CIndiceAnillos::Añade(const std::vector<CPunto<int>>& anillo, double preferencia, int indice)
{
    if (anillo.empty())
        return;
    const CPunto<int>& p = anillo.front();
    CCaja caja{p.X, p.Y, p.X, p.Y, preferencia, indice, static_cast<int>(m_consultas.size())};
    for (const CPunto<int>& punto : anillo) {
        caja.minX = std::min(caja.minX, punto.X);
        caja.minY = std::min(caja.minY, punto.Y);
        caja.maxX = std::max(caja.maxX, punto.X);
        caja.maxY = std::max(caja.maxY, punto.Y);
    }
    m_niveles.resize(1);
    m_niveles.front().push_back(caja);
    m_consultas.emplace_back(anillo);
}

/// Puts rings that lie near one another side by side: strips from left to right, each from below.
void CIndiceAnillos::OrdenaPorSitio(std::vector<CCaja>& cajas)
{
    const auto centroX = [](const CCaja& c) { return std::int64_t{c.minX} + c.maxX; };
    const auto centroY = [](const CCaja& c) { return std::int64_t{c.minY} + c.maxY; };
    std::sort(cajas.begin(), cajas.end(),
              [&](const CCaja& a, const CCaja& b) { return centroX(a) < centroX(b); });
    const auto n = static_cast<double>(cajas.size());
    const auto porTira = static_cast<std::size_t>(std::ceil(std::sqrt(n * kPorNodo)));
    for (std::size_t i = 0; i < cajas.size(); i += porTira) {
        const auto desde = cajas.begin() + static_cast<std::ptrdiff_t>(i);
        const auto hasta =
            cajas.begin() + static_cast<std::ptrdiff_t>(std::min(i + porTira, cajas.size()));
        std::sort(desde, hasta,
                  [&](const CCaja& a, const CCaja& b) { return centroY(a) < centroY(b); });
    }
}

void CIndiceAnillos::Construye() const
{
    OrdenaPorSitio(m_niveles.front());
    do {
        const std::vector<CCaja>& debajo = m_niveles.back();
        std::vector<CCaja> nivel;
        nivel.reserve((debajo.size() - 1) / kPorNodo + 1);
        for (std::size_t i = 0; i < debajo.size(); ++i) {
            if (i % kPorNodo == 0)
                nivel.push_back(debajo[i]);
            else
                nivel.back().Junta(debajo[i]);
        }
        m_niveles.push_back(std::move(nivel));
    } while (m_niveles.back().size() > 1);
}

int CIndiceAnillos::Busca(const CPunto<int>& punto,
                          const std::function<bool(int, Lugar)>& acepta) const
{
    if (m_consultas.empty())
        return -1;
    if (m_niveles.size() == 1)
        Construye();
    // What is worth a look, best first: a node stands for the best of what lies below it.
    m_pendientes.clear();
    const auto mira = [&, x = punto.X, y = punto.Y](std::size_t nivel, std::size_t desde) {
        const std::vector<CCaja>& cajas = m_niveles[nivel];
        const std::size_t hasta = std::min(desde + kPorNodo, cajas.size());
        for (std::size_t i = desde; i < hasta; ++i) {
            const CCaja& caja = cajas[i];
            if (!caja.Abarca(x, y))
                continue;
            m_pendientes.push_back({caja.preferencia, caja.indice, static_cast<int>(nivel), i});
            std::push_heap(m_pendientes.begin(), m_pendientes.end(), std::greater<>());
        }
    };
    mira(m_niveles.size() - 1, 0);
    while (!m_pendientes.empty()) {
        std::pop_heap(m_pendientes.begin(), m_pendientes.end(), std::greater<>());
        const CPendiente mejor = m_pendientes.back();
        m_pendientes.pop_back();
        const auto nivel = static_cast<std::size_t>(mejor.nivel);
        if (nivel == 0) {
            const CCaja& anillo = m_niveles.front()[mejor.posicion];
            const CAnilloConsultado& consulta =
                m_consultas[static_cast<std::size_t>(anillo.consulta)];
            if (acepta(anillo.indice, consulta.Situa(punto)))
                return anillo.indice;
            continue;
        }
        mira(nivel - 1, mejor.posicion * kPorNodo);
    }
    return -1;
}

} // namespace vexageo
