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

CIndiceAnillos::CSitio CIndiceAnillos::CCaja::Sitio() const
{
    return {Mitad(std::int64_t{minimo[0]} + maximo[0]), Mitad(std::int64_t{minimo[1]} + maximo[1]),
            static_cast<unsigned>(std::int64_t{maximo[0]} - minimo[0]), via.posicion};
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
    if (m_bloques.empty() || m_bloques.back().size() == kPorBloque)
        m_bloques.emplace_back();
    m_bloques.back().push_back({CAnilloConsultado(anillo), preferencia, indice});
}

CIndiceAnillos::CCaja CIndiceAnillos::Encierra(std::size_t anillo) const
{
    const CAnillo& a = Anillo(anillo);
    const CMedidas primero = Mide(a.consulta.Anillo().front());
    CCaja caja{primero, primero, {a.preferencia, a.indice, static_cast<unsigned>(anillo)}};
    for (const CPunto<int>& punto : a.consulta.Anillo()) {
        const CMedidas medidas = Mide(punto);
        for (std::size_t k = 0; k < medidas.size(); ++k) {
            caja.minimo[k] = std::min(caja.minimo[k], medidas[k]);
            caja.maximo[k] = std::max(caja.maximo[k], medidas[k]);
        }
    }
    return caja;
}

bool CIndiceAnillos::CSitio::PorY(const CSitio& otro) const
{
    return y < otro.y || (y == otro.y && ancho < otro.ancho);
}

bool CIndiceAnillos::CSitio::PorX(const CSitio& otro) const
{
    return x < otro.x || (x == otro.x && PorY(otro));
}

/// Puts those near one another side by side: strips of whole nodes from left to right, each from
/// below, and of those with the same centre the narrowest first.
void CIndiceAnillos::Ordena(std::vector<CSitio>& sitios)
{
    std::sort(sitios.begin(), sitios.end(),
              [](const CSitio& a, const CSitio& b) { return a.PorX(b); });
    const double nodos = std::ceil(static_cast<double>(sitios.size()) / kPorNodo);
    const std::size_t porTira = static_cast<std::size_t>(std::ceil(std::sqrt(nodos))) * kPorNodo;
    for (std::size_t i = 0; i < sitios.size(); i += porTira) {
        const auto desde = sitios.begin() + static_cast<std::ptrdiff_t>(i);
        const auto hasta =
            sitios.begin() + static_cast<std::ptrdiff_t>(std::min(i + porTira, sitios.size()));
        std::sort(desde, hasta, [](const CSitio& a, const CSitio& b) { return a.PorY(b); });
    }
}

/// Makes a level of nodes for boxes, and gives the nodes' own. What `caja` gives it is asked for
/// twice: to keep the boxes of all rings would take longer.
template <class F>
std::vector<CIndiceAnillos::CCaja> CIndiceAnillos::Agrupa(std::vector<CNivel>& niveles,
                                                          std::size_t cuantas, F caja)
{
    std::vector<CSitio> sitios;
    sitios.reserve(cuantas);
    for (std::size_t i = 0; i < cuantas; ++i)
        sitios.push_back(caja(i).Sitio());
    Ordena(sitios);
    CNivel nivel((cuantas - 1) / kPorNodo + 1);
    std::vector<CCaja> encima(nivel.size());
    for (std::size_t i = 0; i < cuantas; ++i) {
        const CCaja& una = caja(sitios[i].posicion);
        CCaja& suma = encima[i / kPorNodo];
        nivel[i / kPorNodo].Pon(i % kPorNodo, una);
        if (i % kPorNodo == 0)
            suma = una;
        else
            suma.Junta(una);
    }
    for (std::size_t i = 0; i < encima.size(); ++i)
        encima[i].via.posicion = static_cast<unsigned>(i);
    niveles.push_back(std::move(nivel));
    return encima;
}

void CIndiceAnillos::Construye() const
{
    std::vector<CNivel> niveles;
    std::vector<CCaja> cajas =
        Agrupa(niveles, Anillos(), [this](std::size_t i) { return Encierra(i); });
    while (cajas.size() > 1)
        cajas = Agrupa(niveles, cajas.size(), [&](std::size_t i) { return cajas[i]; });
    m_niveles = std::move(niveles);
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
    if (Anillos() == 0)
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
        else if (acepta(via.indice, Anillo(via.posicion).consulta.Situa(punto)))
            return via.indice;
    }
    return -1;
}

} // namespace vexageo
