#include "vexa_libs/ring_index.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <queue>
#include <tuple>

namespace vexageo {
namespace {

constexpr std::size_t kPorNodo = 8;
constexpr std::size_t kEsAnillo = static_cast<std::size_t>(-1); // a level below the leaves' nodes

bool Prefiere(const CIndiceAnillos::CAnillo& a, const CIndiceAnillos::CAnillo& b)
{
    return std::tie(a.preferencia, a.indice) < std::tie(b.preferencia, b.indice);
}

bool Abarca(const CIndiceAnillos::CAnillo& caja, const CPunto<int>& punto)
{
    return caja.minX <= punto.X && punto.X <= caja.maxX && caja.minY <= punto.Y &&
           punto.Y <= caja.maxY;
}

CIndiceAnillos::CAnillo Junta(const CIndiceAnillos::CAnillo& a, const CIndiceAnillos::CAnillo& b)
{
    CIndiceAnillos::CAnillo suma = Prefiere(a, b) ? a : b;
    suma.minX = std::min(a.minX, b.minX);
    suma.minY = std::min(a.minY, b.minY);
    suma.maxX = std::max(a.maxX, b.maxX);
    suma.maxY = std::max(a.maxY, b.maxY);
    return suma;
}

/// Puts rings that lie near one another side by side: strips from left to right, each from below.
void OrdenaPorSitio(std::vector<CIndiceAnillos::CAnillo>& anillos)
{
    const auto centroX = [](const auto& a) { return std::int64_t{a.minX} + a.maxX; };
    const auto centroY = [](const auto& a) { return std::int64_t{a.minY} + a.maxY; };
    std::sort(anillos.begin(), anillos.end(),
              [&](const auto& a, const auto& b) { return centroX(a) < centroX(b); });
    const auto n = static_cast<double>(anillos.size());
    const auto porTira = static_cast<std::size_t>(std::ceil(std::sqrt(n * kPorNodo)));
    for (std::size_t i = 0; i < anillos.size(); i += porTira) {
        const auto desde = anillos.begin() + static_cast<std::ptrdiff_t>(i);
        const auto hasta =
            anillos.begin() + static_cast<std::ptrdiff_t>(std::min(i + porTira, anillos.size()));
        std::sort(desde, hasta,
                  [&](const auto& a, const auto& b) { return centroY(a) < centroY(b); });
    }
}

} // namespace

void CIndiceAnillos::Añade(const std::vector<CPunto<int>>& anillo, double preferencia, int indice)
{
    if (anillo.empty())
        return;
    CMaximas<int> maximas;
    for (const CPunto<int>& punto : anillo)
        maximas.Nuevo(punto);
    m_anillos.push_back({maximas.Minimo.X, maximas.Minimo.Y, maximas.Maximo.X, maximas.Maximo.Y,
                         preferencia, indice, m_consultas.size()});
    m_consultas.emplace_back(anillo);
    m_listo = false;
}

void CIndiceAnillos::Construye() const
{
    OrdenaPorSitio(m_anillos);
    m_niveles.clear();
    // The level below, as extents; each turn halves it by kPorNodo.
    std::vector<CAnillo> debajo = m_anillos;
    while (debajo.size() > 1 || m_niveles.empty()) {
        std::vector<CNodo> nivel;
        for (std::size_t i = 0; i < debajo.size(); i += kPorNodo) {
            CNodo nodo{debajo[i], i, std::min(i + kPorNodo, debajo.size())};
            for (std::size_t k = i + 1; k < nodo.hasta; ++k)
                nodo.resumen = Junta(nodo.resumen, debajo[k]);
            nivel.push_back(nodo);
        }
        debajo.clear();
        for (const CNodo& nodo : nivel)
            debajo.push_back(nodo.resumen);
        m_niveles.push_back(std::move(nivel));
    }
    m_listo = true;
}

int CIndiceAnillos::Busca(const CPunto<int>& punto,
                          const std::function<bool(int, Lugar)>& acepta) const
{
    if (m_anillos.empty())
        return -1;
    if (!m_listo)
        Construye();
    // What is worth a look, best first: a node stands for the best of what lies below it.
    struct CPendiente {
        CAnillo caja;
        std::size_t nivel, posicion;
    };
    const auto despues = [](const CPendiente& a, const CPendiente& b) {
        return Prefiere(b.caja, a.caja) || (!Prefiere(a.caja, b.caja) && a.nivel < b.nivel);
    };
    std::priority_queue<CPendiente, std::vector<CPendiente>, decltype(despues)> cola(despues);
    const auto mira = [&](const CAnillo& caja, std::size_t nivel, std::size_t posicion) {
        if (Abarca(caja, punto))
            cola.push({caja, nivel, posicion});
    };
    const std::size_t raiz = m_niveles.size() - 1;
    mira(m_niveles[raiz].front().resumen, raiz, 0);
    while (!cola.empty()) {
        const CPendiente mejor = cola.top();
        cola.pop();
        if (mejor.nivel == kEsAnillo) {
            if (acepta(mejor.caja.indice, m_consultas[mejor.caja.consulta].Situa(punto)))
                return mejor.caja.indice;
            continue;
        }
        const CNodo& nodo = m_niveles[mejor.nivel][mejor.posicion];
        for (std::size_t i = nodo.desde; i < nodo.hasta; ++i) {
            if (mejor.nivel == 0)
                mira(m_anillos[i], kEsAnillo, i);
            else
                mira(m_niveles[mejor.nivel - 1][i].resumen, mejor.nivel - 1, i);
        }
    }
    return -1;
}

} // namespace vexageo
