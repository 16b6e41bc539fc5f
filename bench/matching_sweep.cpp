#include <algorithm>
#include <cstdint>
#include <numeric>
#include <set>

#include "bench/matching_drawings.h"
#include "vexa_libs/ring.h"

using vexageo::CPunto;
using vexageo::DobleArea;

namespace {

constexpr int kNinguno = -1;
constexpr int kSinVer = -2;

/// An edge from left to right.
struct CArista {
    CPunto<int> a;
    CPunto<int> b;
    int anillo;
    bool entra; ///< its ring lies above it

    /// Above 0 where the point lies above the edge. The drawings' coordinates stay below 2^30.
    std::int64_t Altura(const CPunto<int>& p) const
    {
        return (std::int64_t{b.X} - a.X) * (p.Y - a.Y) - (std::int64_t{b.Y} - a.Y) * (p.X - a.X);
    }
};

/// A line goes from left to right over all edges and points. The edges that it meets stand from
/// below to above, and each knows the smallest ring above it.
class CBarrido {
public:
    explicit CBarrido(const CDibujo& dibujo) : m_puntos(dibujo.puntos)
    {
        for (const CAnillo& anillo : dibujo.anillos)
            TomaAristas(anillo);
        for (std::size_t i = 0; i < m_aristas.size(); ++i) {
            m_extremos.push_back({m_aristas[i].a.X, true, i});
            m_extremos.push_back({m_aristas[i].b.X, false, i});
        }
        std::sort(m_extremos.begin(), m_extremos.end(),
                  [this](const CExtremo& uno, const CExtremo& otro) { return Antes(uno, otro); });
        m_sitios.resize(m_aristas.size());
        m_padres.resize(m_areas.size(), kSinVer);
    }

    std::vector<int> Busca()
    {
        std::vector<std::size_t> orden(m_puntos.size());
        std::iota(orden.begin(), orden.end(), std::size_t{0});
        std::sort(orden.begin(), orden.end(), [this](std::size_t uno, std::size_t otro) {
            return m_puntos[uno].X < m_puntos[otro].X;
        });
        std::vector<int> hallados(m_puntos.size(), kNinguno);
        // A ring that ends or begins where a point stands is met on one side of it only.
        for (auto i = orden.begin(), fin = i; i != orden.end(); i = fin) {
            const int x = m_puntos[*i].X;
            fin = std::find_if(i, orden.end(), [&](std::size_t k) { return m_puntos[k].X != x; });
            Avanza(x, false);
            std::for_each(i, fin, [&](std::size_t k) { Mira(m_puntos[k], hallados[k]); });
            if (Avanza(x, true))
                std::for_each(i, fin, [&](std::size_t k) { Mira(m_puntos[k], hallados[k]); });
        }
        return hallados;
    }

private:
    struct CExtremo {
        int x;
        bool empieza;
        std::size_t arista;
    };
    struct CCruzada {
        const CArista* arista;
        mutable int encima; ///< the smallest ring right above it; no part of the order
    };
    struct CPorAltura {
        using is_transparent = void;
        const CBarrido* barrido;
        bool operator()(const CCruzada& una, const CCruzada& otra) const
        {
            return barrido->Debajo(*una.arista, *otra.arista);
        }
        bool operator()(const CCruzada& una, const CPunto<int>& punto) const
        {
            return una.arista->Altura(punto) > 0;
        }
    };

    void TomaAristas(const CAnillo& anillo)
    {
        const auto indice = static_cast<int>(m_areas.size());
        m_areas.push_back(DobleArea(anillo));
        const std::size_t primera = m_aristas.size();
        double area = 0; // with the sign of its direction
        const CPunto<int>* a = &anillo.back();
        for (const CPunto<int>& b : anillo) {
            area += static_cast<double>(a->X) * b.Y - static_cast<double>(a->Y) * b.X;
            if (a->X < b.X)
                m_aristas.push_back({*a, b, indice, true});
            else if (b.X < a->X)
                m_aristas.push_back({b, *a, indice, false});
            a = &b;
        }
        for (std::size_t i = primera; i < m_aristas.size(); ++i)
            m_aristas[i].entra ^= area < 0;
    }

