#include "vexa_libs/ring_index.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>

namespace vexageo {
namespace {

constexpr auto kMejorPrimero = [](const auto& una, const auto& otra) { return otra.via < una.via; };

// Half of a sum of coordinates fits where the sum doesn't, and the order stays.
int Mitad(std::int64_t suma)
{
    return static_cast<int>(suma >> 1);
}

} // namespace

CIndiceAnillos::CMedidas CIndiceAnillos::Mide(const CPunto<int>& punto)
{
    return {punto.X, punto.Y, Mitad(std::int64_t{punto.X} + punto.Y),
            Mitad(std::int64_t{punto.X} - punto.Y)};
}

bool CIndiceAnillos::CVia::operator<(const CVia& otra) const
{
    return preferencia < otra.preferencia ||
           (preferencia == otra.preferencia && indice < otra.indice);
}

void CIndiceAnillos::CCaja::Junta(const CCaja& otra)
{
    for (std::size_t k = 0; k < minimo.size(); ++k) {
        minimo[k] = std::min(minimo[k], otra.minimo[k]);
        maximo[k] = std::max(maximo[k], otra.maximo[k]);
    }
    via = std::min(via, otra.via);
}

/// Without a box: none holds a point.
CIndiceAnillos::CNodo::CNodo() : vias()
{
    for (std::size_t k = 0; k < kMedidas; ++k) {
        minimo[k].fill(std::numeric_limits<int>::max());
        maximo[k].fill(std::numeric_limits<int>::min());
    }
}

void CIndiceAnillos::CNodo::Pon(std::size_t i, const CCaja& caja)
{
    for (std::size_t k = 0; k < kMedidas; ++k) {
        minimo[k][i] = caja.minimo[k];
        maximo[k][i] = caja.maximo[k];
    }
    vias[i] = caja.via;
}

void CIndiceAnillos::Añade(const std::vector<CPunto<int>>& anillo, double preferencia, int indice)
{
    if (anillo.empty())
        return;
    m_niveles.clear();
    m_anillos.push_back({CAnilloConsultado(anillo), preferencia, indice});
}

CIndiceAnillos::CCaja CIndiceAnillos::Encierra(unsigned anillo) const
{
    const CAnillo& a = m_anillos[anillo];
    const CMedidas primero = Mide(a.consulta.Anillo().front());
    CCaja caja{primero, primero, {a.preferencia, a.indice, anillo}};
    for (const CPunto<int>& punto : a.consulta.Anillo()) {
        const CMedidas medidas = Mide(punto);
        for (std::size_t k = 0; k < medidas.size(); ++k) {
            caja.minimo[k] = std::min(caja.minimo[k], medidas[k]);
            caja.maximo[k] = std::max(caja.maximo[k], medidas[k]);
        }
    }
    return caja;
}

/// The rings so that those near one another stand side by side: strips from left to right, each
/// from below, and where rings have the same centre the best first.
std::vector<unsigned> CIndiceAnillos::PorSitio() const
{
    struct CSitio {
        int x, y;
        CVia via;
    };
    std::vector<CSitio> sitios;
    sitios.reserve(m_anillos.size());
    for (unsigned i = 0; i < m_anillos.size(); ++i) {
        const CCaja caja = Encierra(i);
        sitios.push_back({Mitad(std::int64_t{caja.minimo[0]} + caja.maximo[0]),
                          Mitad(std::int64_t{caja.minimo[1]} + caja.maximo[1]), caja.via});
    }
    const auto porY = [](const CSitio& a, const CSitio& b) {
        return a.y < b.y || (a.y == b.y && a.via < b.via);
    };
    std::sort(sitios.begin(), sitios.end(), [&](const CSitio& a, const CSitio& b) {
        return a.x < b.x || (a.x == b.x && porY(a, b));
    });
    const auto n = static_cast<double>(sitios.size());
    const auto porTira = static_cast<std::size_t>(std::ceil(std::sqrt(n * kPorNodo)));
    for (std::size_t i = 0; i < sitios.size(); i += porTira) {
        const auto desde = sitios.begin() + static_cast<std::ptrdiff_t>(i);
        const auto hasta =
            sitios.begin() + static_cast<std::ptrdiff_t>(std::min(i + porTira, sitios.size()));
        std::sort(desde, hasta, porY);
    }
    std::vector<unsigned> orden;
    orden.reserve(sitios.size());
    for (const CSitio& sitio : sitios)
        orden.push_back(sitio.via.posicion);
    return orden;
}

void CIndiceAnillos::Construye() const
{
    const auto nodos = [](std::size_t debajo) { return (debajo - 1) / kPorNodo + 1; };
    const std::vector<unsigned> orden = PorSitio();
    std::vector<CNodo> nivel(nodos(orden.size()));
    std::vector<CCaja> cajas(nivel.size()); // of the nodes
    const auto pon = [&](std::size_t i, const CCaja& caja) {
        CCaja& suma = cajas[i / kPorNodo];
        nivel[i / kPorNodo].Pon(i % kPorNodo, caja);
        if (i % kPorNodo == 0)
            suma = caja;
        else
            suma.Junta(caja);
    };
    for (std::size_t i = 0; i < orden.size(); ++i)
        pon(i, Encierra(orden[i]));
    while (nivel.size() > 1) {
        m_niveles.push_back(std::move(nivel));
        nivel = std::vector<CNodo>(nodos(cajas.size()));
        const std::size_t cuantas = cajas.size();
        for (std::size_t i = 0; i < cuantas; ++i) {
            CCaja caja = cajas[i];
            caja.via.posicion = static_cast<unsigned>(i);
            pon(i, caja);
        }
        cajas.resize(nivel.size());
    }
    m_niveles.push_back(std::move(nivel));
}

/// Notes which boxes of a node hold the point.
void CIndiceAnillos::Mira(std::size_t nivel, std::size_t posicion, const CMedidas& punto) const
{
    const CNodo& nodo = m_niveles[nivel][posicion];
    CNodo::CFila fuera;
    const auto falla = [&](std::size_t k, std::size_t i) {
        return static_cast<int>(punto[k] < nodo.minimo[k][i]) |
               static_cast<int>(nodo.maximo[k][i] < punto[k]);
    };
    for (std::size_t i = 0; i < kPorNodo; ++i)
        fuera[i] = falla(0, i) | falla(1, i) | falla(2, i) | falla(3, i);
    for (std::size_t i = 0; i < kPorNodo; ++i) {
        if (fuera[i] != 0)
            continue;
        m_pendientes.push_back({nodo.vias[i], nivel});
        std::push_heap(m_pendientes.begin(), m_pendientes.end(), kMejorPrimero);
    }
}

int CIndiceAnillos::Busca(const CPunto<int>& punto,
                          const std::function<bool(int, Lugar)>& acepta) const
{
    if (m_anillos.empty())
        return -1;
    if (m_niveles.empty())
        Construye();
    // What is worth a look, best first: a node stands for the best of what lies below it.
    m_pendientes.clear();
    const CMedidas medidas = Mide(punto);
    Mira(m_niveles.size() - 1, 0, medidas);
    while (!m_pendientes.empty()) {
        std::pop_heap(m_pendientes.begin(), m_pendientes.end(), kMejorPrimero);
        const auto [via, nivel] = m_pendientes.back();
        m_pendientes.pop_back();
        if (nivel > 0)
            Mira(nivel - 1, via.posicion, medidas);
        else if (acepta(via.indice, m_anillos[via.posicion].consulta.Situa(punto)))
            return via.indice;
    }
    return -1;
}

} // namespace vexageo
