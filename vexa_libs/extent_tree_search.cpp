#include "vexa_libs/extent_tree.h"

#include <algorithm>

namespace vexageo {

/// A look-up: of the boxes that hold the point, those of the best rings are opened first.
class CArbolCajas::CBusqueda {
public:
    CBusqueda(const CArbolCajas& arbol, const CPunto<int>& punto)
        : m_punto(punto), m_arbol(arbol), m_pendientes(arbol.m_pendientes)
    {
        m_pendientes.clear();
        Abre(arbol.m_nodos.back());
    }

    /// Gives the next ring whose extent holds the point, null if there is none.
    const CVia* Siguiente()
    {
        while (!m_actual.cajas.Vacia() || Saca()) {
            const CNodo& nodo = *m_actual.nodo;
            const CVia& via = *m_actual.mejor;
            const auto cual = static_cast<std::size_t>(&via - nodo.vias.data());
            m_actual.cajas.Quita(cual);
            if (!m_actual.cajas.Vacia()) {
                Elige();
                Espera();
            }
            if (!Tiene(nodo, cual))
                continue;
            if (via.posicion < m_arbol.m_anillos)
                return &via;
            Abre(m_arbol.m_nodos[via.posicion - m_arbol.m_anillos]);
            if (!m_actual.cajas.Vacia() && !m_pendientes.empty() &&
                *m_pendientes.front().mejor < *m_actual.mejor)
                Espera();
        }
        return nullptr;
    }

private:
    static constexpr auto kPorVia = [](const CVia* una, const CVia* otra) { return *una < *otra; };
    static constexpr auto kMejorPrimero = [](const CPendiente& uno, const CPendiente& otro) {
        return *otro.mejor < *uno.mejor;
    };

    /// Goes on with the boxes of a node that may hold the point, upright and turned.
    void Abre(const CNodo& nodo)
    {
        m_actual.nodo = &nodo;
        m_actual.cajas = nodo.cajas.Cerca({m_punto.X, m_punto.Y});
        if (nodo.giro)
            m_actual.cajas.Corta(nodo.giro->cajas.Cerca(nodo.giro->marco.Mide(m_punto)));
        if (!m_actual.cajas.Vacia())
            Elige();
    }
    /// Sees which of the boxes at hand is the best.
    void Elige()
    {
        const CNodo& nodo = *m_actual.nodo;
        m_actual.mejor = &nodo.vias[m_actual.cajas.Primera()];
        if (nodo.giro)
            return; // they stand in that order
        for (auto otras = m_actual.cajas; !otras.Vacia(); otras.Quita(otras.Primera()))
            m_actual.mejor = std::min(m_actual.mejor, &nodo.vias[otras.Primera()], kPorVia);
    }
    bool Tiene(const CNodo& nodo, std::size_t cual) const
    {
        return nodo.cajas.Tiene(cual, {m_punto.X, m_punto.Y}) &&
               (!nodo.giro || nodo.giro->cajas.Tiene(cual, nodo.giro->marco.Mide(m_punto)));
    }
    /// Leaves the boxes at hand for later, and has none at hand then.
    void Espera()
    {
        m_pendientes.push_back(m_actual);
        std::push_heap(m_pendientes.begin(), m_pendientes.end(), kMejorPrimero);
        m_actual.cajas = {};
    }
    /// Takes the best of what waits; false where nothing does.
    bool Saca()
    {
        if (m_pendientes.empty())
            return false;
        std::pop_heap(m_pendientes.begin(), m_pendientes.end(), kMejorPrimero);
        m_actual = m_pendientes.back();
        m_pendientes.pop_back();
        return true;
    }

    const CPunto<int>& m_punto;
    const CArbolCajas& m_arbol;
    std::vector<CPendiente>& m_pendientes;
    CPendiente m_actual{};
};

void CArbolCajas::Recorre(const CPunto<int>& punto,
                          const std::function<bool(const CVia&)>& acepta) const
{
    if (Vacio())
        return;
    CBusqueda busqueda(*this, punto);
    while (const CVia* via = busqueda.Siguiente())
        if (acepta(*via))
            return;
}

} // namespace vexageo