    /// What happens first: an end before a beginning, and beginnings from below to above.
    bool Antes(const CExtremo& uno, const CExtremo& otro) const
    {
        if (uno.x != otro.x)
            return uno.x < otro.x;
        if (uno.empieza != otro.empieza)
            return otro.empieza;
        const CArista& una = m_aristas[uno.arista];
        const CArista& otra = m_aristas[otro.arista];
        if (!uno.empieza)
            return false;
        return una.a.Y != otra.a.Y ? una.a.Y < otra.a.Y : Debajo(una, otra);
    }

    /// The order of edges that the line meets. Of those on one another, rings are left before
    /// others are entered: the innermost is left first, and entered last.
    bool Debajo(const CArista& una, const CArista& otra) const
    {
        std::int64_t altura = una.a.X < otra.a.X ? una.Altura(otra.a) : -otra.Altura(una.a);
        if (altura == 0)
            altura = una.b.X < otra.b.X ? -otra.Altura(una.b) : una.Altura(otra.b);
        if (altura != 0)
            return altura > 0;
        if (una.entra != otra.entra)
            return otra.entra;
        return una.entra ? EsMenor(otra.anillo, una.anillo) : EsMenor(una.anillo, otra.anillo);
    }

    bool EsMenor(int uno, int otro) const
    {
        const double a = m_areas[static_cast<std::size_t>(uno)];
        const double b = m_areas[static_cast<std::size_t>(otro)];
        return a < b || (a == b && uno < otro);
    }

    /// Brings the line up to a column, to its left side or its right one. Tells whether it moved.
    bool Avanza(int x, bool derecha)
    {
        const std::size_t antes = m_siguiente;
        for (; m_siguiente < m_extremos.size(); ++m_siguiente) {
            const CExtremo& extremo = m_extremos[m_siguiente];
            if (extremo.x > x || (extremo.x == x && !derecha))
                break;
            if (extremo.empieza)
                Empieza(extremo.arista);
            else
                m_linea.erase(m_sitios[extremo.arista]);
        }
        return m_siguiente != antes;
    }

    void Empieza(std::size_t i)
    {
        const CArista& arista = m_aristas[i];
        const auto sitio = m_linea.insert({&arista, arista.anillo}).first;
        m_sitios[i] = sitio;
        int& padre = m_padres[static_cast<std::size_t>(arista.anillo)];
        if (padre == kSinVer)
            padre = sitio == m_linea.begin() ? kNinguno : std::prev(sitio)->encima;
        if (!arista.entra)
            sitio->encima = padre;
    }

    void Mira(const CPunto<int>& punto, int& hallado) const
    {
        const auto halla = [&](int anillo) {
            if (anillo != kNinguno && (hallado == kNinguno || EsMenor(anillo, hallado)))
                hallado = anillo;
        };
        auto sitio = m_linea.lower_bound(punto);
        if (sitio != m_linea.begin())
            halla(std::prev(sitio)->encima);
        for (; sitio != m_linea.end() && sitio->arista->Altura(punto) == 0; ++sitio)
            halla(sitio->arista->anillo);
    }

    const std::vector<CPunto<int>>& m_puntos;
    std::vector<double> m_areas;
    std::vector<CArista> m_aristas;
    std::vector<CExtremo> m_extremos;
    std::size_t m_siguiente = 0; ///< end of an edge
    std::set<CCruzada, CPorAltura> m_linea{CPorAltura{this}};
    std::vector<std::set<CCruzada, CPorAltura>::iterator> m_sitios; ///< of the edges in it
    std::vector<int> m_padres; ///< the smallest ring around each
};

} // namespace

std::vector<int> ConBarrido(const CDibujo& dibujo)
{
    return CBarrido(dibujo).Busca();
}
